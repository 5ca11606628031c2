// SPDX-License-Identifier: GPL-3.0-or-later

#include "product/QuilvaneParameterManager.h"

#include <cmath>

#include "dsp/phaser/QuilvaneParameterIds.h"

namespace quilvane
{

using namespace K7R;

//==============================================================================
float QuilvaneParameterManager::LFOFreqCurve::toValue (float n)
{
    return std::pow (1600.7983f, n) * 0.012493767f;
}

float QuilvaneParameterManager::LFOFreqCurve::toNormalised (float v)
{
    return std::log10 (v * 80.03991f) * 0.31207708f;
}

//==============================================================================
float QuilvaneParameterManager::BaseFreqCurve::toValue (float n)
{
    const auto octaves = static_cast<double> (n) * 7.906890595608517 + 1.8624965333333332;
    return static_cast<float> (std::pow (2.0, octaves) * 13.75);
}

float QuilvaneParameterManager::BaseFreqCurve::toNormalised (float v)
{
    const auto decades = std::log10 (static_cast<double> (v) * 0.07272727);
    return static_cast<float> (decades * 0.4201307776703477 - 0.23555359857486366);
}

//==============================================================================
float QuilvaneParameterManager::OutputVolumeCurve::toValue (float n)
{
    constexpr auto silence = -320.0f; // dB
    const auto gain = 4.0f * n * n;

    return gain > 0.0f ? static_cast<float> (20.0 * std::log10 (static_cast<double> (gain))) : silence;
}

float QuilvaneParameterManager::OutputVolumeCurve::toNormalised (float v)
{
    return static_cast<float> (std::sqrt (std::pow (10.0, static_cast<double> (v) * 0.05) * 0.25));
}

//==============================================================================
std::unique_ptr<Parameter> QuilvaneParameterManager::createFloatParameter (int id, const juce::String& name,
                                                                           float minimum, float maximum,
                                                                           float defaultValue)
{
    switch (id)
    {
        case parameterIds::lfo1Rate:
        case parameterIds::lfo2Rate: return std::make_unique<LFOFreq> (id, name, minimum, maximum, defaultValue);
        case parameterIds::centerFrequency:
            return std::make_unique<BaseFreq> (id, name, minimum, maximum, defaultValue);
        case parameterIds::outputVolume:
            return std::make_unique<OutputVolumeParameter> (id, name, minimum, maximum, defaultValue);
        default: return ParameterManager::createFloatParameter (id, name, minimum, maximum, defaultValue);
    }
}

} // namespace quilvane
