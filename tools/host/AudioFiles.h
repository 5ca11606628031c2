// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <optional>

#include <juce_audio_formats/juce_audio_formats.h>

#include "OutputFile.h"
#include "Resampler.h"

namespace K7R::host
{

// The sample rates that the program takes from a file or an option, in Hz.
constexpr double lowestSampleRate = 8000.0;
constexpr double highestSampleRate = 384000.0;

/** Longer than this, in seconds, neither an input nor a tail is taken. */
constexpr double longestAudio = 3600.0;

/** An audio file that is read from its start to its end as a stereo stream.

    A mono file fills both channels alike. Every function throws a Failure that names the file.
*/
class AudioInput
{
public:
    explicit AudioInput (const juce::File&);

    double getFileRate() const noexcept { return reader->sampleRate; }
    double getSampleRate() const noexcept { return sampleRate; }

    /** The length in samples at the rate that read() gives. */
    juce::int64 getLength() const noexcept;

    /** Makes read() give another rate than the file's; before the first read(). */
    void setSampleRate (double hz);

    /** Fills a stereo buffer with the next samples, silence beyond the end. */
    void read (juce::AudioBuffer<float>&);

    /** Fills a stereo buffer with the samples from any position of the file, which may be negative, at the
        file's rate; silence outside the file. */
    void readAt (juce::int64 position, juce::AudioBuffer<float>&);

private:
    void readNext (juce::AudioBuffer<float>&);

    juce::File file;
    std::unique_ptr<juce::AudioFormatReader> reader;
    juce::int64 position = 0; // in the file
    double sampleRate;
    std::optional<Resampler> resampler;
};

/** A stereo audio file that is written from start to end, and stands in its place after commit().

    The name's ending chooses the format: .wav is written in 32-bit float, .aif, .aiff and .flac in 24 bit.
    Every function throws a Failure that names the file.
*/
class AudioOutput
{
public:
    /** Refuses a name with no known ending, and what OutputFile::check() refuses. */
    static void check (const juce::File&);

    AudioOutput (const juce::File&, double sampleRate);

    void write (const juce::AudioBuffer<float>&);

    /** Ends the file, reads back whether all of it is there, and puts it in its place. */
    void commit();

    /** True if what is written can't be louder than full scale without being cut off. */
    bool isFixedPoint() const noexcept { return fixedPoint; }

private:
    OutputFile output;
    std::unique_ptr<juce::AudioFormatWriter> writer;
    juce::int64 numWritten = 0;
    bool fixedPoint;
};

} // namespace K7R::host
