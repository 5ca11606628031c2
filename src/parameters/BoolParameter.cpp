// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/BoolParameter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace K7R
{

namespace
{

constexpr std::array<const char*, 4> wordsForOn { "true", "1", "on", "yes" };
constexpr std::array<const char*, 4> wordsForOff { "false", "0", "off", "no" };

bool contains (const std::array<const char*, 4>& words, const juce::String& text)
{
    return std::any_of (words.begin(), words.end(), [&] (const char* word) { return text == word; });
}

} // namespace

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

bool BoolParameter::setFloat (float newValue, bool notify)
{
    return ! std::isnan (newValue) && setBool (newValue < 0.0f || newValue > 0.0f, notify);
}

bool BoolParameter::setNormalised (float newValue, bool notify)
{
    return ! std::isnan (newValue) && setBool (newValue >= 0.5f, notify);
}

bool BoolParameter::setInt (int newValue, bool notify)
{
    return setBool (newValue != 0, notify);
}

bool BoolParameter::setBool (bool newValue, bool notify)
{
    if (value.exchange (newValue) == newValue)
        return false;

    if (notify)
        notifyListeners();

    return true;
}

bool BoolParameter::setString (const juce::String& text, bool notify)
{
    if (contains (wordsForOn, text))
        return setBool (true, notify);

    if (contains (wordsForOff, text))
        return setBool (false, notify);

    return setNormalised (text.getFloatValue(), notify);
}

bool BoolParameter::setTypedNumber (double number, bool notify)
{
    if (number != 0.0 && number != 1.0)
        return false;

    setBool (number > 0.0, notify);
    return true;
}

bool BoolParameter::setTypedText (const juce::String& text, bool notify)
{
    auto word = text.trim().toLowerCase();

    if (const auto ending = getUnit().trim().toLowerCase(); ending.isNotEmpty() && word.endsWith (ending))
        word = word.dropLastCharacters (ending.length()).trimEnd();

    const auto isOn = contains (wordsForOn, word);

    if (! isOn && ! contains (wordsForOff, word))
        return false;

    setBool (isOn, notify);
    return true;
}

bool BoolParameter::copyFrom (const Parameter& other, bool notify)
{
    return setBool (other.getBool(), notify);
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

bool StateParameter::setString (const juce::String& text, bool notify)
{
    if (text.equalsIgnoreCase ("on"))
        return setBool (true, notify);

    if (text.equalsIgnoreCase ("off"))
        return setBool (false, notify);

    return BoolParameter::setString (text, notify);
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

} // namespace K7R
