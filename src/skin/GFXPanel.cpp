// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GFXPanel.h"

#include "skin/ControlFactory.h"
#include "skin/SkinElement.h"
#include "skin/SkinParameterController.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

/** The pixels that a component and those in it paint, within an area of its parent. */
juce::int64 getPaintedArea (const juce::Component& component, juce::Rectangle<int> visible)
{
    const auto area = component.getBounds().getIntersection (visible);
    auto pixels = static_cast<juce::int64> (area.getWidth()) * area.getHeight();

    // A panel's own controls have been counted when they were built.
    if (dynamic_cast<const GFXPanel*> (&component) == nullptr)
        for (const auto* child : component.getChildren())
            pixels += getPaintedArea (*child, area - component.getPosition());

    return pixels;
}

} // namespace

GFXPanel::~GFXPanel()
{
    controls.clear(); // from the last to the first
}

void GFXPanel::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    BaseGFXController::readFromXml (element, skin);
    readColourInto (*this, backgroundColourId, element, "bkgCol");

    place (*this);
    skin.enterPanel (getLocalBounds());

    if (const auto* list = element.getChildByName ("controls"))
        for (const auto* control : list->getChildIterator())
            if (! control->isTextElement())
                buildControl (*control, readOffset (*list), skin);
}

void GFXPanel::buildControl (const juce::XmlElement& element, juce::Point<int> offset, SkinFile& skin)
{
    auto control = createControl (element, skin);

    if (control == nullptr)
        return;

    control->setTopLeftPosition (control->getPosition() + offset);

    if (skin.takeArea (element, getPaintedArea (*control, getLocalBounds())))
        addAndMakeVisible (controls.add (std::move (control)));
}

//==============================================================================
template <typename Callback>
void GFXPanel::forEachControl (Callback&& callback)
{
    for (auto* control : controls)
        if (auto* skinControl = dynamic_cast<SkinControl*> (control))
            callback (*skinControl);
}

void GFXPanel::addListener (GUIController::Listener* listener)
{
    GUIController::addListener (listener);
    forEachControl ([=] (auto& control) { control.addListener (listener); });
}

void GFXPanel::removeListener (GUIController::Listener* listener)
{
    GUIController::removeListener (listener);
    forEachControl ([=] (auto& control) { control.removeListener (listener); });
}

void GFXPanel::endPendingGesture()
{
    GUIController::endPendingGesture();
    forEachControl ([] (auto& control) { control.endPendingGesture(); });
}

void GFXPanel::paint (juce::Graphics& g)
{
    if (getStrip().isValid())
        getStrip().draw (g, 0);
    else if (isColourSpecified (backgroundColourId))
        g.fillAll (findColour (backgroundColourId));
}

} // namespace K7R
