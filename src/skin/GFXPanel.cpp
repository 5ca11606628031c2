// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GFXPanel.h"

#include "skin/ControlFactory.h"
#include "skin/SkinElement.h"
#include "skin/SkinFile.h"
#include "skin/SkinParameterController.h"

namespace quilvane
{

GFXPanel::~GFXPanel()
{
    controls.clear(); // from the last to the first
}

void GFXPanel::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    BaseGFXController::readFromXml (element, skin);
    readColourInto (*this, backgroundColourId, element, "bkgCol");

    if (const auto* list = element.getChildByName ("controls"))
    {
        for (const auto* control : list->getChildIterator())
            if (! control->isTextElement())
                buildControl (*control, skin);

        const auto offset = readOffset (*list);

        for (auto* child : controls)
            child->setTopLeftPosition (child->getPosition() + offset);
    }

    place (*this);
}

void GFXPanel::buildControl (const juce::XmlElement& element, SkinFile& skin)
{
    if (auto control = createControl (element, skin))
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

} // namespace quilvane
