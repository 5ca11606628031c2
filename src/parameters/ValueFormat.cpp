// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/ValueFormat.h"

#include <array>
#include <cmath>
#include <utility>

namespace quilvane
{

namespace
{

/** Below this normalised value a volume counts as silence. */
constexpr float minusInfinityThreshold = 1.0e-8f;

juce::String withPlaces (float value, int places)
{
    return places == 0 ? juce::String (static_cast<int> (value)) : juce::String (value, places);
}

juce::String withSign (float value, const juce::String& digits, const juce::String& unit)
{
    if (value < 0.0f || value > 0.0f)
        return (value > 0.0f ? "+" : "") + digits + unit;

    return "0" + unit;
}

/** Thousands with at most `places` places, taken from the value in whole tens. */
juce::String kilo (int tens, int places)
{
    const auto thousands = static_cast<float> (tens) * 0.01f;
    const auto isWhole = tens % 100 == 0;

    return isWhole ? juce::String (thousands) : juce::String (thousands, places);
}

juce::String kiloFromOneThousand (int value, int places, const juce::String& unit)
{
    const auto tens = value / 10;

    return tens < 100 ? juce::String (value) + unit : kilo (tens, places) + "k" + unit;
}

} // namespace

ValueFormat valueFormatFromKeyword (const juce::String& keyword)
{
    static const std::array<std::pair<const char*, ValueFormat>, 14> keywords { {
        { "integer", ValueFormat::integer },
        { "decimal_nosign.1", ValueFormat::decimalNoSign1 },
        { "decimal_nosign.2", ValueFormat::decimalNoSign2 },
        { "decimal", ValueFormat::decimal },
        { "decimal.1", ValueFormat::decimal1 },
        { "decimal.2", ValueFormat::decimal2 },
        { "decimal.3", ValueFormat::decimal3 },
        { "decimal.1-inf", ValueFormat::decimal1OrMinusInf },
        { "decimalKilo.1", ValueFormat::decimalKilo1 },
        { "decimalKilo.2", ValueFormat::decimalKilo2 },
        { "decimalOrKilo", ValueFormat::decimalOrKilo },
        { "decimalOrKilo.1", ValueFormat::decimalOrKilo1 },
        { "decimalOrKilo.2", ValueFormat::decimalOrKilo2 },
        { "crossfade", ValueFormat::crossfade },
    } };

    for (const auto& [text, format] : keywords)
        if (keyword == text)
            return format;

    return ValueFormat::none;
}

juce::String formatValue (ValueFormat format, const FormattableValue& v, const juce::String& unit)
{
    switch (format)
    {
        case ValueFormat::none: return {};
        case ValueFormat::integer: return juce::String (v.integer) + unit;
        case ValueFormat::decimalNoSign1: return withPlaces (v.value, 1) + unit;
        case ValueFormat::decimalNoSign2: return withPlaces (v.value, 2) + unit;
        case ValueFormat::decimal: return withSign (v.value, juce::String (v.integer), unit);
        case ValueFormat::decimal1OrMinusInf:
            return v.normalised < minusInfinityThreshold ? juce::String ("-inf.")
                                                         : withSign (v.value, withPlaces (v.value, 1), unit);
        case ValueFormat::decimal1: return withSign (v.value, withPlaces (v.value, 1), unit);
        case ValueFormat::decimal2: return withSign (v.value, withPlaces (v.value, 2), unit);
        case ValueFormat::decimal3: return withSign (v.value, withPlaces (v.value, 3), unit);
        case ValueFormat::decimalKilo1: return kilo (v.integer / 10, 1) + unit;
        case ValueFormat::decimalKilo2: return kilo (v.integer / 10, 2) + unit;
        case ValueFormat::decimalOrKilo:
            return v.value < 1000.0f ? juce::String (static_cast<int> (v.value)) + unit
                                     : juce::String (v.value * 0.001f) + "k" + unit;
        case ValueFormat::decimalOrKilo1: return kiloFromOneThousand (v.integer, 1, unit);
        case ValueFormat::decimalOrKilo2: return kiloFromOneThousand (v.integer, 2, unit);
        case ValueFormat::crossfade:
        {
            const auto wet = static_cast<int> (v.normalised * 100.0f);
            return juce::String (100 - wet) + "/" + juce::String (wet) + unit;
        }
    }

    return {};
}

} // namespace quilvane
