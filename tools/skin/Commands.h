// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::skin
{

// The program's commands. Each prints its result on the standard output and throws a Failure if it can't do
// its work.

juce::ConsoleApplication::Command makeDrawCommand();
juce::ConsoleApplication::Command makePackCommand();
juce::ConsoleApplication::Command makeUnpackCommand();
juce::ConsoleApplication::Command makeVerifyCommand();

} // namespace K7R::skin
