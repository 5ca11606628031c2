// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "parameters/Parameter.h"
#include "skin/BlinkingComponent.h"
#include "skin/SkinControl.h"

namespace K7R
{

/** A control that may be tied to one parameter, and tells its listeners of gestures, changes of value and named
    events.

    A class derives from this and from a juce::Component; GFXPanel creates it, calls readFromXml() once, and owns
    the component side. Values flow down from the user by the protected operations, and up from the parameter, on
    the message thread, by updateFromParameter(), which shows the value without writing it back.
*/
class GUIController : public Parameter::Listener, public BlinkingComponent, public SkinControl
{
public:
    using Listener = SkinControl::Listener;

    GUIController() = default;
    ~GUIController() override;

    /** Reads the links and the actions, and whether a double click resets the parameter. Classes extend it by
        what they take from the element; what is missing there leaves a default. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** The gesture `type` ("onClick") shall fire an event. Controls take the types that they know.
        @returns whether this is one of them */
    virtual bool setAction (const juce::String& /*type*/, int /*eventId*/, const juce::String& /*eventName*/)
    {
        return false;
    }

    /** Shows a parameter's value. */
    virtual void updateFromParameter (Parameter&) {}

    // Of the linked parameter, for the whole control. A control of several parts gives the one under the mouse.
    Parameter* getParameterAt (const juce::MouseEvent&, juce::Component** component) override;
    bool canResetParameterAt (const juce::MouseEvent&) override { return paramReset; }
    std::vector<Part> getParts() override;

    /** The linked parameter, or null. */
    Parameter* getParameter() const noexcept { return linkedParameter; }

    void endPendingGesture() override { endGesture(); }

    void parameterChanged (Parameter&) override;

protected:
    /** What readFromXml() does here, for controls that leave out what the classes between do. */
    void readLinks (const juce::XmlElement&, SkinFile&);

    // From the user to the parameter and the listeners. Without a parameter the listeners are told all the same.
    void beginGesture();
    void endGesture();
    void notifyGestureBegan();
    void notifyGestureEnded();
    void notifyValueChanged();

    /** Gives the parameter a text that the user typed, in a gesture.
        @returns false, and nothing happens, for a text that names no value, and without a parameter */
    bool sendTypedText (const juce::String&);

    /** The same for a plain value. */
    bool sendTypedNumber (double);

    /** Does nothing for noEvent. */
    void fireEvent (int eventId);

    /** Ties the control to a parameter in place of the one before, and shows it. */
    void setParameter (Parameter&);

    static constexpr int noEvent = -1;

    bool paramReset = true;

    /** While true, the control neither follows its parameter nor writes to it. Nothing sets it yet. */
    bool linkMuted = false;

private:
    void readLink (const juce::XmlElement&, SkinFile&);
    void readAction (const juce::XmlElement&, SkinFile&);
    template <typename Setter>
    bool sendTyped (Setter&& set);

    Parameter* linkedParameter = nullptr;
    bool gestureIsOpen = false;
};

} // namespace K7R
