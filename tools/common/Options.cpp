// SPDX-License-Identifier: GPL-3.0-or-later

#include "Options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "Failure.h"

namespace K7R
{
inline namespace tools
{

namespace
{

template <typename Number>
std::optional<Number> parseWhole (const juce::String& text)
{
    const auto digits = text.trim().toStdString();
    const auto hasPlus = digits.size() > 1 && digits[0] == '+' && digits[1] != '-';
    const auto* first = digits.data() + (hasPlus ? 1 : 0);
    const auto* last = digits.data() + digits.size();

    Number number {};
    const auto [end, error] = std::from_chars (first, last, number);

    if (error != std::errc() || end != last)
        return std::nullopt;

    return number;
}

juce::String limitsAsText (const juce::String& lowest, const juce::String& highest, const juce::String& unit)
{
    return lowest + " to " + highest + unit;
}

} // namespace

Options::Options (const juce::ArgumentList& arguments, Known known)
{
    for (int i = 1; i < arguments.size(); ++i)
    {
        const auto text = arguments[i].text;

        if (! text.startsWith ("-") || text == "-")
        {
            positional.add (text);
            continue;
        }

        const auto name = text.upToFirstOccurrenceOf ("=", false, false);
        const auto found =
            std::find_if (known.begin(), known.end(), [&name] (const auto& o) { return name == o.first; });

        if (found == known.end())
            throw Failure ("there is no option " + name + "; " + arguments[0].text + " --help lists them");

        const auto hasOwnValue = name.length() < text.length();
        juce::String value;

        if (found->second == Kind::toggle)
        {
            if (hasOwnValue)
                throw Failure (name + " takes no value");
        }
        else if (hasOwnValue)
        {
            value = text.substring (name.length() + 1);
        }
        else if (++i < arguments.size())
        {
            value = arguments[i].text;
        }
        else
        {
            throw Failure (name + " wants a value");
        }

        if (found->second == Kind::single && has (name))
            throw Failure (name + " is given twice");

        given.emplace_back (name, value);
    }
}

const juce::StringArray& Options::requirePositional (int minimum, int maximum, const juce::String& usage) const
{
    if (positional.size() < minimum)
        throw Failure ("the command wants " + usage);

    if (positional.size() > maximum)
        throw Failure ("\"" + positional[maximum] + "\" is one argument too many: the command wants " + usage);

    return positional;
}

bool Options::has (const juce::String& name) const
{
    return std::any_of (given.begin(), given.end(), [&name] (const auto& option) { return option.first == name; });
}

std::optional<juce::String> Options::getValue (const juce::String& name) const
{
    const auto values = getValues (name);
    return values.isEmpty() ? std::nullopt : std::make_optional (values[0]);
}

juce::StringArray Options::getValues (const juce::String& name) const
{
    juce::StringArray values;

    for (const auto& [option, value] : given)
        if (option == name)
            values.add (value);

    return values;
}

double Options::getNumber (const juce::String& name, juce::Range<double> limits, const juce::String& unit,
                           double fallback) const
{
    const auto text = getValue (name);

    if (! text)
        return fallback;

    const auto number = parseNumber (*text);

    if (! number || *number < limits.getStart() || *number > limits.getEnd())
        throw Failure (name + " wants a number from "
                       + limitsAsText (juce::String (limits.getStart()), juce::String (limits.getEnd()), unit)
                       + ", not \"" + *text + "\"");

    return *number;
}

int Options::getInteger (const juce::String& name, juce::Range<int> limits, const juce::String& unit,
                         int fallback) const
{
    const auto text = getValue (name);

    if (! text)
        return fallback;

    const auto number = parseInteger (*text);

    if (! number || *number < limits.getStart() || *number > limits.getEnd())
        throw Failure (name + " wants a whole number from "
                       + limitsAsText (juce::String (limits.getStart()), juce::String (limits.getEnd()), unit)
                       + ", not \"" + *text + "\"");

    return *number;
}

std::optional<double> parseNumber (const juce::String& text)
{
    const auto number = parseWhole<double> (text);
    return number && std::isfinite (*number) ? number : std::nullopt;
}

std::optional<int> parseInteger (const juce::String& text)
{
    return parseWhole<int> (text);
}

std::pair<juce::String, juce::String> splitAt (const juce::String& text, const char* separator, const Failure& refusal)
{
    const auto before = text.upToFirstOccurrenceOf (separator, false, false).trim();
    const auto behind = text.fromFirstOccurrenceOf (separator, false, false).trim();

    if (before.isEmpty() || behind.isEmpty())
        throw refusal;

    return { before, behind };
}

std::pair<juce::String, juce::String> splitSetting (const juce::String& text)
{
    return splitAt (text, "=", Failure ("--set wants \"Name=value\", not \"" + text + "\""));
}

juce::File resolveFile (const juce::String& name)
{
    if (name.isEmpty())
        throw Failure ("a file name is empty");

    return juce::File::getCurrentWorkingDirectory().getChildFile (name);
}

} // namespace tools
} // namespace K7R
