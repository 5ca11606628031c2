// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

class Failure;

/** The arguments of one command, taken apart into files and options.

    An option is "--name value" or "--name=value", or "--name" alone if it is a switch. Every function
    throws a Failure that names the option at fault.
*/
class Options
{
public:
    enum class Kind
    {
        toggle, // takes no value
        single, // takes a value, once
        many,   // takes a value, as often as the user likes
    };

    using Known = std::initializer_list<std::pair<const char*, Kind>>;

    /** Takes the arguments that follow the command's own name. An option that isn't known is refused. */
    Options (const juce::ArgumentList&, Known);

    /** The arguments that are no options, in order. */
    const juce::StringArray& getPositional() const noexcept { return positional; }

    /** The positional arguments, if there are as many as a command wants.
        @param usage the arguments in the user's words, for the refusal: "IN and OUT" */
    const juce::StringArray& requirePositional (int minimum, int maximum, const juce::String& usage) const;

    bool has (const juce::String& name) const;

    /** The value of an option that may stand once. */
    std::optional<juce::String> getValue (const juce::String& name) const;

    /** All values of an option, in order. */
    juce::StringArray getValues (const juce::String& name) const;

    /** The number that an option gives, which has to lie in the range.
        @param unit is put after the limits in the refusal: " Hz" */
    double getNumber (const juce::String& name, juce::Range<double> limits, const juce::String& unit,
                      double fallback) const;

    /** The same for a whole number. */
    int getInteger (const juce::String& name, juce::Range<int> limits, const juce::String& unit, int fallback) const;

private:
    juce::StringArray positional;
    std::vector<std::pair<juce::String, juce::String>> given;
};

/** A text that is a finite decimal number and nothing else, in any locale; a "+" may lead. */
std::optional<double> parseNumber (const juce::String&);

/** A text that is a whole decimal number and nothing else. */
std::optional<int> parseInteger (const juce::String&);

/** The texts before and behind a separator; throws the refusal if one of them is missing. */
std::pair<juce::String, juce::String> splitAt (const juce::String& text, const char* separator, const Failure& refusal);

/** The name and the value that "--set" gives. */
std::pair<juce::String, juce::String> splitSetting (const juce::String&);

/** A file by the name that the user gave, from the working folder on. */
juce::File resolveFile (const juce::String&);

} // namespace tools
} // namespace K7R
