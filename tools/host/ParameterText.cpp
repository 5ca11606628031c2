// SPDX-License-Identifier: GPL-3.0-or-later

#include "ParameterText.h"

#include <cmath>
#include <limits>

#include "Failure.h"
#include "Options.h"

namespace K7R::host
{

namespace
{

constexpr int longestName = 256;

/** An enumeration of up to as many names shows each of them at some step. */
constexpr int numSteps = 1000;

/** Shown decimals and the user's differ by a rounding of their conversion at most. */
constexpr double numberTolerance = 1.0e-6;

constexpr auto digitsAndPoint = "0123456789.";

bool areEqual (double a, double b)
{
    if (std::isinf (a) || std::isinf (b))
        return std::isinf (a) && std::isinf (b) && std::signbit (a) == std::signbit (b);

    return std::abs (a - b) <= numberTolerance * juce::jmax (1.0, std::abs (b));
}

/** True if the user gave no unit, the whole unit or its first word. */
bool isUnitMeant (const juce::String& given, const juce::String& shown)
{
    return given.isEmpty() || given.equalsIgnoreCase (shown)
           || given.equalsIgnoreCase (shown.upToFirstOccurrenceOf (" ", false, false));
}

/** "40/60" with anything behind it: two shares of a hundred, of which the second counts. */
std::optional<ShownNumber> readShares (const juce::String& text)
{
    const auto first = text.upToFirstOccurrenceOf ("/", false, false);
    const auto rest = text.fromFirstOccurrenceOf ("/", false, false);
    const auto second = rest.initialSectionContainingOnly (digitsAndPoint);

    const auto a = parseNumber (first);
    const auto b = parseNumber (second);

    if (! a || ! b || ! areEqual (*a + *b, 100.0))
        return std::nullopt;

    return ShownNumber { *b, rest.substring (second.length()).trim() };
}

/** A shown number's own characters, "1.25k" of "1.25kHz"; any other text as it is. */
juce::String withoutUnit (const juce::String& text)
{
    const auto shown = readShownNumber (text);
    return shown ? text.dropLastCharacters (shown->unit.length()).trimEnd() : text;
}

//==============================================================================
/** One parameter while its texts are tried; back at its old value at the end, unless a value was kept. */
class Probe
{
public:
    explicit Probe (juce::AudioProcessorParameter& toTry) : parameter (toTry), oldValue (toTry.getValue()) {}

    ~Probe()
    {
        if (! isKept)
            parameter.setValue (oldValue);
    }

    void keep (float value)
    {
        parameter.setValue (value);
        isKept = true;
    }

    juce::String textAt (float value)
    {
        parameter.setValue (value);
        return parameter.getCurrentValueAsText().trim();
    }

    std::optional<ShownNumber> numberAt (float value) { return readShownNumber (textAt (value)); }

    /** The lowest value from which on a condition holds, between one where it doesn't and one where it does. */
    template <typename Condition>
    static float findBeginning (float without, float with, Condition&& holdsAt)
    {
        for (;;)
        {
            const auto middle = without + (with - without) * 0.5f;

            if (middle <= without || middle >= with)
                return with;

            (holdsAt (middle) ? with : without) = middle;
        }
    }

    std::optional<float> findText (const juce::String& wanted)
    {
        const auto showsIt = [&] (float value)
        {
            const auto text = textAt (value);
            return text.equalsIgnoreCase (wanted) || withoutUnit (text).equalsIgnoreCase (wanted);
        };

        for (int step = 0; step <= numSteps; ++step)
        {
            const auto valueOf = [] (int s) { return static_cast<float> (s) / static_cast<float> (numSteps); };

            if (showsIt (valueOf (step)))
                return step == 0 ? 0.0f : findBeginning (valueOf (step - 1), valueOf (step), showsIt);
        }

        return std::nullopt;
    }

    std::optional<float> findNumber (const ShownNumber& wanted)
    {
        const auto reachesIt = [&] (float value)
        {
            const auto shown = numberAt (value);
            return shown && (shown->number >= wanted.number || areEqual (shown->number, wanted.number));
        };

        if (! reachesIt (1.0f))
            return std::nullopt;

        const auto value = reachesIt (0.0f) ? 0.0f : findBeginning (0.0f, 1.0f, reachesIt);
        const auto shown = numberAt (value);

        if (! shown || ! areEqual (shown->number, wanted.number) || ! isUnitMeant (wanted.unit, shown->unit))
            return std::nullopt;

        return value;
    }

private:
    juce::AudioProcessorParameter& parameter;
    const float oldValue;
    bool isKept = false;
};

std::optional<float> readNormalised (const juce::String& text)
{
    const auto number = parseNumber (text);

    if (! number || *number < 0.0 || *number > 1.0)
        return std::nullopt;

    return static_cast<float> (*number);
}

} // namespace

std::optional<ShownNumber> readShownNumber (const juce::String& text)
{
    const auto trimmed = text.trim();

    if (trimmed.equalsIgnoreCase ("-inf.") || trimmed.equalsIgnoreCase ("-inf"))
        return ShownNumber { -std::numeric_limits<double>::infinity(), {} };

    if (trimmed.containsChar ('/'))
        if (auto shares = readShares (trimmed))
            return shares;

    const auto signLength = trimmed.startsWithChar ('-') || trimmed.startsWithChar ('+') ? 1 : 0;
    const auto digits = trimmed.substring (signLength).initialSectionContainingOnly (digitsAndPoint);
    const auto number = parseNumber (trimmed.substring (0, signLength) + digits);

    if (digits.isEmpty() || ! number)
        return std::nullopt;

    auto unit = trimmed.substring (signLength + digits.length()).trim();
    const auto isKilo = unit.startsWithIgnoreCase ("k");

    if (isKilo)
        unit = unit.substring (1).trim();

    if (unit.startsWithChar ('/'))
        return std::nullopt;

    return ShownNumber { *number * (isKilo ? 1000.0 : 1.0), unit };
}

void setParameterByText (juce::AudioProcessorParameter& parameter, const juce::String& text)
{
    const auto wanted = text.trim();
    Probe probe (parameter);

    if (wanted.endsWithIgnoreCase ("n"))
        if (const auto value = readNormalised (wanted.dropLastCharacters (1)))
            return probe.keep (*value);

    if (const auto value = probe.findText (wanted))
        return probe.keep (*value);

    if (const auto number = readShownNumber (wanted))
        if (const auto value = probe.findNumber (*number))
            return probe.keep (*value);

    if (const auto value = readNormalised (wanted))
        return probe.keep (*value);

    throw Failure ("no value of \"" + parameter.getName (longestName) + "\" shows as \"" + wanted
                   + "\": it goes from \"" + probe.textAt (0.0f) + "\" to \"" + probe.textAt (1.0f) + "\"");
}

} // namespace K7R::host
