// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/BaseGFXController.h"

namespace K7R
{

/** A push button that fires events. Linked to a parameter it is momentary: the parameter is true exactly while the
    button is held, and the button doesn't follow it back. Its strip has the frames up, pressed, and if
    it can be lit by the editor, lit; that is its toggle state. */
class GFXButton final : public BaseGFXController, public juce::Button
{
public:
    /** As large as its name, with room around it. */
    explicit GFXButton (const juce::String& controlName);

    /** Reads further "clickEvent", which a linked button doesn't obey, and "autorepeat". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes "onClick", "onClickWithCtrl" and "onRightClick". */
    bool setAction (const juce::String& type, int eventId, const juce::String& eventName) override;

    void endPendingGesture() override;

    void mouseDown (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void clicked (const juce::ModifierKeys&) override;
    void buttonStateChanged() override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

private:
    struct Action
    {
        int eventId = noEvent;
        juce::String eventName;
    };

    bool wasDown = false;
    Action onClickEvent, onClickWithCtrlEvent, onRightClickEvent;
};

} // namespace K7R
