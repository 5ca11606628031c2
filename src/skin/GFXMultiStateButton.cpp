// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GFXMultiStateButton.h"

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/SkinFile.h"

namespace quilvane
{

void GFXMultiStateButton::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    readLinks (element, skin);

    if (const auto& style = element.getStringAttribute ("style"); style == "2D" || style == "3D")
        is3D = style == "3D";

    if (const auto states = element.getIntAttribute ("states", statesNum); states >= 2 && states <= maximumControlSize)
        statesNum = states;

    if (const auto* gfx = element.getChildByName ("gfx"))
        setImage (skin.getImage (gfx->getStringAttribute ("resource")), is3D ? statesNum * 2 : statesNum);

    readGeometry (element);
    readClickEvent (*this, element);
    place (*this);

    if (const auto group = element.getIntAttribute ("radioGroupId"); group != 0)
        setRadioGroupId (group, juce::dontSendNotification);
}

void GFXMultiStateButton::setAction (const juce::String& type, int eventId, const juce::String&)
{
    if (type == "onClick")
        onClickEvent = eventId;
    else if (type == "onClickWithCtrl")
        onClickWithCtrlEvent = eventId;
    else if (type == "onClickWithShift")
        onClickWithShiftEvent = eventId;
    else if (type == "onRightClick")
        onRightClickEvent = eventId;
}

void GFXMultiStateButton::updateFromParameter (Parameter& parameter)
{
    show (FilmStrip::frameFor (juce::jlimit (0.0f, 1.0f, parameter.getNormalised()), statesNum));
}

void GFXMultiStateButton::timerCallback()
{
    stopTimer();
    show (0);
}

void GFXMultiStateButton::show (int state)
{
    if (std::exchange (currentState, state) != state)
        repaint();
}

void GFXMultiStateButton::clicked (const juce::ModifierKeys& mods)
{
    if (belongsToEditor (mods))
        return;

    if (mods.isCtrlDown() && onClickWithCtrlEvent != noEvent)
        fireEvent (onClickWithCtrlEvent);
    else
        fireEvent (onClickEvent);
}

void GFXMultiStateButton::paintButton (juce::Graphics& g, bool isOver, bool isPressed)
{
    const auto pressed = isOver && isPressed;

    if (! getStrip().isValid())
        return Fallbacks::paintState (g, getLocalBounds(), Fallbacks::faceOf (pressed), currentState, statesNum);

    const auto state = isBlinkedOff() ? 0 : currentState;
    getStrip().draw (g, is3D ? state * 2 + (pressed ? 1 : 0) : state);
}

} // namespace quilvane
