// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

/** A text from a file as it's read by people: without the characters that a terminal would obey. */
inline juce::String printable (const juce::String& text)
{
    juce::String result;

    for (auto c = text.getCharPointer(); ! c.isEmpty(); ++c)
        result << juce::String::charToString (*c < 32 || (*c >= 127 && *c < 160) ? static_cast<juce::juce_wchar> ('?')
                                                                                 : *c);

    return result;
}

} // namespace tools
} // namespace K7R
