// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "PrintableText.h"
#include "SkinArchive.h"
#include "product/Quilvane.h"
#include "skin/GFXPanel.h"
#include "skin/SkinProblems.h"
#include "skin/files/SkinFile.h"

namespace K7R::skin
{

namespace
{

/** Previews that are there but can't be shown. */
void checkPreviews (SkinFile& skin, const BoundedZip& archive, SkinProblems& problems)
{
    for (const auto* name : { SkinFile::backgroundName, SkinFile::thumbnailName })
        if (archive.findEntry (name) >= 0 && ! skin.getImage (name).isValid())
            problems.add (nullptr, juce::String ("the preview \"") + name + "\" is no image that the plug-in reads");
}

/** In the form of compilers, so that editors can go to the line. */
void print (const SkinProblems::Problem& problem)
{
    juce::String line (SkinFile::documentName);

    if (problem.line > 0)
        line << ":" << problem.line << ": " << problem.place;

    std::cout << printable (line + ": " + problem.text) << "\n";
}

void runVerify (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (1, 1, "one file, FILE.k7rskin");
    const auto file = resolveFile (names[0]);
    const auto archive = openSkin (file);
    const auto name = file.getFileNameWithoutExtension();

    // Without a processor: it reads no file of the user's, and leaves none.
    quilvane::Quilvane plugin;
    SkinProblems problems;

    SkinFile skin (plugin, SkinFile::Source::file, name, file.getParentDirectory());
    skin.setProblems (&problems);
    const auto panel = skin.loadEditorPanel();

    SkinFile previews (plugin, SkinFile::Source::file, name, file.getParentDirectory());
    checkPreviews (previews, *archive, problems);
    const auto found = problems.getProblems();

    for (const auto& problem : found)
        print (problem);

    if (! found.empty())
        throw Failure (file.getFileName() + " has " + juce::String (found.size())
                       + (found.size() == 1 ? " problem" : " problems"));

    std::cout << file.getFileName() << ": " << archive->getNumEntries() << " members, "
              << skin.getNumImages() + previews.getNumImages() << " images; the digest is right" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeVerifyCommand()
{
    return { "verify", "verify FILE.k7rskin", "Tells what in a skin the plug-in can't show",
             "Opens the skin and builds its panel as the plug-in does. All that it can't show is listed with the\n"
             "element and its line: images and fonts that can't be read, names that mean nothing, parameters and\n"
             "events that there aren't, and what is beyond the bounds of skins.",
             runVerify };
}

} // namespace K7R::skin
