// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/FloatParameter.h"

#include <cmath>

namespace K7R
{

FloatParameter::FloatParameter (int id, const juce::String& name, float end1, float end2, float defaultValue) :
    Parameter (id, name),
    minimum (juce::jmin (end1, end2)),
    maximum (juce::jmax (end1, end2)),
    value (std::isnan (defaultValue) ? minimum : juce::jlimit (minimum, maximum, defaultValue)),
    normalised (juce::jlimit (0.0f, 1.0f, FloatParameter::valueToNormalised (value)))
{
}

std::unique_ptr<Parameter> FloatParameter::clone (int newId, const juce::String& newName) const
{
    auto copy = std::make_unique<FloatParameter> (newId, newName, minimum, maximum, value.load());
    copyStateTo (*copy);
    return copy;
}

void FloatParameter::copyStateTo (FloatParameter& other) const
{
    other.value = value.load();
    other.normalised = normalised.load();
    copyPropertiesTo (other);
}

float FloatParameter::normalisedToValue (float n) const
{
    return (maximum - minimum) * n + minimum;
}

float FloatParameter::valueToNormalised (float v) const
{
    return maximum > minimum ? (v - minimum) / (maximum - minimum) : 0.0f;
}

float FloatParameter::getFloat() const
{
    return value;
}

float FloatParameter::getNormalised() const
{
    return normalised;
}

int FloatParameter::getInt() const
{
    // The range may be wider than an integer's.
    constexpr auto largest = 2147483520.0f;
    return static_cast<int> (juce::jlimit (-largest, largest, value.load()));
}

bool FloatParameter::getBool() const
{
    return normalised >= 0.5f;
}

juce::String FloatParameter::getString() const
{
    return juce::String (value.load());
}

juce::var FloatParameter::getVar() const
{
    return static_cast<double> (value.load());
}

bool FloatParameter::setFloat (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return false;

    const auto v = juce::jlimit (minimum, maximum, newValue);
    return store (v, juce::jlimit (0.0f, 1.0f, valueToNormalised (v)), notify);
}

bool FloatParameter::setNormalised (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return false;

    const auto n = juce::jlimit (0.0f, 1.0f, newValue);
    return store (juce::jlimit (minimum, maximum, normalisedToValue (n)), n, notify);
}

bool FloatParameter::setInt (int newValue, bool notify)
{
    return setFloat (static_cast<float> (newValue), notify);
}

bool FloatParameter::setBool (bool newValue, bool notify)
{
    return newValue ? store (maximum, 0.0f, notify) : store (minimum, 1.0f, notify);
}

bool FloatParameter::setString (const juce::String& text, bool notify)
{
    return setFloat (text.getFloatValue(), notify);
}

bool FloatParameter::copyFrom (const Parameter& other, bool notify)
{
    return setFloat (other.getFloat(), notify);
}

bool FloatParameter::setTypedNumber (double number, bool notify)
{
    if (std::isnan (number))
        return false;

    // A range may be wider than its curve, whose ends are what can be seen and automated.
    const auto lowest = juce::jlimit (minimum, maximum, normalisedToValue (0.0f));
    const auto highest = juce::jlimit (lowest, maximum, normalisedToValue (1.0f));
    setFloat (static_cast<float> (juce::jlimit (static_cast<double> (lowest), static_cast<double> (highest), number)),
              notify);
    return true;
}

bool FloatParameter::setTypedText (const juce::String& text, bool notify)
{
    const auto number = readNumber (text, getUnit());
    return number.has_value() && setTypedNumber (*number, notify);
}

bool FloatParameter::store (float newValue, float newNormalised, bool notify)
{
    if (value.exchange (newValue) == newValue)
        return false;

    normalised = newNormalised;

    if (notify)
        notifyListeners();

    return true;
}

} // namespace K7R
