// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "SkinArchive.h"
#include "skin/files/SkinFile.h"

namespace K7R::skin
{

namespace
{

void runPack (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (2, 2, "FOLDER and FILE.k7rskin");
    const auto file = resolveFile (names[1]);

    if (! file.hasFileExtension (SkinFile::fileExtension))
        throw Failure (file.getFullPathName() + " should end in " + SkinFile::fileExtension);

    const auto skin = packFolder (resolveFile (names[0]), file.getFileNameWithoutExtension());

    OutputFile::write (file, [&skin] (juce::OutputStream& out) { return out.write (skin.getData(), skin.getSize()); });

    std::cout << file.getFileName() << ": " << (skin.getSize() + 1023) / 1024 << " KB" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makePackCommand()
{
    return {
        "pack", "pack FOLDER FILE.k7rskin", "Makes a skin file of a folder",
        "Takes all files in FOLDER and the folders below it; one has to be FOLDER/skin.xml. Hidden files are left\n"
        "out. The skin bears the name of the file and can't be opened by another one: to rename it, pack it anew.\n"
        "\n"
        "The same files give the same bytes.",
        runPack
    };
}

} // namespace K7R::skin
