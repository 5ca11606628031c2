// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

/** A command-line program that is made of commands. */
struct Program
{
    const char* name;

    /** What "--help" says above the list of commands. */
    const char* introduction;

    std::vector<juce::ConsoleApplication::Command> commands;
};

/** Runs the command that the arguments name, or prints the help that they ask for: "--help" alone for the
    program, behind a command for this command.

    A Failure, and any other exception, ends the program with one sentence on the standard error. What
    JUCE would log is dropped.

    @returns the exit code, 1 after a failure
*/
int runProgram (int argc, char** argv, const Program&);

} // namespace tools
} // namespace K7R
