// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/GUIController.h"
#include "skin/SkinElement.h"

namespace quilvane
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

        if (const auto* size = element.getChildByName ("size"))
            setSize (readSize (*size).x, readSize (*size).y);

        if (const auto* pos = element.getChildByName ("pos"))
            setTopLeftPosition (readPosition (*pos));
    }
};

} // namespace quilvane
