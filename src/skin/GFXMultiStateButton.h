// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace quilvane
{

/** A button that shows which of several states its parameter is in. It doesn't write to the parameter: the event
    that it fires does the work. Its strip has a frame for each state in the style "2D", and two, up and pressed, in
    the style "3D". */
class GFXMultiStateButton final : public BaseGFXController, public juce::Button, private juce::Timer
{
public:
    explicit GFXMultiStateButton (const juce::String& controlName) : juce::Button (controlName) {}

    /** Reads further "style", "states", "clickEvent" and "radioGroupId". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes "onClick", "onClickWithCtrl", "onClickWithShift" and "onRightClick"; the last two never fire, because
        such clicks belong to the editor. */
    void setAction (const juce::String& type, int eventId, const juce::String& eventName) override;
    void updateFromParameter (Parameter&) override;

    int getCurrentState() const noexcept { return currentState; }
    int getNumStates() const noexcept { return statesNum; }

    void clicked (const juce::ModifierKeys&) override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

private:
    void blinkChanged() override { repaint(); }

    /** One shot: back to the first state. Nothing starts it yet. */
    void timerCallback() override;

    void show (int state);

    bool is3D = false;
    int currentState = 0;
    int statesNum = 2;
    int onClickEvent = noEvent, onClickWithCtrlEvent = noEvent;
    int onClickWithShiftEvent = noEvent, onRightClickEvent = noEvent;
};

} // namespace quilvane
