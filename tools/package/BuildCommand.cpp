// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "PackageBuilder.h"
#include "PresetFolder.h"
#include "content/PackageFile.h"

namespace K7R::package
{

namespace
{

bool holds (const PackageFile& package, const std::vector<Member>& members)
{
    if (package.getNumEntries() != static_cast<int> (members.size()))
        return false;

    for (int i = 0; i < package.getNumEntries(); ++i)
    {
        const auto& member = members[static_cast<size_t> (i)];
        const auto stream = package.openEntry (i);
        juce::MemoryBlock content;

        if (stream == nullptr || package.getEntryName (i) != member.name)
            return false;

        stream->readIntoMemoryBlock (content);

        if (content != member.content)
            return false;
    }

    return true;
}

void write (const juce::MemoryBlock& package, OutputFile& output)
{
    const auto stream = output.createStream();

    if (! stream->write (package.getData(), package.getSize()))
        throw Failure ("cannot write " + output.getFile().getFullPathName());

    stream->flush();

    if (stream->getStatus().failed())
        throw Failure ("cannot write " + output.getFile().getFullPathName());
}

void runBuild (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (2, 2, "FOLDER and OUT.k7rpkg");
    const auto file = resolveFile (names[1]);

    if (! file.hasFileExtension ("k7rpkg"))
        throw Failure (file.getFullPathName() + " should end in .k7rpkg");

    OutputFile output (file);

    const auto members = readPresetFolder (resolveFile (names[0]));
    write (signArchive (makeArchive (members)), output);

    // What the plug-in will read, before it can take the place of anything.
    const PackageFile package (output.getTemporaryFile());

    if (! holds (package, members))
        throw Failure ("the package doesn't read back as it was written");

    output.commit();

    std::cout << file.getFileName() << ": " << describe (package) << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeBuildCommand()
{
    return { "build", "build FOLDER OUT.k7rpkg", "Makes a signed package of a folder of presets",
             "Takes the manifest FOLDER/manifest.xml and all preset files *.qvprs2 in FOLDER. The manifest is an XML\n"
             "document of one element, whose attributes \"product\" and \"name\" have to be there; it may also have\n"
             "\"module\", \"type\", \"revision\", \"author\" and \"organization\".\n"
             "\n"
             "The same sources give the same bytes. The package is read back before it takes its place.",
             runBuild };
}

} // namespace K7R::package
