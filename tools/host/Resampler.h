// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <functional>
#include <optional>

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_dsp/juce_dsp.h>

namespace K7R::host
{

/** Turns a stereo stream of one sample rate into one of another, from its first sample to its last.

    Band-limited interpolation with a windowed sinc, with no delay. To a lower rate the stream
    is filtered first, so that nothing folds back.
*/
class Resampler
{
public:
    /** Fills a stereo buffer with the next samples of the stream, silence beyond its end. */
    using Source = std::function<void (juce::AudioBuffer<float>&)>;

    /** Rates in Hz. */
    Resampler (double inputRate, double outputRate, Source);

    /** Fills a stereo buffer with the next samples at the output's rate. */
    void read (juce::AudioBuffer<float>&);

private:
    static constexpr size_t numChannels = 2;

    using Filter = juce::dsp::FIR::Filter<float>;

    void fetch (int numSamples);
    void interpolate (juce::AudioBuffer<float>&, double speed);

    const double ratio; // input samples for one output sample
    Source source;
    juce::AudioBuffer<float> waiting; // input that is read and not used
    int numWaiting = 0;
    std::array<juce::WindowedSincInterpolator, numChannels> interpolators;
    std::array<std::optional<Filter>, numChannels> filters; // none to a higher rate
};

} // namespace K7R::host
