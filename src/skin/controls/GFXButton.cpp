// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXButton.h"

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"

namespace K7R
{

namespace
{

constexpr float textHeight = 12.0f;
constexpr int defaultHeight = 18;
constexpr int roomBesideText = 8;

// A frame of the strip; where it has two, a lit button looks as if it were down.
constexpr int upFrame = 0, downFrame = 1, litFrame = 2;

constexpr int repeatDelayMs = 1000, repeatIntervalMs = 100;

} // namespace

GFXButton::GFXButton (const juce::String& controlName) : juce::Button (controlName)
{
    const auto textWidth = controlName.isEmpty() ? 0 : juce::Font (textHeight).getStringWidth (controlName);
    setSize (controlName.isEmpty() ? defaultHeight : textWidth + roomBesideText, defaultHeight);
    setWantsKeyboardFocus (false);
}

void GFXButton::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    BaseGFXController::readFromXml (element, skin);
    readClickEvent (*this, element);

    if (getParameter() != nullptr)
        setTriggeredOnMouseDown (true);

    const auto& autorepeat = element.getStringAttribute ("autorepeat");

    if (autorepeat == "yes")
        setRepeatSpeed (repeatDelayMs, repeatIntervalMs);
    else if (autorepeat == "no")
        setRepeatSpeed (0, 0);

    place (*this);

    // There is no value to go back to.
    paramReset = false;
}

bool GFXButton::setAction (const juce::String& type, int eventId, const juce::String& eventName)
{
    if (type == "onClick")
        onClickEvent = { eventId, eventName };
    else if (type == "onClickWithCtrl")
        onClickWithCtrlEvent = { eventId, eventName };
    else if (type == "onRightClick")
        onRightClickEvent = { eventId, eventName };
    else
        return false;

    if (type == "onClick")
        setTitle (eventName);

    return true;
}

//==============================================================================
void GFXButton::mouseDown (const juce::MouseEvent& e)
{
    if (e.mods.isRightButtonDown())
        return;

    if (getParameter() != nullptr)
        beginGesture();

    juce::Button::mouseDown (e);
}

void GFXButton::mouseUp (const juce::MouseEvent& e)
{
    if (e.mods.isRightButtonDown())
        return;

    juce::Button::mouseUp (e);
    endGesture();
}

void GFXButton::endPendingGesture()
{
    // The release that won't come.
    if (isDown())
        setState (buttonNormal);

    endGesture();
}

void GFXButton::clicked (const juce::ModifierKeys& mods)
{
    if (mods.isCtrlDown())
        fireEvent (onClickWithCtrlEvent.eventId);
    else if (mods.isRightButtonDown() && onRightClickEvent.eventId != noEvent)
        fireEvent (onRightClickEvent.eventId);
    else
        fireEvent (onClickEvent.eventId);
}

void GFXButton::buttonStateChanged()
{
    const auto isHeld = getState() == buttonDown;

    if (auto* parameter = getParameter(); parameter != nullptr && isHeld != wasDown)
    {
        parameter->setBool (isHeld, true);
        notifyValueChanged();
    }

    wasDown = isHeld;
}

//==============================================================================
void GFXButton::paintButton (juce::Graphics& g, bool isOver, bool isPressed)
{
    if (getStrip().isValid())
    {
        const auto frame = isOver && isPressed ? downFrame : getToggleState() ? litFrame : upFrame;
        getStrip().draw (g, juce::jmin (frame, getStrip().getNumFrames() - 1));
        return;
    }

    g.fillAll (Fallbacks::faceOf ((isOver && isPressed) || getToggleState()));
    g.setColour (juce::Colours::black);
    g.drawRect (getLocalBounds(), 1);

    g.setColour (isEnabled() ? juce::Colours::black : juce::Colour (0xff808080));
    g.setFont (textHeight);
    g.drawText (getButtonText(), getLocalBounds(), juce::Justification::centred);
}

} // namespace K7R
