// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** Shows one component at a time over everything else, until the user clicks beside it. */
class FloatingComponentOwner
{
public:
    /** Who asked for a component to be shown is told when it's gone. */
    class Callback
    {
    public:
        virtual ~Callback() = default;

        /** @param event the click that closed it, or null */
        virtual void floatingComponentHidden (juce::Component&, const juce::MouseEvent* event) = 0;

        /** Whether a click beside the component shall not close it. */
        virtual bool keepsFloatingComponent (juce::Component&, const juce::MouseEvent&) { return false; }
    };

    virtual ~FloatingComponentOwner() = default;

    /** Shows a component in place of the one that is shown now.
        @param position its top left corner, in relativeTo, or in the owner if that is null
        @param callback may be null; outlives the showing */
    virtual void showFloatingComponent (juce::Component&, juce::Point<int> position, juce::Component* relativeTo,
                                        Callback* callback) = 0;

    /** Hides the component if it's the one that is shown. */
    virtual void hideFloatingComponent (juce::Component&, const juce::MouseEvent* event) = 0;

    // The same through the first owner among the parents of a component; false if there's none.
    static bool showFloating (juce::Component& from, juce::Component&, juce::Point<int> position,
                              juce::Component* relativeTo, Callback*);
    static bool hideFloating (juce::Component& from, juce::Component&, const juce::MouseEvent*);
};

} // namespace K7R
