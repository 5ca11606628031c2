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

bool Quilvane::isRelease() const
{
    return getReleaseChannel().equalsIgnoreCase ("master");
}

std::vector<SoftwareDesignation::Credit> Quilvane::getCredits() const
{
    return {
        { getProductName(),
          "Copyright " + getYear()
              + " K7R Group and the authors of its source code.\n"
                "This program is free software: you can redistribute it and modify it under the terms of the GNU "
                "General Public License as published by the Free Software Foundation, version 3 or any later one. It "
                "comes without any warranty. The source code comes with the program." },
        { "JUCE 7", "The framework under the plug-in and its windows. Copyright Raw Material Software Limited. Used "
                    "under the GNU General Public License, version 3." },
        { "DejaVu Sans Condensed", "The letters of these windows. Copyright Bitstream, Inc., and the DejaVu authors, "
                                   "under the free licence of the Bitstream Vera fonts." },
        { "Inter and JetBrains Mono", "The letters of the panel. Copyright the Inter and JetBrains Mono project "
                                      "authors, under the SIL Open Font License 1.1." },
        { "Libraries", "FLAC, Ogg and Vorbis by Xiph.Org; libpng, libjpeg, zlib and FreeType by their authors." },
        { {}, "VST is a trademark of Steinberg Media Technologies GmbH." },
    };
}

std::unique_ptr<GlassRailEffectCore> Quilvane::makeCore()
{
    return std::make_unique<QuilvaneCore> (getRateConstants());
}

} // namespace quilvane
