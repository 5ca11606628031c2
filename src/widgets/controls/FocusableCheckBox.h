// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/controls/CheckBox_V2.h"

namespace K7R
{

/** A check box that the keyboard reaches: the box itself takes no focus, so this takes it in its place. */
class FocusableCheckBox : public juce::Component
{
public:
    explicit FocusableCheckBox (const juce::String& text);

    bool isOn() const { return box.getToggleState(); }

    /** Doesn't call onClick. */
    void setOn (bool shouldBeOn) { box.setToggleState (shouldBeOn, juce::dontSendNotification); }

    /** The user has clicked it. */
    std::function<void()> onClick;

    void resized() override { box.setBounds (getLocalBounds()); }
    bool keyPressed (const juce::KeyPress&) override;
    void paintOverChildren (juce::Graphics&) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

private:
    CheckBox_V2 box;
};

} // namespace K7R
