// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Options.h"
#include "PresetFolder.h"
#include "PrintableText.h"
#include "content/PackageFile.h"
#include "support/BoundedXml.h"

namespace K7R::package
{

namespace
{

void printManifest (const PackageManifest& manifest)
{
    const auto line = [] (const char* label, const juce::String& text)
    {
        if (text.isNotEmpty())
            std::cout << juce::String (label).paddedRight (' ', 14) << printable (text) << "\n";
    };

    line ("Name", manifest.name);
    line ("Product", manifest.product);
    line ("Module", manifest.module);
    line ("Type", manifest.type);
    line ("Revision", juce::String (manifest.revision));
    line ("Author", manifest.author);
    line ("Organization", manifest.organization);
}

juce::String readTags (const PackageFile& package, int index)
{
    const auto xml = parseBoundedXml (package.readEntryText (index));
    return xml != nullptr ? xml->getStringAttribute ("tags") : juce::String ("(not readable)");
}

void printPresets (const PackageFile& package)
{
    juce::StringArray names;
    juce::StringArray tags;
    int width = 0;

    for (int i = 0; i < package.getNumEntries(); ++i)
    {
        const auto name = package.getEntryName (i);

        if (! name.endsWith (presetExtension))
            continue;

        names.add (
            printable (name).dropLastCharacters (static_cast<int> (juce::CharPointer_UTF8 (presetExtension).length())));
        tags.add (printable (readTags (package, i)));
        width = juce::jmax (width, names[names.size() - 1].length());
    }

    for (int i = 0; i < names.size(); ++i)
        std::cout << (names[i].paddedRight (' ', width) + "  " + tags[i]).trimEnd() << "\n";
}

void runList (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (1, 1, "one file, FILE.k7rpkg");
    const auto package = openPackage (names[0]);

    printManifest (package.getManifest());
    std::cout << "\n";
    printPresets (package);
    std::cout << std::flush;
}

} // namespace

juce::ConsoleApplication::Command makeListCommand()
{
    return { "list", "list FILE.k7rpkg", "Lists a package's manifest and presets",
             "Prints what the manifest says, and every preset with its tags in the order of the package.", runList };
}

} // namespace K7R::package
