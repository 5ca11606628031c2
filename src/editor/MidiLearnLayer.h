// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

class GFXPanel;
class GUIController;
class MidiControlMap;
class Parameter;

/** Lies over the panel while the user chooses what a MIDI controller shall move: it marks the controls that can be
    moved, with the controllers that they have, and takes one click, or the arrow keys and Return. */
class MidiLearnLayer final : public juce::Component
{
public:
    /** @param onChoice told of the control and its parameter; of null and null if the user leaves without */
    MidiLearnLayer (GFXPanel&, const MidiControlMap&, std::function<void (juce::Component*, Parameter*)> onChoice);

    void paint (juce::Graphics&) override;
    void mouseMove (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override { setHovered (-1); }
    void mouseDown (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    struct Target
    {
        juce::Component* control = nullptr;
        Parameter* parameter = nullptr;
        juce::Rectangle<int> area;
    };

    void collect (juce::Component& parent, const juce::Component& root);
    int findTarget (juce::Point<int>) const;
    void setHovered (int index);
    void choose (int index);

    const MidiControlMap& map;
    const std::function<void (juce::Component*, Parameter*)> onChoice;
    std::vector<Target> targets;
    int hovered = -1;
    int pressed = -1;
};

} // namespace K7R
