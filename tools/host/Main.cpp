// SPDX-License-Identifier: GPL-3.0-or-later

#include <juce_events/juce_events.h>

#include "Commands.h"
#include "Program.h"

int main (int argc, char** argv)
{
    using namespace K7R::host;

    const juce::ScopedJuceInitialiser_GUI juce;

    return K7R::runProgram (argc, argv,
                            { "quilvane-host",
                              "Does with the Quilvane 2 plug-in what a person would do in a host.\n"
                              "Each command tells more with --help behind it.\n",
                              { makeInfoCommand(), makePresetsCommand(), makeRenderCommand(), makeRenderBankCommand(),
                                makePlotCommand(), makeScoreCommand(), makeScreenshotCommand(), makeEditCommand() } });
}
