// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R
{
class PackageFile;
}

namespace K7R::package
{

// The program's commands. Each prints its result on the standard output and throws a Failure if it can't do
// its work.

juce::ConsoleApplication::Command makeBuildCommand();
juce::ConsoleApplication::Command makeVerifyCommand();
juce::ConsoleApplication::Command makeListCommand();

/** Opens a package by the name that the user gave, or throws a Failure. */
PackageFile openPackage (const juce::String& name);

/** The package in one line: its name, revision and number of presets. */
juce::String describe (const PackageFile&);

} // namespace K7R::package
