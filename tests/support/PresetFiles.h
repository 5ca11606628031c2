// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "content/PresetsContent.h"
#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"

namespace K7R::test
{

/** Parameters, and a folder that goes with the test. */
class PresetFiles : public testing::Test, public PresetHost
{
protected:
    PresetFiles() : folder (juce::File::createTempFile ("presets"))
    {
        folder.createDirectory();

        for (int id = 0; id < 3; ++id)
            manager.addParameter (
                std::make_unique<FloatParameter> (id, "P" + juce::String (id), 0.0f, 10.0f, static_cast<float> (id)));
    }

    ~PresetFiles() override { folder.deleteRecursively(); }

    const ParameterManager& getPresetParameters() const override { return manager; }

    void fillPreset (Preset& preset) const override
    {
        preset.clearParameters();

        for (const auto& parameter : manager.getParameters())
            preset.addParameter (*parameter);
    }

    void loadPreset (const Preset& preset) override
    {
        loaded = preset.name;

        for (const auto& entry : preset.getEntries())
            manager.setValueString (entry.id, entry.value);
    }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name + ".qvprs2"); }

    Preset read (const juce::String& xml) const
    {
        Preset preset;
        preset.readXml (juce::parseXML (xml).get(), manager);
        return preset;
    }

    juce::StringArray listFolder() const
    {
        juce::StringArray names;

        for (const auto& entry : juce::RangedDirectoryIterator (folder, false, "*", juce::File::findFiles))
            names.add (entry.getFile().getFileName());

        names.sort (false);
        return names;
    }

    juce::File folder;
    ParameterManager manager;
    juce::String loaded;
};

} // namespace K7R::test
