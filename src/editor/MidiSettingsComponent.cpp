// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/MidiSettingsComponent.h"

#include "core/BasePlugin.h"

namespace quilvane
{

namespace
{

constexpr int pathWidth = 360, pathHeight = 22;

} // namespace

MidiSettingsComponent::MidiSettingsComponent (BasePlugin& owner) :
    plugin (owner),
    path ("Choose the default MIDI CC map", FileChooserWindow::Mode::open, owner.getMidiMapExtension())
{
    const auto setting = plugin.getDefaultMidiMap();
    path.setSize (pathWidth, pathHeight);
    path.setTextWhenEmpty ("no file chosen");
    path.setFile (setting.file);
    path.addListener (this);
    addSetting ("MIDI CC map", path);

    isUsed.setOn (setting.isUsed);
    isUsed.setEnabled (setting.file != juce::File());
    isUsed.addListener (this);
    indent.setSize (captionWidth, rowHeight);
    useRow.add (indent);
    useRow.add (isUsed);
    addSetting (useRow);
}

void MidiSettingsComponent::pathChanged (PathComponent&)
{
    // Who chooses a file wants it.
    isUsed.setEnabled (true);
    isUsed.setOn (true);
    keep();
}

void MidiSettingsComponent::defaultResourceToggled (DefaultResourceCheckBox&)
{
    keep();
}

void MidiSettingsComponent::keep()
{
    plugin.setDefaultMidiMap ({ path.getFile(), isUsed.isOn() });
}

} // namespace quilvane
