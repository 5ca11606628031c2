// SPDX-License-Identifier: GPL-3.0-or-later

#include "product/Quilvane.h"

#include "EmbeddedResources.h"
#include "dsp/phaser/QuilvaneCore.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "product/QuilvaneEditor.h"
#include "product/QuilvaneParameterManager.h"

namespace quilvane
{

using namespace K7R;

namespace
{

EmbeddedFile findEmbeddedFile (const juce::String& name)
{
    for (int i = 0; i < EmbeddedResources::namedResourceListSize; ++i)
    {
        if (name != EmbeddedResources::originalFilenames[i])
            continue;

        int size = 0;
        const auto* data = EmbeddedResources::getNamedResource (EmbeddedResources::namedResourceList[i], size);
        return { data, static_cast<size_t> (size) };
    }

    return {};
}

} // namespace

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
    const auto file = findEmbeddedFile (name);
    return juce::String::fromUTF8 (static_cast<const char*> (file.data), static_cast<int> (file.numBytes));
}

EmbeddedFile Quilvane::getEmbeddedFile (const juce::String& name) const
{
    return findEmbeddedFile (name);
}

std::unique_ptr<PluginEditor> Quilvane::createEditor()
{
    return std::make_unique<QuilvaneEditor> (*this);
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
