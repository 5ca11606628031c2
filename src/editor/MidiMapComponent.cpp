// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/MidiMapComponent.h"

#include "core/BasePlugin.h"
#include "parameters/SafeFile.h"

namespace quilvane
{

namespace
{

constexpr int width = 172, rowHeight = 22, spacing = 8;

} // namespace

MidiMapComponent::MidiMapComponent (BasePlugin& owner, std::function<void (const juce::String&)> show,
                                    std::function<void()> callWhenChoosing) :
    plugin (owner),
    showMessage (std::move (show)),
    onChoosing (std::move (callWhenChoosing)),
    folder (juce::File::getSpecialLocation (juce::File::userHomeDirectory))
{
    caption.setBorderSize ({});
    loadButton.setTooltip ("Load a MIDI CC map from a file");
    loadButton.onClick = [this] { choose (FileChooserWindow::Mode::open); };
    saveButton.setTooltip ("Save the present MIDI CC map to a file");
    saveButton.onClick = [this] { choose (FileChooserWindow::Mode::save); };
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

void MidiMapComponent::choose (FileChooserWindow::Mode mode)
{
    const auto isSave = mode == FileChooserWindow::Mode::save;
    const auto start = isSave ? folder.getChildFile (plugin.getProductName() + plugin.getMidiMapExtension()) : folder;

    FileChooserWindow::ask (chooser, *this, isSave ? "Save MIDI CC map as" : "Load MIDI CC map", mode,
                            plugin.getMidiMapExtension(), start,
                            [this, isSave] (const juce::File& file)
                            {
                                folder = file.getParentDirectory();

                                if (isSave)
                                    save (file);
                                else
                                    load (file);
                            });
    onChoosing();
}

void MidiMapComponent::load (const juce::File& file)
{
    const auto isLoaded = plugin.getMidiControlMap().loadFromFile (file);
    showMessage (isLoaded ? "MIDI CC map loaded: " + file.getFileName()
                          : "'" + file.getFileName() + "' holds no MIDI CC map of this plug-in");
}

void MidiMapComponent::save (const juce::File& file)
{
    const auto isSaved = replaceFileSafely (file, *plugin.getMidiControlMap().createXml());
    showMessage (isSaved ? "MIDI CC map saved: " + file.getFileName()
                         : "The MIDI CC map couldn't be saved as '" + file.getFullPathName() + "'");
}

} // namespace quilvane
