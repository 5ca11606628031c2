// SPDX-License-Identifier: GPL-3.0-or-later

#include <juce_gui_basics/juce_gui_basics.h>

#include "Commands.h"
#include "Program.h"

int main (int argc, char** argv)
{
    using namespace K7R::skin;

    const juce::ScopedJuceInitialiser_GUI juce;

    return K7R::runProgram (argc, argv,
                            { "quilvane-skin",
                              "Draws skins from their vector sources, packs them, and looks into them.\n"
                              "Each command tells more with --help behind it.\n",
                              { makeDrawCommand(), makePackCommand(), makeUnpackCommand(), makeVerifyCommand() } });
}
