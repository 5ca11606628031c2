// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <functional>
#include <iostream>
#include <new>

#include <juce_events/juce_events.h>

#include "Commands.h"
#include "Failure.h"

namespace quilvane::host
{

namespace
{

constexpr auto programName = "quilvane-host";
constexpr auto helpOption = "--help|-h";

/** Drops what JUCE notes on its way, so that the standard error has our sentences only. */
class SilentLogger : public juce::Logger
{
    void logMessage (const juce::String&) override {}
};

/** The arguments as they stand: a file's name may have spaces at its ends. */
juce::ArgumentList makeArguments (int argc, char** argv)
{
    juce::ArgumentList arguments (programName, juce::StringArray());

    for (int i = 1; i < argc; ++i)
        arguments.arguments.add ({ juce::String::fromUTF8 (argv[i]) });

    return arguments;
}

/** JUCE's own look-up takes a value such as "-1" for a group of short options. */
bool isHelpWanted (const juce::ArgumentList& arguments)
{
    return std::any_of (arguments.arguments.begin(), arguments.arguments.end(),
                        [] (const auto& argument) { return argument.text == "--help" || argument.text == "-h"; });
}

/** Ends the command with one sentence, in the one shape that all of them have. */
void failWith (const juce::String& sentence)
{
    juce::ConsoleApplication::fail (juce::String (programName) + ": " + sentence);
}

void runInOneShape (const std::function<void()>& function)
{
    try
    {
        return function();
    }
    catch (const std::bad_alloc&)
    {
        failWith ("there is not enough memory");
    }
    catch (const Failure& failure)
    {
        failWith (juce::String::fromUTF8 (failure.what()));
    }
    catch (const std::exception& e)
    {
        failWith ("an unexpected error: " + juce::String::fromUTF8 (e.what()));
    }
}

/** Adds what all commands share: their own help, and the shape of their failures. */
void addCommand (juce::ConsoleApplication& app, juce::ConsoleApplication::Command command)
{
    const auto run = command.command;
    const auto printed = command;

    command.command = [&app, run, printed] (const juce::ArgumentList& arguments)
    {
        if (isHelpWanted (arguments))
            return app.printCommandDetails (arguments, printed);

        runInOneShape ([&] { run (arguments); });
    };

    app.addCommand (std::move (command));
}

int run (int argc, char** argv)
{
    juce::ConsoleApplication app;

    app.addHelpCommand (helpOption,
                        "Does with the Quilvane 2 plug-in what a person would do in a host.\n"
                        "Each command tells more with --help behind it.\n",
                        false);

    addCommand (app, makeInfoCommand());
    addCommand (app, makeRenderCommand());
    addCommand (app, makePlotCommand());
    addCommand (app, makeScoreCommand());

    const auto arguments = makeArguments (argc, argv);

    return juce::ConsoleApplication::invokeCatchingFailures (
        [&]
        {
            if (app.findCommand (arguments, true) == nullptr)
                failWith (arguments.size() == 0
                              ? juce::String ("no command is given; --help lists them")
                              : "there is no command \"" + arguments[0].text + "\"; --help lists them");

            return app.findAndRunCommand (arguments, true);
        });
}

} // namespace

} // namespace quilvane::host

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI juce;
    quilvane::host::SilentLogger logger;
    juce::Logger::setCurrentLogger (&logger);

    const auto exitCode = quilvane::host::run (argc, argv);

    juce::Logger::setCurrentLogger (nullptr);
    return exitCode;
}
