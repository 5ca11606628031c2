// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GUIController.h"

#include "core/BasePlugin.h"
#include "skin/SkinFile.h"

namespace quilvane
{

GUIController::~GUIController()
{
    if (linkedParameter != nullptr)
        linkedParameter->removeAsyncListener (this);
}

void GUIController::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    readLinks (element, skin);
}

void GUIController::readLinks (const juce::XmlElement& element, SkinFile& skin)
{
    auto& plugin = skin.getPlugin();
    paramReset = element.getBoolAttribute ("paramReset", true);

    if (const auto* links = element.getChildByName ("links"))
        for (const auto* link : links->getChildWithTagNameIterator ("link"))
            if (auto* linked = plugin.getParameters().getParameterByName (link->getStringAttribute ("param"));
                linked != nullptr && link->getStringAttribute ("as") == "connectedTo")
                setParameter (*linked);

    if (const auto* actions = element.getChildByName ("actions"))
        for (const auto* action : actions->getChildWithTagNameIterator ("action"))
            if (const auto type = action->getStringAttribute ("type"); type.isNotEmpty())
                if (const auto uid = plugin.getEvents().findUid (action->getStringAttribute ("event")))
                    setAction (type, *uid, plugin.getEvents().getName (*uid));
}

Parameter* GUIController::getParameterAt (const juce::MouseEvent&, juce::Component**)
{
    return linkedParameter;
}

std::vector<SkinControl::Part> GUIController::getParts()
{
    if (linkedParameter == nullptr)
        return {};

    return { { dynamic_cast<juce::Component*> (this), linkedParameter } };
}

void GUIController::setParameter (Parameter& newParameter)
{
    if (linkedParameter == &newParameter)
        return;

    endGesture();

    if (linkedParameter != nullptr)
        linkedParameter->removeAsyncListener (this);

    linkedParameter = &newParameter;
    linkedParameter->addAsyncListener (this);
    updateFromParameter (*linkedParameter);
}

void GUIController::parameterChanged (Parameter& changed)
{
    if (! linkMuted)
        updateFromParameter (changed);
}

//==============================================================================
void GUIController::beginGesture()
{
    if (std::exchange (gestureIsOpen, true))
        return;

    if (linkedParameter != nullptr)
        openGesture (*linkedParameter);

    notifyGestureBegan();
}

void GUIController::endGesture()
{
    if (! std::exchange (gestureIsOpen, false))
        return;

    closeGestures();
    notifyGestureEnded();
}

void GUIController::notifyGestureBegan()
{
    listeners.call ([this] (auto& listener) { listener.controllerGestureBegan (*this); });
}

void GUIController::notifyGestureEnded()
{
    listeners.call ([this] (auto& listener) { listener.controllerGestureEnded (*this); });
}

void GUIController::notifyValueChanged()
{
    listeners.call ([this] (auto& listener) { listener.controllerValueChanged (*this); });
}

void GUIController::fireEvent (int eventId)
{
    if (eventId != noEvent)
        listeners.call ([this, eventId] (auto& listener) { listener.controllerEvent (*this, eventId); });
}

} // namespace quilvane
