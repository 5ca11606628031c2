// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/BasePlugin.h"
#include "editor/settings/DefaultSettingsComponent.h"
#include "editor/settings/MapFileDialog.h"
#include "widgets/controls/DefaultResourceCheckBox.h"
#include "widgets/windows/PathComponent.h"

namespace K7R
{

/** A map that new instances begin with: its file, whether it's loaded, and a way to forget it. */
class MapSettingsComponent : public DefaultSettingsComponent,
                             private PathComponent::Listener,
                             private DefaultResourceCheckBox::Listener
{
protected:
    MapSettingsComponent (const MapKind&, const BasePlugin::DefaultMap& setting);

    /** The setting is another one. */
    virtual void keep (const BasePlugin::DefaultMap&) = 0;

    /** The user has chosen a file.
        @returns whether it's of use */
    virtual bool take (const juce::File&) { return true; }

    /** The user wants no file any more. */
    virtual void forget();

    /** Adds one more button beside "Forget". */
    void addButton (juce::TextButton&);

private:
    void pathChanged (PathComponent&) override;
    void defaultResourceToggled (DefaultResourceCheckBox&) override;
    void show (const BasePlugin::DefaultMap&);

    PathComponent path;
    DefaultResourceCheckBox isUsed { "Load this map in new instances" };
    juce::TextButton forgetButton { "Forget" };
    juce::Component indent, buttonIndent;
    ComponentRow useRow { ComponentRow::Direction::horizontal };
    ComponentRow buttons;
    juce::File file;
};

/** The map of MIDI controllers that new instances begin with. */
class MidiSettingsComponent final : public MapSettingsComponent
{
public:
    explicit MidiSettingsComponent (BasePlugin&);

private:
    void keep (const BasePlugin::DefaultMap& map) override { plugin.setDefaultMidiMap (map); }

    BasePlugin& plugin;
};

/** The map of host parameters: of this instance, which can be saved, and of new ones. A file that is chosen is loaded
    here at once, and forgetting it brings back the plug-in's own order. */
class HostMapSettingsComponent final : public MapSettingsComponent
{
public:
    HostMapSettingsComponent (BasePlugin&, MapFileDialog::ShowMessage);

private:
    void keep (const BasePlugin::DefaultMap& map) override { plugin.setDefaultHostMap (map); }
    bool take (const juce::File& chosen) override { return dialog.load (chosen); }
    void forget() override;

    BasePlugin& plugin;
    MapFileDialog dialog;
    juce::TextButton saveButton { "Save as..." };
};

} // namespace K7R
