// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

/** The floating component of an editor, and the hider that watches for clicks beside it. The click that opened the
    component doesn't close it: the hider is armed by the mouse button's next release. */
class FloatingLayer final : private juce::MouseListener
{
public:
    /** @param editor everything that a click can hit; the component becomes its child */
    explicit FloatingLayer (juce::Component& editor) : root (editor) {}
    ~FloatingLayer() override;

    void show (juce::Component&, juce::Point<int> position, juce::Component* relativeTo,
               FloatingComponentOwner::Callback*);
    void hide (juce::Component&, const juce::MouseEvent*);

    /** The component that is shown, or null. */
    juce::Component* getShown() const noexcept { return shown; }

private:
    void mouseDown (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;

    juce::Component& root;
    juce::Component::SafePointer<juce::Component> shown, focusBefore;
    FloatingComponentOwner::Callback* callback = nullptr;
    bool isArmed = false;
};

} // namespace K7R
