// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/ValueFormat.h"

#include <array>
#include <cmath>
#include <utility>

namespace K7R
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

//==============================================================================
namespace
{

constexpr double thousand = 1000.0;

/** Takes characters from the beginning of a text for as long as they're digits. */
juce::String takeDigits (juce::String::CharPointerType& text)
{
    const auto start = text;

    while (text.isDigit())
        ++text;

    return { start, text };
}

/** Takes a number from the beginning of a text: "-12", "+.5", "1.0e-05". Nothing is taken if there's none. */
std::optional<double> takeNumber (juce::String& text)
{
    auto end = text.getCharPointer();

    if (*end == '-' || *end == '+')
        ++end;

    auto numDigits = takeDigits (end).length();

    if (*end == '.')
        numDigits += takeDigits (++end).length();

    if (numDigits == 0)
        return {};

    if (*end == 'e' || *end == 'E')
    {
        auto exponent = end + 1;

        if (*exponent == '-' || *exponent == '+')
            ++exponent;

        if (takeDigits (exponent).isNotEmpty())
            end = exponent;
    }

    const auto number = juce::String (text.getCharPointer(), end).getDoubleValue();
    text = juce::String (end).trimStart();
    return number;
}

bool isUnit (const juce::String& text, const juce::String& unit)
{
    return unit.trim().startsWithIgnoreCase (text.trim());
}

bool isMinusInfinity (const juce::String& text, const juce::String& unit)
{
    const juce::String infinity ("-inf");

    if (! text.startsWithIgnoreCase (infinity))
        return false;

    const auto rest = text.substring (infinity.length());
    return isUnit (rest.startsWithChar ('.') ? rest.substring (1) : rest, unit);
}

std::optional<TypedValue> readCrossfade (juce::String text, const juce::String& unit)
{
    constexpr double whole = 100.0; // percent

    auto wet = takeNumber (text);

    if (wet.has_value() && text.startsWithChar ('/'))
    {
        const auto dry = *wet;
        text = text.substring (1).trimStart();
        wet = takeNumber (text);

        if (wet.has_value() && ! juce::approximatelyEqual (dry + *wet, whole))
            return {};
    }

    if (! wet.has_value() || ! isUnit (text, unit))
        return {};

    // The text is cut down to whole percents, so a float that is a bit too small would show one less.
    auto normalised = static_cast<float> (*wet / whole);

    while (normalised > 0.0f && normalised < 1.0f
           && std::floor (normalised * static_cast<float> (whole)) < static_cast<float> (std::floor (*wet)))
        normalised = std::nextafter (normalised, 1.0f);

    return TypedValue { static_cast<double> (normalised), true };
}

std::optional<TypedValue> readKilo (juce::String text, const juce::String& unit)
{
    const auto number = takeNumber (text);

    if (! number.has_value())
        return {};

    if (text.startsWithIgnoreCase ("k") && isUnit (text.substring (1), unit))
        return TypedValue { *number * thousand, false };

    return isUnit (text, unit) ? std::make_optional<TypedValue> ({ *number, false }) : std::nullopt;
}

} // namespace

std::optional<double> readNumber (const juce::String& text, const juce::String& unit)
{
    auto rest = text.trim();
    const auto number = takeNumber (rest);

    return number.has_value() && isUnit (rest, unit) ? number : std::nullopt;
}

std::optional<TypedValue> readValue (ValueFormat format, const juce::String& text, const juce::String& unit)
{
    const auto plain = [&] (double factor) -> std::optional<TypedValue>
    {
        const auto number = readNumber (text, unit);
        return number.has_value() ? std::make_optional<TypedValue> ({ *number * factor, false }) : std::nullopt;
    };

    switch (format)
    {
        case ValueFormat::none: return {};
        case ValueFormat::decimal1OrMinusInf:
            return isMinusInfinity (text.trim(), unit) ? TypedValue { 0.0, true } : plain (1.0);
        case ValueFormat::decimalKilo1:
        case ValueFormat::decimalKilo2: return plain (thousand);
        case ValueFormat::decimalOrKilo:
        case ValueFormat::decimalOrKilo1:
        case ValueFormat::decimalOrKilo2: return readKilo (text.trim(), unit);
        case ValueFormat::crossfade: return readCrossfade (text.trim(), unit);
        case ValueFormat::integer:
        case ValueFormat::decimalNoSign1:
        case ValueFormat::decimalNoSign2:
        case ValueFormat::decimal:
        case ValueFormat::decimal1:
        case ValueFormat::decimal2:
        case ValueFormat::decimal3: return plain (1.0);
    }

    return {};
}

} // namespace K7R
