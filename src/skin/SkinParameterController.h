// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "skin/SkinControl.h"
#include "widgets/controls/ParameterController.h"

namespace K7R
{

/** A control of a skin that moves any number of parameters by itself, which its element lists by "param" elements. */
class SkinParameterController : public juce::Component, public ParameterController, public SkinControl
{
public:
    explicit SkinParameterController (const juce::String& controlName) : juce::Component (controlName) {}

    using Listener = SkinControl::Listener;

    bool canResetParameterAt (const juce::MouseEvent&) override;

protected:
    /** Adds the parameter that an element "param" names, with "reset", whether a double click resets it. */
    void readParameter (const juce::XmlElement& param, SkinFile&);

    /** Tells the listeners of a value that the user gave. */
    void notifyMoved (Parameter&);

private:
    std::vector<const Parameter*> notReset; // by a double click
};

} // namespace K7R
