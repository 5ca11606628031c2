// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

#include <juce_core/juce_core.h>

namespace K7R
{

/** How a parameter's value becomes the text that hosts and displays show.

    The comments give the keyword of the parameter table. A sign is always shown by the "decimal"
    family, and zero is always a plain "0" there. */
enum class ValueFormat
{
    none = 0,           // the machine text
    integer,            // "integer": truncated
    decimalNoSign1,     // "decimal_nosign.1": one place
    decimalNoSign2,     // "decimal_nosign.2": two places
    decimal,            // "decimal": truncated
    decimal1,           // "decimal.1"
    decimal2,           // "decimal.2"
    decimal3,           // "decimal.3"
    decimal1OrMinusInf, // "decimal.1-inf": "-inf." at the bottom
    decimalKilo1,       // "decimalKilo.1": thousands, the unit says so
    decimalKilo2,       // "decimalKilo.2"
    decimalOrKilo,      // "decimalOrKilo": thousands from 1000 on, with a "k"
    decimalOrKilo1,     // "decimalOrKilo.1"
    decimalOrKilo2,     // "decimalOrKilo.2"
    crossfade,          // "crossfade": both percentages, "40/60"
};

/** The format of a keyword of the parameter table, compared exactly; `none` for any other text. */
ValueFormat valueFormatFromKeyword (const juce::String& keyword);

/** What a text is made from: one parameter's value in its three numeric forms. */
struct FormattableValue
{
    float value;
    float normalised; // 0 to 1
    int integer;      // truncated
};

/** The text of a value with its unit, in any format but `none`, which gives an empty text. */
juce::String formatValue (ValueFormat, const FormattableValue&, const juce::String& unit);

//==============================================================================
/** The value that a typed text stands for. */
struct TypedValue
{
    double number;
    bool isNormalised; // 0 to 1, or a plain value; beyond the range of either, too
};

/** Reads what formatValue() writes, as people type it: with the unit, the beginning of it or none, in any case; with
    blanks around it, with or without a sign of plus; thousands with or without a "k" where the format has one; of a
    crossfade both parts, or the second alone. Nothing for any other text, and for the format `none`. */
std::optional<TypedValue> readValue (ValueFormat, const juce::String& text, const juce::String& unit);

/** Reads a number, and the unit or the beginning of it; nothing for any other text. */
std::optional<double> readNumber (const juce::String& text, const juce::String& unit);

} // namespace K7R
