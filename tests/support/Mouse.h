// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** What a mouse does to a component, without a window. */
class Mouse
{
public:
    explicit Mouse (juce::Component& target) : component (target) {}

    /** Presses a button, the left one if not told otherwise. */
    void press (juce::Point<int> position, int modifiers = juce::ModifierKeys::leftButtonModifier)
    {
        start = position;
        flags = modifiers;
        juce::ModifierKeys::currentModifiers = juce::ModifierKeys (modifiers); // which buttons look at by themselves
        component.mouseEnter (event (position, false));
        component.mouseDown (event (position, false));
    }

    void drag (juce::Point<int> position) { component.mouseDrag (event (position, true)); }

    /** @param added keys that are held by then */
    void release (juce::Point<int> position, int added = 0)
    {
        flags |= added;
        component.mouseUp (event (position, position != start));
        juce::ModifierKeys::currentModifiers = {};
    }

    /** A press and a release in the middle. */
    void click (int modifiers = juce::ModifierKeys::leftButtonModifier)
    {
        press (component.getLocalBounds().getCentre(), modifiers);
        release (start);
    }

    /** A drag by so much from the middle. */
    void dragBy (juce::Point<int> distance, int modifiers = juce::ModifierKeys::leftButtonModifier)
    {
        press (component.getLocalBounds().getCentre(), modifiers);
        drag (start + distance);
        release (start + distance);
    }

    juce::MouseEvent event (juce::Point<int> position, bool wasDragged) const
    {
        const auto now = juce::Time::getCurrentTime();
        return { juce::Desktop::getInstance().getMainMouseSource(),
                 position.toFloat(),
                 juce::ModifierKeys (flags),
                 1.0f,
                 0.0f,
                 0.0f,
                 0.0f,
                 0.0f,
                 &component,
                 &component,
                 now,
                 start.toFloat(),
                 now,
                 1,
                 wasDragged };
    }

private:
    juce::Component& component;
    juce::Point<int> start;
    int flags = juce::ModifierKeys::leftButtonModifier;
};
