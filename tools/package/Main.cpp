// SPDX-License-Identifier: GPL-3.0-or-later

#include "Commands.h"
#include "Program.h"

int main (int argc, char** argv)
{
    using namespace K7R::package;

    return K7R::runProgram (argc, argv,
                            { "quilvane-package",
                              "Makes preset packages, and looks into them.\n"
                              "Each command tells more with --help behind it.\n",
                              { makeBuildCommand(), makeVerifyCommand(), makeListCommand() } });
}
