// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXRocker.h"

namespace K7R
{

void GFXRocker::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    BaseGFXController::readFromXml (element, skin);

    const auto& type = element.getStringAttribute ("type");

    if (type == "vertical" || type == "horizontal")
        isHorizontal = type == "horizontal";

    place (*this);
}

bool GFXRocker::setAction (const juce::String& type, int eventId, const juce::String&)
{
    if (type == "onLessClick")
        lessEvents[0] = eventId;
    else if (type == "onMoreClick")
        moreEvents[0] = eventId;
    else if (type == "onLessClickWithCtrl")
        lessEvents[1] = eventId;
    else if (type == "onMoreClickWithCtrl")
        moreEvents[1] = eventId;
    else
        return false;

    return true;
}

//==============================================================================
void GFXRocker::mouseDown (const juce::MouseEvent& e)
{
    if (belongsToEditor (e.mods))
        return;

    const auto isLess = isHorizontal ? e.x <= getWidth() / 2 : e.y >= getHeight() / 2;
    const auto& events = isLess ? lessEvents : moreEvents;

    showRest = false;
    state = isLess ? lessDown : moreDown;
    repaint();

    // With Ctrl, only the event for Ctrl.
    fireEvent (events[e.mods.isCtrlDown() ? 1 : 0]);
}

void GFXRocker::mouseDrag (const juce::MouseEvent& e)
{
    // The place in the rocker is held against the rocker's place in its parent; skins are made for that.
    showRest = getBounds().contains (e.getPosition());
    repaint();
}

void GFXRocker::mouseUp (const juce::MouseEvent&)
{
    showRest = false;
    state = atRest;
    repaint();
}

//==============================================================================
void GFXRocker::paint (juce::Graphics& g)
{
    if (getStrip().isValid())
        getStrip().draw (g, showRest ? atRest : state);
    else
        paintFallback (g);
}

void GFXRocker::paintFallback (juce::Graphics& g) const
{
    constexpr int leastGap = 2; // one more between equal sides of an odd size
    constexpr float plain = 0.7f, pressed = 0.5f;

    const juce::Colour grey (0xffe6e6e6);
    g.fillAll (grey);

    auto area = getLocalBounds();
    const auto side = ((isHorizontal ? getWidth() : getHeight()) - leastGap) / 2;
    const auto first = isHorizontal ? area.removeFromLeft (side) : area.removeFromTop (side);
    const auto second = isHorizontal ? area.removeFromRight (side) : area.removeFromBottom (side);

    const auto firstState = isHorizontal ? lessDown : moreDown;
    const auto secondState = isHorizontal ? moreDown : lessDown;
    const auto shown = showRest ? atRest : state;

    g.setColour (grey.darker (shown == firstState ? pressed : plain));
    g.fillRect (first);
    g.setColour (grey.darker (shown == secondState ? pressed : plain));
    g.fillRect (second);
    g.setColour (juce::Colours::black);
    g.drawRect (getLocalBounds(), 1);
}

} // namespace K7R
