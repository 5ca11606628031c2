// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "content/ContentSource.h"
#include "content/Preset.h"

namespace K7R
{

/** What a source of presets needs of the plug-in. */
class PresetHost
{
public:
    virtual ~PresetHost() = default;

    virtual const ParameterManager& getPresetParameters() const = 0;

    /** Fills a preset with the values that stand. */
    virtual void fillPreset (Preset&) const = 0;

    /** Applies a preset, and keeps it as the current one. */
    virtual void loadPreset (const Preset&) = 0;
};

/** A source whose items are presets. */
class PresetsContent : public ContentSource
{
public:
    PresetsContent (PresetHost& presetHost, const juce::String& sourceName, const juce::String& presetExtension) :
        ContentSource (sourceName),
        host (presetHost),
        extension (presetExtension)
    {
    }

    bool loadItem (const juce::String& itemName) override
    {
        const auto preset = readPreset (itemName);

        if (preset == nullptr)
            return false;

        host.loadPreset (*preset);
        return true;
    }

    juce::String getItemExtension() const override { return extension; }

    /** The whole preset; null if there is none of that name, or it can't be read. */
    virtual std::unique_ptr<Preset> readPreset (const juce::String& itemName) const = 0;

protected:
    PresetHost& host;
    const juce::String extension; // with its point
};

} // namespace K7R
