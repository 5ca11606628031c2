// SPDX-License-Identifier: GPL-3.0-or-later

#include "effect/GlassRailEffectCore.h"

#include <cmath>

#include <juce_core/juce_core.h>

namespace K7R
{

GlassRailEffectCore::GlassRailEffectCore (const SampleRateConstants& constants) : rateConstants (constants) {}

const GlassRailEffectCore::MeterTable& GlassRailEffectCore::getMeterTable()
{
    static const auto table = []
    {
        constexpr auto centre = 0.5 * static_cast<double> (meterTableSize);
        MeterTable levels {};

        for (size_t i = 0; i < meterTableSize; ++i)
        {
            const auto magnitude = std::abs ((static_cast<double> (i) - centre) * 0.01);
            const auto decibelPart =
                magnitude > 0.0 ? std::log10 (magnitude) * 0.6666666666666666 : -10.666666666666666;
            levels[i] = static_cast<float> (juce::jlimit (0.0, 1.0, decibelPart + 0.8));
        }

        return levels;
    }();

    return table;
}

void GlassRailEffectCore::prepare (bool) {}

void GlassRailEffectCore::parameterChanged (const Parameter&) {}

void GlassRailEffectCore::tempoChanged (double) {}

void GlassRailEffectCore::songPositionChanged (double) {}

void GlassRailEffectCore::processStereo (const float*, const float*, float*, float*, int, bool) {}

void GlassRailEffectCore::processMono (float*, int, bool) {}

void GlassRailEffectCore::publishMeters (float left, float right) noexcept
{
    leftMeter.store (juce::jlimit (0.0f, 1.0f, left), std::memory_order_relaxed);
    rightMeter.store (juce::jlimit (0.0f, 1.0f, right), std::memory_order_relaxed);
}

} // namespace K7R
