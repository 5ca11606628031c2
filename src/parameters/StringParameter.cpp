// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/StringParameter.h"

#include <cmath>

namespace K7R
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

bool StringParameter::setFloat (float newValue, bool notify)
{
    return ! std::isnan (newValue) && setString (juce::String (newValue), notify);
}

bool StringParameter::setNormalised (float newValue, bool notify)
{
    return setFloat (newValue, notify);
}

bool StringParameter::setInt (int newValue, bool notify)
{
    return setString (juce::String (newValue), notify);
}

bool StringParameter::setBool (bool newValue, bool notify)
{
    return setString (newValue ? "true" : "false", notify);
}

bool StringParameter::setString (const juce::String& text, bool notify)
{
    {
        const juce::ScopedWriteLock scope (lock);

        if (value == text)
            return false;

        value = text;
    }

    if (notify)
        notifyListeners();

    return true;
}

bool StringParameter::setTypedNumber (double number, bool notify)
{
    return setTypedText (juce::String (number), notify);
}

bool StringParameter::setTypedText (const juce::String& text, bool notify)
{
    setString (text, notify);
    return true;
}

bool StringParameter::copyFrom (const Parameter& other, bool notify)
{
    return setString (other.getString(), notify);
}

} // namespace K7R
