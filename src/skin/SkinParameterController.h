// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "skin/GUIController.h"
#include "widgets/ParameterController.h"

namespace quilvane
{

/** A control of a skin that moves any number of parameters by itself, which its element lists by "param" elements.
    It keeps the gestures that the user's hand has open, and tells the listeners of the panel. */
class SkinParameterController : public juce::Component, public ParameterController, public ParameterTarget
{
public:
    explicit SkinParameterController (const juce::String& controlName) : juce::Component (controlName) {}

    /** The host is told of the end of gestures, the listeners aren't. */
    ~SkinParameterController() override;

    void addListener (GUIController::Listener*);
    void removeListener (GUIController::Listener*);

    /** Ends the gestures that are under way, because their end won't be seen: the window closes. */
    virtual void endPendingGesture() { endGestures(); }

    bool canResetParameterAt (const juce::MouseEvent&) override;

protected:
    /** Adds the parameter that an element "param" names, with "reset", whether a double click resets it. */
    void readParameter (const juce::XmlElement& param, SkinFile&);

    // From the user to the parameter; the listeners are told of the value.
    void beginGesture (Parameter&);
    void notifyMoved (Parameter&);
    void endGestures();

private:
    ListenerArray<GUIController::Listener> listeners;
    std::vector<Parameter*> openGestures;
    std::vector<const Parameter*> notReset; // by a double click
};

} // namespace quilvane
