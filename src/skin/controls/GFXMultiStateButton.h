// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/controls/GFXStateButton.h"

namespace K7R
{

/** A button that shows which of several states its parameter is in. It doesn't write to the parameter: the event
    that it fires does the work. Its strip has a frame for each state in the style "2D", and two, up and pressed, in
    the style "3D". */
class GFXMultiStateButton final : public GFXStateButton, private juce::Timer
{
public:
    using GFXStateButton::GFXStateButton;

    /** Reads further "style", "states", "clickEvent" and "radioGroupId". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes "onClick", "onClickWithCtrl", "onClickWithShift" and "onRightClick"; the last two never fire, because
        such clicks belong to the editor. */
    bool setAction (const juce::String& type, int eventId, const juce::String& eventName) override;
    void updateFromParameter (Parameter&) override;

    int getCurrentState() const noexcept { return currentState; }
    int getNumStates() const noexcept { return statesNum; }

    void clicked (const juce::ModifierKeys&) override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

private:
    /** One shot: back to the first state. Nothing starts it yet. */
    void timerCallback() override;

    void show (int state);

    int currentState = 0;
    int statesNum = 2;
    int onClickEvent = noEvent, onClickWithCtrlEvent = noEvent;
    int onClickWithShiftEvent = noEvent, onRightClickEvent = noEvent;
};

} // namespace K7R
