// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "widgets/FileChooserWindow.h"
#include "widgets/HardLabel.h"

namespace quilvane
{

class BasePlugin;

/** Loads and saves the map of MIDI controllers of one instance. */
class MidiMapComponent final : public juce::Component
{
public:
    /** @param showMessage told what came of it
        @param onChoosing called when a window for a file is open, which needs the room */
    MidiMapComponent (BasePlugin&, std::function<void (const juce::String&)> showMessage,
                      std::function<void()> onChoosing);

    void resized() override;

private:
    void choose (FileChooserWindow::Mode);
    void load (const juce::File&);
    void save (const juce::File&);

    BasePlugin& plugin;
    const std::function<void (const juce::String&)> showMessage;
    const std::function<void()> onChoosing;
    juce::File folder;
    HardLabel caption { {}, "Midi CC Map" };
    juce::TextButton loadButton { "Load" }, saveButton { "Save" };
    std::unique_ptr<FileChooserWindow> chooser;
};

} // namespace quilvane
