// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "PrintableText.h"
#include "SkinArchive.h"

namespace quilvane::skin
{

namespace
{

/** Whether a member's name leads to a file below the folder, on any system. */
bool isSafe (const juce::String& name)
{
    if (name.isEmpty() || name.containsAnyOf ("\\:*?\"<>|") || name != printable (name))
        return false;

    const auto parts = juce::StringArray::fromTokens (name, "/", {});

    return std::none_of (parts.begin(), parts.end(),
                         [] (const auto& part)
                         {
                             return part.isEmpty() || part.startsWithChar ('.') || part.trim() != part
                                    || part.startsWithChar ('~') || part.endsWithChar ('.');
                         });
}

/** All names are looked at before the first file is written. */
void checkNames (const BoundedZip& archive)
{
    juce::StringArray names;

    for (int i = 0; i < archive.getNumEntries(); ++i)
    {
        const auto name = archive.getEntryName (i);

        if (! isSafe (name))
            throw Failure ("the member \"" + printable (name) + "\" doesn't name a file that may be written");

        if (names.contains (name, true))
            throw Failure ("there are two members \"" + printable (name) + "\"");

        names.add (name);
    }
}

void runUnpack (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (2, 2, "FILE.k7rskin and FOLDER");
    const auto folder = resolveFile (names[1]);
    const auto archive = openSkin (resolveFile (names[0]));
    checkNames (*archive);

    // Nothing may be there already, least of all a link to somewhere else.
    if (folder.exists()
        && (! folder.isDirectory() || folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories) > 0))
        throw Failure (folder.getFullPathName() + " is not an empty folder");

    for (int i = 0; i < archive->getNumEntries(); ++i)
    {
        const auto data = readMember (*archive, i);
        const auto file = folder.getChildFile (archive->getEntryName (i));

        if (! file.isAChildOf (folder) || file.getParentDirectory().createDirectory().failed())
            throw Failure ("cannot write " + file.getFullPathName());

        OutputFile::write (file, [&data] (juce::OutputStream& out)
                           { return data.isEmpty() || out.write (data.getData(), data.getSize()); });
    }

    std::cout << folder.getFileName() << ": " << archive->getNumEntries() << " files" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeUnpackCommand()
{
    return { "unpack", "unpack FILE.k7rskin FOLDER", "Writes the files of a skin into a folder",
             "FOLDER is made if it isn't there, and has to be empty. A skin with a member that would be written\n"
             "anywhere else is refused as a whole.",
             runUnpack };
}

} // namespace quilvane::skin
