// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editor/settings/MapFileDialog.h"
#include "widgets/look/HardLabel.h"

namespace K7R
{

/** Loads and saves the map of MIDI controllers of one instance. */
class MidiMapComponent final : public juce::Component
{
public:
    /** @param showMessage told what came of it
        @param onChoosing called when a window for a file is open, which needs the room */
    MidiMapComponent (BasePlugin&, MapFileDialog::ShowMessage showMessage, const std::function<void()>& onChoosing);

    void resized() override;

private:
    HardLabel caption { {}, "Midi CC Map" };
    juce::TextButton loadButton { "Load" }, saveButton { "Save" };
    MapFileDialog dialog;
};

} // namespace K7R
