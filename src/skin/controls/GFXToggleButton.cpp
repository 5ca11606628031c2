// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXToggleButton.h"

#include <algorithm>

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

GFXToggleButton::GFXToggleButton (const juce::String& controlName) : GFXStateButton (controlName)
{
    setClickingTogglesState (true);
}

GFXToggleButton::~GFXToggleButton()
{
    setSweepGroup (nullptr);
}

void GFXToggleButton::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    constexpr int numStates = 2;

    readStates (element, skin, numStates);
    paramReset = element.getBoolAttribute ("paramReset", false);
}

bool GFXToggleButton::setAction (const juce::String& type, int eventId, const juce::String&)
{
    if (type == "onClickWithCtrl")
        onClickWithCtrlEvent = eventId;
    else
        return false;

    return true;
}

void GFXToggleButton::updateFromParameter (Parameter& parameter)
{
    setToggleState (parameter.getBool(), juce::dontSendNotification);
}

//==============================================================================
void GFXToggleButton::mouseDown (const juce::MouseEvent& e)
{
    if (belongsToEditor (e.mods))
        return;

    if (! linkMuted && getParameter() != nullptr)
        beginGesture();

    juce::Button::mouseDown (e);

    if (sweepGroup != nullptr)
    {
        sweepGroup->startX = e.getScreenX();
        sweepGroup->startY = e.getScreenY();
        sweepGroup->value = getToggleState();
    }
}

void GFXToggleButton::mouseDrag (const juce::MouseEvent& e)
{
    if (belongsToEditor (e.mods))
        return;

    juce::Button::mouseDrag (e);

    if (sweepGroup != nullptr)
        sweepTo (e.getScreenPosition());
}

void GFXToggleButton::mouseUp (const juce::MouseEvent& e)
{
    juce::Button::mouseUp (e);

    if (! linkMuted)
        endGesture();
}

void GFXToggleButton::clicked (const juce::ModifierKeys& mods)
{
    if (auto* parameter = getParameter(); parameter != nullptr && ! linkMuted)
    {
        parameter->setBool (getToggleState(), true);
        notifyValueChanged();
    }

    if (mods.isCtrlDown())
        fireEvent (onClickWithCtrlEvent);
}

//==============================================================================
void GFXToggleButton::setSweepGroup (SweepGroup* group)
{
    if (sweepGroup != nullptr)
    {
        auto& members = sweepGroup->members;
        members.erase (std::remove (members.begin(), members.end(), this), members.end());
    }

    sweepGroup = group;

    if (sweepGroup != nullptr)
        sweepGroup->members.push_back (this);
}

void GFXToggleButton::sweepTo (juce::Point<int> screenPosition)
{
    const auto swept = juce::Range<int>::between (sweepGroup->startX, screenPosition.x);

    for (auto* member : sweepGroup->members)
        if (const auto bounds = member->getScreenBounds();
            swept.getStart() < bounds.getRight() && swept.getEnd() >= bounds.getX())
            member->setToggleState (sweepGroup->value, juce::sendNotification);
}

//==============================================================================
void GFXToggleButton::paintButton (juce::Graphics& g, bool isOver, bool isPressed)
{
    if (! getStrip().isValid())
        return paintFallback (g);

    if (isBlinkedOff())
        paintState (g, 0, false);
    else
        paintState (g, isShownOn() ? 1 : 0, isOver && isPressed);
}

void GFXToggleButton::paintFallback (juce::Graphics& g) const
{
    constexpr int roomForText = 32;

    Fallbacks::drawFrame (g, getLocalBounds());

    g.setColour (juce::Colours::black);
    g.drawText (isShownOn() ? "On" : "Off", getLocalBounds(), juce::Justification::centredTop);

    if (const auto* parameter = GUIController::getParameter())
        g.drawText (parameter->getName(), getLocalBounds(), juce::Justification::centredBottom);

    const auto side = juce::jmax (0, juce::jmin (getWidth(), getHeight()) - roomForText);
    const auto square = getLocalBounds().withSizeKeepingCentre (side, side);
    g.drawRect (square, 1);

    if (isShownOn() && isEnabled() && ! isBlinkedOff())
        g.fillRect (square);
}

} // namespace K7R
