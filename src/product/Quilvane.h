// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "core/PluginAudioProcessor.h"
#include "effect/GlassRailEffect.h"

namespace quilvane
{

/** The product: identity texts and factories. */
class Quilvane : public K7R::GlassRailEffect
{
public:
    Quilvane();
    ~Quilvane() override;

    /** A complete processor with its plug-in, as hosts get it. May throw while it is built. */
    static std::unique_ptr<K7R::PluginAudioProcessor> createProcessor();

    /** The texts that are embedded in the binary. */
    static juce::String loadEmbeddedText (const juce::String& name);

    K7R::EmbeddedFile getEmbeddedFile (const juce::String& name) const override;

    juce::String getProductName() const override { return "Quilvane 2"; }
    juce::String getDescription() const override { return "Steerable Spatial Phaser"; }
    juce::String getVersion() const override { return "2.0.0"; }
    juce::String getWebPage() const override { return "https://quilvane.example/quilvane-2"; }
    juce::String getYear() const override { return "2018"; }
    juce::String getReleaseDate() const override { return "2018-09-11"; }
    juce::String getExtraInfo() const override { return {}; }
    juce::String getBuildId() const override { return "qv2-1"; }
    juce::String getFormatName() const override { return "VST"; }
    juce::String getArchitecture() const override { return "64bit"; }
    juce::String getReleaseChannel() const override;
    bool isRelease() const override;
    juce::String getDisplayVersion() const override { return getVersion(); }
    juce::String getRevision() const override { return "0"; }
    std::vector<Credit> getCredits() const override;

    juce::String getShortName() const override { return "QV"; }
    int getNumPresetParameters() const override;
    int getNumHostParameters() const override;
    bool hasPresets() const override { return true; }
    juce::String getDefaultPresetName() const override { return "Colorful"; }
    juce::String getCategories() const override { return "Modulation;Spatialize"; }
    juce::String getPresetExtension() const override { return ".qvprs2"; }

protected:
    std::unique_ptr<K7R::GlassRailEffectCore> makeCore() override;
    std::unique_ptr<K7R::PluginEditor> createEditor() override;
    bool usesHostParameterMap() const override { return true; }
    bool allowsMono() const override { return false; }
    bool usesTransport() const override { return true; }
};

} // namespace quilvane
