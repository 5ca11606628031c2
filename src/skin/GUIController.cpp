// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GUIController.h"

#include "core/BasePlugin.h"
#include "skin/files/SkinFile.h"

namespace K7R
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
    paramReset = element.getBoolAttribute ("paramReset", true);

    if (const auto* links = element.getChildByName ("links"))
        for (const auto* link : links->getChildWithTagNameIterator ("link"))
            readLink (*link, skin);

    if (const auto* actions = element.getChildByName ("actions"))
        for (const auto* action : actions->getChildWithTagNameIterator ("action"))
            readAction (*action, skin);
}

void GUIController::readLink (const juce::XmlElement& link, SkinFile& skin)
{
    auto* linked = skin.readParameter (link, "param");

    if (link.getStringAttribute ("as") != "connectedTo")
        skin.report (&link, "a link is made as=\"connectedTo\"");
    else if (linked != nullptr)
        setParameter (*linked);
}

void GUIController::readAction (const juce::XmlElement& action, SkinFile& skin)
{
    const auto& type = action.getStringAttribute ("type");

    if (const auto uid = skin.readEvent (action, "event");
        uid && ! setAction (type, *uid, skin.getPlugin().getEvents().getName (*uid)))
        skin.report (&action, "the control has no action of the type \"" + type + "\"");
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

template <typename Setter>
bool GUIController::sendTyped (Setter&& set)
{
    if (linkMuted || linkedParameter == nullptr)
        return false;

    // A text that is refused makes no gesture, and neither does one that changes nothing.
    const auto probe = linkedParameter->clone (linkedParameter->getId(), linkedParameter->getName());

    if (! set (*probe, false))
        return false;

    if (probe->getNormalised() == linkedParameter->getNormalised()
        && probe->getDisplayText() == linkedParameter->getDisplayText())
        return true;

    beginGesture();
    set (*linkedParameter, true);
    notifyValueChanged();
    endGesture();
    return true;
}

bool GUIController::sendTypedText (const juce::String& text)
{
    return sendTyped ([&] (Parameter& p, bool notify) { return p.setDisplayText (text, notify); });
}

bool GUIController::sendTypedNumber (double number)
{
    return sendTyped ([=] (Parameter& p, bool notify) { return p.setTypedNumber (number, notify); });
}

void GUIController::fireEvent (int eventId)
{
    if (eventId != noEvent)
        listeners.call ([this, eventId] (auto& listener) { listener.controllerEvent (*this, eventId); });
}

} // namespace K7R
