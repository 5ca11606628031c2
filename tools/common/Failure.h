// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <stdexcept>

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

/** What keeps a command from its end, in the words that the user reads.

    The sentence starts in lower case and has no full stop: runProgram() puts the program's name before
    it, prints it and ends with exit code 1. Whatever the command had begun to write is gone by then.
*/
class Failure : public std::runtime_error
{
public:
    explicit Failure (const juce::String& sentence) : std::runtime_error (sentence.toStdString()) {}
};

} // namespace tools
} // namespace K7R
