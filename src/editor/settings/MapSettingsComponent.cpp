// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/MapSettingsComponent.h"

namespace K7R
{

namespace
{

constexpr int pathWidth = 360, pathHeight = 22;
constexpr int buttonWidth = 86, buttonHeight = 22, buttonSpacing = 8;

} // namespace

MapSettingsComponent::MapSettingsComponent (const MapKind& kind, const BasePlugin::DefaultMap& setting) :
    path ("Choose the default " + kind.name, FileChooserWindow::Mode::open, kind.extension),
    buttons (ComponentRow::Direction::horizontal, ComponentRow::Alignment::start, buttonSpacing)
{
    path.setSize (pathWidth, pathHeight);
    path.setTextWhenEmpty ("no file chosen");
    path.addListener (this);
    addSetting (MapKind::capitalised (kind.name), path);

    isUsed.addListener (this);
    indent.setSize (captionWidth, rowHeight);
    useRow.add (indent);
    useRow.add (isUsed);
    addSetting (useRow);

    buttonIndent.setSize (captionWidth - buttonSpacing, rowHeight);
    buttons.add (buttonIndent);
    forgetButton.setTooltip ("New instances begin without this file");
    forgetButton.onClick = [this] { forget(); };
    addButton (forgetButton);
    addSetting (buttons);
    show (setting);
}

void MapSettingsComponent::addButton (juce::TextButton& button)
{
    button.setSize (buttonWidth, buttonHeight);
    buttons.add (button);
}

void MapSettingsComponent::show (const BasePlugin::DefaultMap& map)
{
    file = map.file;
    path.setFile (file);
    isUsed.setOn (map.isUsed);
    isUsed.setEnabled (file != juce::File());
    forgetButton.setEnabled (file != juce::File());
}

void MapSettingsComponent::pathChanged (PathComponent&)
{
    if (! take (path.getFile()))
        return path.setFile (file);

    // Who chooses a file wants it.
    const BasePlugin::DefaultMap map { path.getFile(), true };
    show (map);
    keep (map);
}

void MapSettingsComponent::defaultResourceToggled (DefaultResourceCheckBox&)
{
    keep ({ file, isUsed.isOn() });
}

void MapSettingsComponent::forget()
{
    show ({});
    keep ({});
}

//==============================================================================
MidiSettingsComponent::MidiSettingsComponent (BasePlugin& owner) :
    MapSettingsComponent (MapKind::midiControllers (owner), owner.getDefaultMidiMap()),
    plugin (owner)
{
}

//==============================================================================
HostMapSettingsComponent::HostMapSettingsComponent (BasePlugin& owner, MapFileDialog::ShowMessage showMessage) :
    MapSettingsComponent (MapKind::hostParameters (owner), owner.getDefaultHostMap()),
    plugin (owner),
    dialog (MapKind::hostParameters (owner), owner.getProductName(), std::move (showMessage))
{
    saveButton.setTooltip ("Save the map of this instance to a file");
    saveButton.onClick = [this] { dialog.askToSave (*this); };
    addButton (saveButton);
}

void HostMapSettingsComponent::forget()
{
    MapSettingsComponent::forget();
    plugin.resetHostMap();
}

} // namespace K7R
