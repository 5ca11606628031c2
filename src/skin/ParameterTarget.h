// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

namespace quilvane
{

class Parameter;

/** A control of a skin as the editor sees it: which parameters it moves, and where on it. */
class ParameterTarget
{
public:
    /** The whole control, or one of its channels. */
    struct Part
    {
        juce::Component* component = nullptr;
        Parameter* parameter = nullptr;
    };

    virtual ~ParameterTarget() = default;

    /** The parameter under the mouse, null for none.
        @param component set to the part that shows it, if the control has several and this isn't null */
    virtual Parameter* getParameterAt (const juce::MouseEvent&, juce::Component** component) = 0;

    /** Whether a double click there resets the parameter. */
    virtual bool canResetParameterAt (const juce::MouseEvent&) = 0;

    /** Every parameter that the control moves, with what shows it. */
    virtual std::vector<Part> getParts() = 0;

    /** Clicks that controls leave alone: the right button shows the parameter's information, Shift resets it. */
    static bool belongsToEditor (const juce::ModifierKeys& mods)
    {
        return mods.isShiftDown() || mods.isRightButtonDown();
    }
};

} // namespace quilvane
