// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

#include <juce_audio_processors/juce_audio_processors.h>

namespace K7R::host
{

/** A number as a plug-in shows it, with what follows it: "1.25kHz" is 1250 and "Hz", "40/60% (Dry/Wet)"
    is 60, "-inf." is minus infinity. */
struct ShownNumber
{
    double number;
    juce::String unit;
};

/** The number that a text shows; nothing if the text is no number, as "1/4" or "Triangle" are none. */
std::optional<ShownNumber> readShownNumber (const juce::String& text);

/** Moves a parameter to the lowest normalised value that the wanted text describes.

    A host has no way to ask for a value by its text: it moves the parameter and reads what is shown.
    So this does, first for a text that equals the wanted one without regard to case; then for a number
    that equals the wanted one, with the same unit if one is given. Shown numbers have to rise with the
    value. A number that is never shown but lies in 0 to 1 is a normalised value, and so is any number
    with an "n" behind it.

    Throws a Failure, and leaves the parameter where it was, if the text describes no value.
    Message thread.
*/
void setParameterByText (juce::AudioProcessorParameter&, const juce::String& wanted);

} // namespace K7R::host
