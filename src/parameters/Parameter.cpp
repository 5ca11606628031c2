// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/Parameter.h"

#include "support/UpdateRelay.h"

namespace K7R
{

Parameter::Parameter (int id, const juce::String& name) : parameterId (id), parameterName (name) {}

Parameter::~Parameter()
{
    cancelPendingUpdate();
}

void Parameter::copyPropertiesTo (Parameter& other) const
{
    other.automatable = automatable;
    other.meta = meta;
    other.unit = unit;
    other.format = format;
    other.textFormatter = textFormatter;
}

juce::String Parameter::getDisplayText() const
{
    if (format != ValueFormat::none)
        return formatValue (format, { getFloat(), getNormalised(), getInt() }, unit);

    return textFormatter != nullptr ? textFormatter->getText (*this) : getString() + unit;
}

bool Parameter::setDisplayText (const juce::String& text, bool notify)
{
    if (format == ValueFormat::none)
        return setTypedText (text, notify);

    const auto typed = readValue (format, text, unit);

    if (! typed.has_value())
        return false;

    if (! typed->isNormalised)
        return setTypedNumber (typed->number, notify);

    setNormalised (static_cast<float> (typed->number), notify);
    return true;
}

void Parameter::addListener (Listener* listener)
{
    listeners.add (listener);
}

void Parameter::removeListener (Listener* listener)
{
    listeners.remove (listener);
}

void Parameter::addAsyncListener (Listener* listener)
{
    asyncListeners.add (listener);
}

void Parameter::removeAsyncListener (Listener* listener)
{
    asyncListeners.remove (listener);
}

void Parameter::beginGesture()
{
    if (! gestureActive.exchange (true))
        listeners.call ([this] (Listener& l) { l.parameterGestureBegan (*this); });
}

void Parameter::endGesture()
{
    if (gestureActive.exchange (false))
        listeners.call ([this] (Listener& l) { l.parameterGestureEnded (*this); });
}

void Parameter::notifyListeners()
{
    listeners.call ([this] (Listener& l) { l.parameterChanged (*this); });
    triggerUpdate();
}

void Parameter::triggerUpdate()
{
    if (relay == nullptr || relay->isMessageThread())
    {
        triggerAsyncUpdate();
        return;
    }

    updateDeferred.store (true, std::memory_order_release);
    relay->requestPoll();
}

void Parameter::deliverDeferredUpdate()
{
    if (! updateDeferred.exchange (false, std::memory_order_acquire))
        return;

    // One call serves a posted update as well.
    cancelPendingUpdate();
    handleAsyncUpdate();
}

void Parameter::handleAsyncUpdate()
{
    asyncListeners.call ([this] (Listener& l) { l.parameterChanged (*this); });
}

} // namespace K7R
