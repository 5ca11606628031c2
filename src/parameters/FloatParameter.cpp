// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/FloatParameter.h"

#include <cmath>

namespace quilvane
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

void FloatParameter::setFloat (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return;

    const auto v = juce::jlimit (minimum, maximum, newValue);
    store (v, juce::jlimit (0.0f, 1.0f, valueToNormalised (v)), notify);
}

void FloatParameter::setNormalised (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return;

    const auto n = juce::jlimit (0.0f, 1.0f, newValue);
    store (juce::jlimit (minimum, maximum, normalisedToValue (n)), n, notify);
}

void FloatParameter::setInt (int newValue, bool notify)
{
    setFloat (static_cast<float> (newValue), notify);
}

void FloatParameter::setBool (bool newValue, bool notify)
{
    if (newValue)
        store (maximum, 0.0f, notify);
    else
        store (minimum, 1.0f, notify);
}

void FloatParameter::setString (const juce::String& text, bool notify)
{
    setFloat (text.getFloatValue(), notify);
}

void FloatParameter::copyFrom (const Parameter& other, bool notify)
{
    setFloat (other.getFloat(), notify);
}

void FloatParameter::store (float newValue, float newNormalised, bool notify)
{
    if (value.exchange (newValue) == newValue)
        return;

    normalised = newNormalised;

    if (notify)
        notifyListeners();
}

} // namespace quilvane
