// SPDX-License-Identifier: GPL-3.0-or-later

#include "Program.h"

#include <algorithm>
#include <functional>
#include <new>

#include "Failure.h"

namespace K7R
{
inline namespace tools
{

namespace
{

constexpr auto helpOption = "--help|-h";

/** Drops what JUCE notes on its way, so that the standard error has our sentences only. */
class SilentLogger : public juce::Logger
{
    void logMessage (const juce::String&) override {}
};

/** The arguments as they stand: a file's name may have spaces at its ends. */
juce::ArgumentList makeArguments (int argc, char** argv, const Program& program)
{
    juce::ArgumentList arguments (program.name, juce::StringArray());

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
void failWith (const Program& program, const juce::String& sentence)
{
    juce::ConsoleApplication::fail (juce::String (program.name) + ": " + sentence);
}

void runInOneShape (const Program& program, const std::function<void()>& function)
{
    try
    {
        return function();
    }
    catch (const std::bad_alloc&)
    {
        failWith (program, "there is not enough memory");
    }
    catch (const Failure& failure)
    {
        failWith (program, juce::String::fromUTF8 (failure.what()));
    }
    catch (const std::exception& e)
    {
        failWith (program, "an unexpected error: " + juce::String::fromUTF8 (e.what()));
    }
}

/** Adds what all commands share: their own help, and the shape of their failures. */
void addCommand (juce::ConsoleApplication& app, const Program& program, juce::ConsoleApplication::Command command)
{
    const auto run = command.command;
    const auto printed = command;

    command.command = [&app, &program, run, printed] (const juce::ArgumentList& arguments)
    {
        if (isHelpWanted (arguments))
            return app.printCommandDetails (arguments, printed);

        runInOneShape (program, [&] { run (arguments); });
    };

    app.addCommand (std::move (command));
}

int runCommand (int argc, char** argv, const Program& program)
{
    juce::ConsoleApplication app;
    app.addHelpCommand (helpOption, program.introduction, false);

    for (const auto& command : program.commands)
        addCommand (app, program, command);

    const auto arguments = makeArguments (argc, argv, program);

    return juce::ConsoleApplication::invokeCatchingFailures (
        [&]
        {
            if (app.findCommand (arguments, true) == nullptr)
                failWith (program, arguments.size() == 0
                                       ? juce::String ("no command is given; --help lists them")
                                       : "there is no command \"" + arguments[0].text + "\"; --help lists them");

            return app.findAndRunCommand (arguments, true);
        });
}

} // namespace

int runProgram (int argc, char** argv, const Program& program)
{
    SilentLogger logger;
    juce::Logger::setCurrentLogger (&logger);

    const auto exitCode = runCommand (argc, argv, program);

    juce::Logger::setCurrentLogger (nullptr);
    return exitCode;
}

} // namespace tools
} // namespace K7R
