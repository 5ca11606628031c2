// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "skin/controls/GFXStateButton.h"

namespace K7R
{

/** A button that stays in or out, and follows a parameter. Its strip has the frames off and on in the style "2D",
    and off, off and pressed, on, on and pressed in the style "3D". */
class GFXToggleButton final : public GFXStateButton
{
public:
    /** Buttons that one drag across them switches together. Owned by whoever gives it to its members; a member that
        goes takes itself out. */
    struct SweepGroup
    {
        std::vector<GFXToggleButton*> members;
        int startX = 0, startY = 0; // on the screen
        bool value = false;
    };

    explicit GFXToggleButton (const juce::String& controlName);
    ~GFXToggleButton() override;

    /** Reads further "style", "clickEvent" and "radioGroupId". A double click only resets the parameter if
        "paramReset" says so. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes "onClickWithCtrl". */
    bool setAction (const juce::String& type, int eventId, const juce::String& eventName) override;
    void updateFromParameter (Parameter&) override;

    void setSweepGroup (SweepGroup*);

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void clicked (const juce::ModifierKeys&) override;
    void paintButton (juce::Graphics&, bool isOver, bool isDown) override;

private:
    bool isShownOn() const { return getToggleState() != invertedLink; }
    void sweepTo (juce::Point<int> screenPosition);
    void paintFallback (juce::Graphics&) const;

    bool invertedLink = false; // nothing sets it yet
    SweepGroup* sweepGroup = nullptr;
    int onClickWithCtrlEvent = noEvent;
};

} // namespace K7R
