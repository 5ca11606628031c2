// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/StringParameter.h"

#include <cmath>

namespace quilvane
{

StringParameter::StringParameter (int id, const juce::String& name, const juce::String& defaultText) :
    Parameter (id, name),
    value (defaultText)
{
}

std::unique_ptr<Parameter> StringParameter::clone (int newId, const juce::String& newName) const
{
    auto copy = std::make_unique<StringParameter> (newId, newName, getString());
    copyPropertiesTo (*copy);
    return copy;
}

float StringParameter::getFloat() const
{
    return getString().getFloatValue();
}

float StringParameter::getNormalised() const
{
    const auto number = getFloat();
    return std::isnan (number) ? 0.0f : juce::jlimit (0.0f, 1.0f, number);
}

int StringParameter::getInt() const
{
    return getString().getIntValue();
}

bool StringParameter::getBool() const
{
    return getInt() == 0;
}

juce::String StringParameter::getString() const
{
    const juce::ScopedReadLock scope (lock);
    return value;
}

juce::var StringParameter::getVar() const
{
    return getString();
}

void StringParameter::setFloat (float newValue, bool notify)
{
    if (! std::isnan (newValue))
        setString (juce::String (newValue), notify);
}

void StringParameter::setNormalised (float newValue, bool notify)
{
    setFloat (newValue, notify);
}

void StringParameter::setInt (int newValue, bool notify)
{
    setString (juce::String (newValue), notify);
}

void StringParameter::setBool (bool newValue, bool notify)
{
    setString (newValue ? "true" : "false", notify);
}

void StringParameter::setString (const juce::String& text, bool notify)
{
    {
        const juce::ScopedWriteLock scope (lock);

        if (value == text)
            return;

        value = text;
    }

    if (notify)
        notifyListeners();
}

void StringParameter::copyFrom (const Parameter& other, bool notify)
{
    setString (other.getString(), notify);
}

} // namespace quilvane
