// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/GUIController.h"
#include "skin/SkinElement.h"

namespace K7R
{

/** A control that takes its place and its size from the skin, and has no image of its own. */
class PlacedComponent : public GUIController, public juce::Component
{
public:
    explicit PlacedComponent (const juce::String& controlName) : juce::Component (controlName) {}

    /** Reads further the children "size" and "pos". */
    void readFromXml (const juce::XmlElement& element, SkinFile& skin) override
    {
        GUIController::readFromXml (element, skin);
        applySize (*this, element.getChildByName ("size"));
        applyPosition (*this, element.getChildByName ("pos"));
    }
};

} // namespace K7R
