// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXStateButton.h"

namespace K7R
{

void GFXStateButton::readStates (const juce::XmlElement& element, SkinFile& skin, int numStates)
{
    readLinks (element, skin);

    if (const auto& style = element.getStringAttribute ("style"); style == "2D" || style == "3D")
        is3D = style == "3D";

    if (const auto* gfx = element.getChildByName ("gfx"))
        setStrip (readStrip (*gfx, "resource", is3D ? numStates * 2 : numStates, skin));

    readGeometry (element);
    readClickEvent (*this, element);
    place (*this);

    if (const auto group = element.getIntAttribute ("radioGroupId"); group != 0)
        setRadioGroupId (group, juce::dontSendNotification);
}

void GFXStateButton::paintState (juce::Graphics& g, int state, bool isPressed) const
{
    getStrip().draw (g, is3D ? state * 2 + (isPressed ? 1 : 0) : state);
}

} // namespace K7R
