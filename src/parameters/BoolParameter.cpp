// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/BoolParameter.h"

#include <cmath>

namespace quilvane
{

BoolParameter::BoolParameter (int id, const juce::String& name) : Parameter (id, name) {}

std::unique_ptr<Parameter> BoolParameter::clone (int newId, const juce::String& newName) const
{
    return cloneAs<BoolParameter> (newId, newName);
}

float BoolParameter::getFloat() const
{
    return value ? 1.0f : 0.0f;
}

float BoolParameter::getNormalised() const
{
    return getFloat();
}

int BoolParameter::getInt() const
{
    return value ? 1 : 0;
}

bool BoolParameter::getBool() const
{
    return value;
}

juce::String BoolParameter::getString() const
{
    return value ? "true" : "false";
}

juce::var BoolParameter::getVar() const
{
    return value.load();
}

void BoolParameter::setFloat (float newValue, bool notify)
{
    if (! std::isnan (newValue))
        setBool (newValue < 0.0f || newValue > 0.0f, notify);
}

void BoolParameter::setNormalised (float newValue, bool notify)
{
    if (! std::isnan (newValue))
        setBool (newValue >= 0.5f, notify);
}

void BoolParameter::setInt (int newValue, bool notify)
{
    setBool (newValue != 0, notify);
}

void BoolParameter::setBool (bool newValue, bool notify)
{
    if (value.exchange (newValue) != newValue && notify)
        notifyListeners();
}

void BoolParameter::setString (const juce::String& text, bool notify)
{
    for (const auto* word : { "true", "1", "on", "yes" })
        if (text == word)
            return setBool (true, notify);

    for (const auto* word : { "false", "0", "off", "no" })
        if (text == word)
            return setBool (false, notify);

    setNormalised (text.getFloatValue(), notify);
}

void BoolParameter::copyFrom (const Parameter& other, bool notify)
{
    setBool (other.getBool(), notify);
}

//==============================================================================
std::unique_ptr<Parameter> StateParameter::clone (int newId, const juce::String& newName) const
{
    return cloneAs<StateParameter> (newId, newName);
}

juce::String StateParameter::getString() const
{
    return getBool() ? "On" : "Off";
}

void StateParameter::setString (const juce::String& text, bool notify)
{
    if (text.equalsIgnoreCase ("on"))
        setBool (true, notify);
    else if (text.equalsIgnoreCase ("off"))
        setBool (false, notify);
    else
        BoolParameter::setString (text, notify);
}

//==============================================================================
// The texts of the other two are among those that every switch takes.

std::unique_ptr<Parameter> LogicParameter::clone (int newId, const juce::String& newName) const
{
    return cloneAs<LogicParameter> (newId, newName);
}

juce::String LogicParameter::getString() const
{
    return getBool() ? "1" : "0";
}

std::unique_ptr<Parameter> AnswerParameter::clone (int newId, const juce::String& newName) const
{
    return cloneAs<AnswerParameter> (newId, newName);
}

juce::String AnswerParameter::getString() const
{
    return getBool() ? "yes" : "no";
}

} // namespace quilvane
