// SPDX-License-Identifier: GPL-3.0-or-later

#include "product/Quilvane.h"

#include "EmbeddedResources.h"
#include "dsp/QuilvaneCore.h"
#include "dsp/QuilvaneParameterIds.h"
#include "product/QuilvaneParameterManager.h"

namespace quilvane
{

Quilvane::Quilvane() : GlassRailEffect (std::make_unique<QuilvaneParameterManager>(), loadEmbeddedText) {}

Quilvane::~Quilvane() = default;

std::unique_ptr<PluginAudioProcessor> Quilvane::createProcessor()
{
    auto processor = std::make_unique<PluginAudioProcessor>();
    processor->setPlugin (std::make_unique<Quilvane>());
    return processor;
}

juce::String Quilvane::loadEmbeddedText (const juce::String& name)
{
    for (int i = 0; i < EmbeddedResources::namedResourceListSize; ++i)
    {
        int size = 0;
        const auto* data = EmbeddedResources::getNamedResource (EmbeddedResources::namedResourceList[i], size);

        if (data != nullptr && name == EmbeddedResources::originalFilenames[i])
            return juce::String::fromUTF8 (data, size);
    }

    return {};
}

juce::String Quilvane::getReleaseChannel() const
{
    return QUILVANE_CHANNEL;
}

int Quilvane::getNumPresetParameters() const
{
    return parameterIds::numPresetParameters;
}

int Quilvane::getNumHostParameters() const
{
    return parameterIds::numPresetParameters;
}

std::unique_ptr<GlassRailEffectCore> Quilvane::makeCore()
{
    return std::make_unique<QuilvaneCore> (getRateConstants());
}

} // namespace quilvane
