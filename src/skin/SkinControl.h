// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/ListenerArray.h"

namespace K7R
{

class GUIController;
class Parameter;
class SkinFile;

/** A control that a skin can place, as the panel around it and the editor see it: it reads its own description, says
    which parameters it moves, and where on it, and tells its listeners what the user does.

    Nearly all are GUIControllers, of one parameter at most; those of several are SkinParameterControllers. Both keep
    the gestures that the user's hand has open here. For the message thread.
*/
class SkinControl
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void controllerGestureBegan (GUIController&) {}
        virtual void controllerGestureEnded (GUIController&) {}
        virtual void controllerValueChanged (GUIController&) {}

        /** @param eventId a number of the plug-in's EventsMap */
        virtual void controllerEvent (GUIController&, int /*eventId*/) {}

        /** The user moved a parameter on a control that is no GUIController. */
        virtual void controllerParameterMoved (Parameter&) {}
    };

    /** The whole control, or one of its channels. */
    struct Part
    {
        juce::Component* component = nullptr;
        Parameter* parameter = nullptr;
    };

    SkinControl() = default;

    /** Nobody is told of the end by a control that isn't whole any more, but the host is told of the end of gestures. */
    virtual ~SkinControl();

    SkinControl (const SkinControl&) = delete;
    SkinControl& operator= (const SkinControl&) = delete;

    /** Once, by the factory, before the control is part of a panel. What is missing leaves a default. */
    virtual void readFromXml (const juce::XmlElement&, SkinFile&) = 0;

    /** The parameter under the mouse, null for none.
        @param component set to the part that shows it, if the control has several and this isn't null */
    virtual Parameter* getParameterAt (const juce::MouseEvent&, juce::Component** component) = 0;

    /** Whether a double click there resets the parameter. */
    virtual bool canResetParameterAt (const juce::MouseEvent&) = 0;

    /** Every parameter that the control moves, with what shows it. */
    virtual std::vector<Part> getParts() = 0;

    virtual void addListener (Listener*);
    virtual void removeListener (Listener*);

    /** Ends what is under way, because its end won't be seen: the window closes. */
    virtual void endPendingGesture() { closeGestures(); }

    /** Clicks that controls leave alone: the right button shows the parameter's information, Shift resets it. */
    static bool belongsToEditor (const juce::ModifierKeys& mods)
    {
        return mods.isShiftDown() || mods.isRightButtonDown();
    }

protected:
    /** Tells the host that the user's hand is on a parameter; once, until all gestures are closed. */
    void openGesture (Parameter&);
    void closeGestures();

    ListenerArray<Listener> listeners;

private:
    std::vector<Parameter*> openGestures;
};

} // namespace K7R
