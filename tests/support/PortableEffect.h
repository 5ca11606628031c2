// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/QuilvaneCore.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "product/Quilvane.h"
#include "product/QuilvaneParameterManager.h"
#include "support/TestEffect.h"

/** The phaser in a product of another name, which runs from folders of the test's choice. */
class PortableEffect final : public TestEffect
{
public:
    PortableEffect (const juce::File& folderToUse, const juce::String& channelToUse) :
        TestEffect (quilvane::Quilvane::loadEmbeddedText, std::make_unique<quilvane::QuilvaneParameterManager>()),
        folder (folderToUse),
        channel (channelToUse)
    {
    }

    juce::String getProductName() const override { return "Portable"; }
    juce::String getShortName() const override { return "PT"; }
    juce::String getPluginFile() const override { return folder.getChildFile ("Portable.so").getFullPathName(); }
    juce::String getReleaseChannel() const override { return channel; }
    juce::String getPresetExtension() const override { return ".qvprs2"; }
    juce::String getDefaultPresetName() const override { return "Colorful"; }
    int getNumPresetParameters() const override { return quilvane::parameterIds::numPresetParameters; }

protected:
    std::unique_ptr<K7R::GlassRailEffectCore> makeCore() override
    {
        return std::make_unique<quilvane::QuilvaneCore> (getRateConstants());
    }

private:
    const juce::File folder;
    const juce::String channel;
};
