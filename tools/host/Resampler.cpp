// SPDX-License-Identifier: GPL-3.0-or-later

#include "Resampler.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace K7R::host
{

namespace
{

// To a lower rate, the band up to this part of it passes. What would fold back into that band is down by
// the attenuation, in dB.
constexpr double passBand = 0.45;
constexpr double attenuation = 80.0;

// The interpolator's sinc is cut at 0.99 of the band, and its gain is as much.
constexpr float gain = 1.0f / 0.99f;

using Design = juce::dsp::FilterDesign<float>;

/** A linear-phase filter for the stream at its own rate; an even order delays it by whole samples. */
juce::dsp::FIR::Coefficients<float>::Ptr makeFilter (double inputRate, double outputRate)
{
    // Kaiser's formulas for the order and for the shape of the window.
    const auto transition = juce::MathConstants<double>::twoPi * (1.0 - 2.0 * passBand) * outputRate / inputRate;
    const auto halfOrder = std::ceil ((attenuation - 8.0) / (2.285 * transition) / 2.0);
    const auto beta = 0.1102 * (attenuation - 8.7);

    return Design::designFIRLowpassWindowMethod (
        static_cast<float> (outputRate * 0.5), inputRate, static_cast<size_t> (halfOrder) * 2,
        juce::dsp::WindowingFunction<float>::kaiser, static_cast<float> (beta));
}

} // namespace

Resampler::Resampler (double inputRate, double outputRate, Source sourceToRead) :
    ratio (inputRate / outputRate),
    source (std::move (sourceToRead))
{
    auto delay = juce::roundToInt (interpolators[0].getBaseLatency());

    if (outputRate < inputRate)
    {
        const auto coefficients = makeFilter (inputRate, outputRate);
        delay += static_cast<int> (coefficients->getFilterOrder()) / 2;

        for (auto& filter : filters)
            filter.emplace (coefficients);
    }

    // The delay is taken out at the input's own rate, so that the first sample that is kept falls on the
    // stream's first one exactly.
    juce::AudioBuffer<float> dropped (static_cast<int> (numChannels), delay);
    interpolate (dropped, 1.0);
}

void Resampler::fetch (int numSamples)
{
    const auto numMissing = numSamples - numWaiting;

    if (numMissing <= 0)
        return;

    waiting.setSize (static_cast<int> (numChannels), numSamples, true, false, true);

    juce::AudioBuffer<float> next (waiting.getArrayOfWritePointers(), static_cast<int> (numChannels), numWaiting,
                                   numMissing);
    source (next);

    for (size_t channel = 0; channel < numChannels; ++channel)
    {
        auto* samples = next.getWritePointer (static_cast<int> (channel));

        for (int i = 0; filters[channel] && i < numMissing; ++i)
            samples[i] = filters[channel]->processSample (samples[i]);
    }

    numWaiting = numSamples;
}

void Resampler::read (juce::AudioBuffer<float>& destination)
{
    interpolate (destination, ratio);
}

void Resampler::interpolate (juce::AudioBuffer<float>& destination, double speed)
{
    const auto numSamples = destination.getNumSamples();
    fetch (static_cast<int> (std::ceil (speed * numSamples)) + 2);

    int numUsed = 0;

    for (size_t channel = 0; channel < numChannels; ++channel)
    {
        const auto index = static_cast<int> (channel);
        numUsed = interpolators[channel].process (speed, waiting.getReadPointer (index),
                                                  destination.getWritePointer (index), numSamples);
    }

    destination.applyGain (gain);
    numWaiting -= numUsed;

    for (int channel = 0; channel < static_cast<int> (numChannels); ++channel)
    {
        auto* samples = waiting.getWritePointer (channel);
        std::copy (samples + numUsed, samples + numUsed + numWaiting, samples);
    }
}

} // namespace K7R::host
