// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/MidiMapComponent.h"

#include "core/BasePlugin.h"

namespace K7R
{

namespace
{

constexpr int width = 172, rowHeight = 22, spacing = 8;

} // namespace

MidiMapComponent::MidiMapComponent (BasePlugin& plugin, MapFileDialog::ShowMessage show,
                                    const std::function<void()>& onChoosing) :
    dialog (MapKind::midiControllers (plugin), plugin.getProductName(), std::move (show))
{
    caption.setBorderSize ({});
    loadButton.setTooltip ("Load a MIDI CC map from a file");
    loadButton.onClick = [this, onChoosing]
    {
        dialog.askToLoad (*this);
        onChoosing();
    };
    saveButton.setTooltip ("Save the present MIDI CC map to a file");
    saveButton.onClick = [this, onChoosing]
    {
        dialog.askToSave (*this);
        onChoosing();
    };
    addAndMakeVisible (caption);
    addAndMakeVisible (loadButton);
    addAndMakeVisible (saveButton);
    setSize (width, 2 * rowHeight + spacing);
}

void MidiMapComponent::resized()
{
    auto area = getLocalBounds();
    caption.setBounds (area.removeFromTop (rowHeight));
    area.removeFromTop (spacing);
    loadButton.setBounds (area.removeFromLeft ((width - spacing) / 2));
    saveButton.setBounds (area.removeFromRight ((width - spacing) / 2));
}

} // namespace K7R
