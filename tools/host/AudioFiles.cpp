// SPDX-License-Identifier: GPL-3.0-or-later

#include "AudioFiles.h"

#include <cmath>

#include "Failure.h"

namespace K7R::host
{

namespace
{

constexpr unsigned int numChannels = 2;
constexpr int floatBits = 32;
constexpr int fixedBits = 24;

/** A reader of any format that JUCE knows; null if none knows the file. */
std::unique_ptr<juce::AudioFormatReader> createReader (const juce::File& file)
{
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    return std::unique_ptr<juce::AudioFormatReader> (formats.createReaderFor (file));
}

/** The format that an output's name asks for; null if it asks for none that is written. */
std::unique_ptr<juce::AudioFormat> makeOutputFormat (const juce::File& file)
{
    if (file.hasFileExtension ("wav"))
        return std::make_unique<juce::WavAudioFormat>();

    if (file.hasFileExtension ("aif;aiff"))
        return std::make_unique<juce::AiffAudioFormat>();

    if (file.hasFileExtension ("flac"))
        return std::make_unique<juce::FlacAudioFormat>();

    return nullptr;
}

} // namespace

//==============================================================================
AudioInput::AudioInput (const juce::File& fileToRead) : file (fileToRead)
{
    const auto name = file.getFullPathName();

    if (! file.existsAsFile())
        throw Failure ("there is no file " + name);

    reader = createReader (file);

    if (reader == nullptr)
        throw Failure (name + " is not audio in a format that can be read");

    if (reader->numChannels < 1 || reader->numChannels > numChannels)
        throw Failure (name + " has " + juce::String (reader->numChannels) + " channels instead of one or two");

    if (! (reader->sampleRate >= lowestSampleRate && reader->sampleRate <= highestSampleRate))
        throw Failure (name + " has a sample rate outside 8000 to 384000 Hz");

    if (reader->lengthInSamples < 1)
        throw Failure (name + " holds no audio");

    if (static_cast<double> (reader->lengthInSamples) > longestAudio * reader->sampleRate)
        throw Failure (name + " is longer than an hour");

    sampleRate = reader->sampleRate;
}

juce::int64 AudioInput::getLength() const noexcept
{
    const auto length = static_cast<double> (reader->lengthInSamples) * sampleRate / reader->sampleRate;
    return static_cast<juce::int64> (std::ceil (length));
}

void AudioInput::setSampleRate (double hz)
{
    sampleRate = hz;

    if (hz < reader->sampleRate || hz > reader->sampleRate)
        resampler.emplace (reader->sampleRate, hz, [this] (juce::AudioBuffer<float>& buffer) { readNext (buffer); });
    else
        resampler.reset();
}

void AudioInput::read (juce::AudioBuffer<float>& buffer)
{
    if (resampler)
        resampler->read (buffer);
    else
        readNext (buffer);
}

void AudioInput::readNext (juce::AudioBuffer<float>& buffer)
{
    readAt (position, buffer);
    position += buffer.getNumSamples();
}

void AudioInput::readAt (juce::int64 start, juce::AudioBuffer<float>& buffer)
{
    const juce::Range<juce::int64> wanted (start, start + buffer.getNumSamples());
    const auto inside = wanted.getIntersectionWith ({ 0, reader->lengthInSamples });
    buffer.clear();

    if (inside.isEmpty())
        return;

    const auto offset = static_cast<int> (inside.getStart() - start);

    if (! reader->read (&buffer, offset, static_cast<int> (inside.getLength()), inside.getStart(), true, true))
        throw Failure (file.getFullPathName() + " breaks off before its end");
}

//==============================================================================
void AudioOutput::check (const juce::File& file)
{
    if (makeOutputFormat (file) == nullptr)
        throw Failure (file.getFullPathName() + " should end in .wav, .aif or .flac");

    OutputFile::check (file);
}

AudioOutput::AudioOutput (const juce::File& file, double sampleRate) : output (file)
{
    check (file);

    const auto format = makeOutputFormat (file);
    const auto bits = file.hasFileExtension ("wav") ? floatBits : fixedBits;
    auto stream = output.createStream();
    fixedPoint = bits != floatBits;

    writer.reset (format->createWriterFor (stream.get(), sampleRate, numChannels, bits, {}, 0));

    if (writer == nullptr)
        throw Failure ("cannot write " + format->getFormatName() + " at " + juce::String (sampleRate) + " Hz");

    juce::ignoreUnused (stream.release()); // the writer's from here on
}

void AudioOutput::write (const juce::AudioBuffer<float>& buffer)
{
    if (! writer->writeFromAudioSampleBuffer (buffer, 0, buffer.getNumSamples()))
        throw Failure ("cannot write all of " + output.getFile().getFullPathName());

    numWritten += buffer.getNumSamples();
}

void AudioOutput::commit()
{
    // The writer ends the file in its destructor, which has no way to tell of a failure.
    writer.reset();

    const auto written = createReader (output.getTemporaryFile());

    if (written == nullptr || written->lengthInSamples != numWritten)
        throw Failure ("cannot write all of " + output.getFile().getFullPathName());

    output.commit();
}

} // namespace K7R::host
