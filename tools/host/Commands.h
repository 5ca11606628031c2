// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::host
{

// The program's commands, each with its name, usage, help text and function. A command runs on the
// message thread, prints its result on the standard output and throws a Failure if it can't do its work.

juce::ConsoleApplication::Command makeInfoCommand();
juce::ConsoleApplication::Command makeRenderCommand();
juce::ConsoleApplication::Command makeRenderBankCommand();
juce::ConsoleApplication::Command makePresetsCommand();
juce::ConsoleApplication::Command makePlotCommand();
juce::ConsoleApplication::Command makeScoreCommand();
juce::ConsoleApplication::Command makeScreenshotCommand();
juce::ConsoleApplication::Command makeEditCommand();

} // namespace K7R::host
