// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <iostream>
#include <vector>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "PrintableText.h"
#include "SkinArchive.h"

namespace K7R::skin
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

/** The members that are files. All names are looked at before anything is written. */
std::vector<int> findFiles (const BoundedZip& archive)
{
    std::vector<int> files;
    juce::StringArray names;

    for (int i = 0; i < archive.getNumEntries(); ++i)
    {
        const auto name = archive.getEntryName (i);
        const auto isFolder = name.endsWithChar ('/');

        if (! isSafe (isFolder ? name.dropLastCharacters (1) : name))
            throw Failure ("the member \"" + printable (name) + "\" doesn't name a file that may be written");

        if (names.contains (name, true))
            throw Failure ("there are two members \"" + printable (name) + "\"");

        names.add (name);

        if (! isFolder)
            files.push_back (i);
    }

    return files;
}

/** A folder that takes its name once all of it is written, and is gone if that doesn't happen. */
class NewFolder
{
public:
    explicit NewFolder (const juce::File& wanted) :
        target (wanted),
        temporary (wanted.getSiblingFile ("." + wanted.getFileName()).getNonexistentSibling (false))
    {
        // Nothing may be there already, least of all a link to somewhere else.
        const auto isEmpty = [this]
        {
            return target.isDirectory() && ! target.isSymbolicLink()
                   && target.getNumberOfChildFiles (juce::File::findFilesAndDirectories) == 0;
        };

        if (target.exists() && ! isEmpty())
            throw Failure (target.getFullPathName() + " is not an empty folder");

        if (temporary.createDirectory().failed())
            throw Failure ("cannot make the folder " + target.getFullPathName());
    }

    ~NewFolder() { temporary.deleteRecursively(); }

    void add (const juce::String& name, const juce::MemoryBlock& data)
    {
        const auto file = temporary.getChildFile (name);

        if (! file.isAChildOf (temporary) || file.getParentDirectory().createDirectory().failed()
            || ! file.replaceWithData (data.getData(), data.getSize()))
            throw Failure ("cannot write " + target.getChildFile (name).getFullPathName());
    }

    void commit()
    {
        if (! temporary.moveFileTo (target))
            throw Failure ("cannot write " + target.getFullPathName());
    }

private:
    juce::File target;
    juce::File temporary;
};

void runUnpack (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (2, 2, "FILE.k7rskin and FOLDER");
    const auto archive = openSkin (resolveFile (names[0]));
    const auto files = findFiles (*archive);
    NewFolder folder (resolveFile (names[1]));

    for (const auto index : files)
        folder.add (archive->getEntryName (index), readMember (*archive, index));

    folder.commit();
    std::cout << resolveFile (names[1]).getFileName() << ": " << files.size() << " files" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeUnpackCommand()
{
    return { "unpack", "unpack FILE.k7rskin FOLDER", "Writes the files of a skin into a folder",
             "FOLDER is made if it isn't there, and has to be empty. A skin with a member that would be written\n"
             "anywhere else is refused as a whole.",
             runUnpack };
}

} // namespace K7R::skin
