// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "effect/GlassRailEffect.h"

/** An effect without an identity, on a table of the test's choice. */
class TestEffect : public K7R::GlassRailEffect
{
public:
    explicit TestEffect (
        EmbeddedTextLoader texts = [] (const juce::String&) { return juce::String(); },
        std::unique_ptr<K7R::ParameterManager> manager = std::make_unique<K7R::ParameterManager>()) :
        GlassRailEffect (std::move (manager), std::move (texts))
    {
    }

    juce::String getDescription() const override { return {}; }
    juce::String getVersion() const override { return {}; }
    juce::String getWebPage() const override { return {}; }
    juce::String getYear() const override { return {}; }
    juce::String getReleaseDate() const override { return {}; }
    juce::String getExtraInfo() const override { return {}; }
    juce::String getBuildId() const override { return {}; }
    juce::String getFormatName() const override { return {}; }
    juce::String getArchitecture() const override { return {}; }
    juce::String getReleaseChannel() const override { return {}; }
    bool isRelease() const override { return getReleaseChannel().equalsIgnoreCase ("master"); }
    juce::String getDisplayVersion() const override { return {}; }
    juce::String getRevision() const override { return {}; }
    bool hasPresets() const override { return true; }
    bool usesHostParameterMap() const override { return true; }
};
