// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXMultiStateButton.h"

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

void GFXMultiStateButton::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    if (const auto states = element.getIntAttribute ("states", statesNum); states >= 2 && states <= maximumControlSize)
        statesNum = states;

    readStates (element, skin, statesNum);
}

bool GFXMultiStateButton::setAction (const juce::String& type, int eventId, const juce::String&)
{
    if (type == "onClick")
        onClickEvent = eventId;
    else if (type == "onClickWithCtrl")
        onClickWithCtrlEvent = eventId;
    else if (type == "onClickWithShift")
        onClickWithShiftEvent = eventId;
    else if (type == "onRightClick")
        onRightClickEvent = eventId;
    else
        return false;

    return true;
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

    paintState (g, isBlinkedOff() ? 0 : currentState, pressed);
}

} // namespace K7R
