// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "PresetFolder.h"
#include "PrintableText.h"
#include "content/PackageFile.h"
#include "support/BoundedXml.h"

namespace K7R::package
{

namespace
{

void runVerify (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& names = options.requirePositional (1, 1, "one file, FILE.k7rpkg");
    const auto package = openPackage (names[0]);

    for (int i = 0; i < package.getNumEntries(); ++i)
    {
        const auto name = package.getEntryName (i);
        const auto isDocument = name == PackageFile::manifestEntry || name.endsWith (presetExtension);

        if (isDocument && parseBoundedXml (package.readEntryText (i)) == nullptr)
            throw Failure ("the member \"" + printable (name) + "\" of " + names[0] + " is not a readable document");
    }

    std::cout << describe (package) << "; the signature is right" << std::endl;
}

} // namespace

PackageFile openPackage (const juce::String& name)
{
    const auto file = resolveFile (name);

    if (! file.existsAsFile())
        throw Failure ("there is no file " + file.getFullPathName());

    PackageFile package (file);

    if (! package.isOpen())
        throw Failure (file.getFullPathName() + " is damaged, not signed, or not a package");

    return package;
}

juce::String describe (const PackageFile& package)
{
    const auto& manifest = package.getManifest();
    int numPresets = 0;

    for (int i = 0; i < package.getNumEntries(); ++i)
        if (package.getEntryName (i).endsWith (presetExtension))
            ++numPresets;

    return "\"" + printable (manifest.name) + "\" revision " + juce::String (manifest.revision) + ", "
           + juce::String (numPresets) + (numPresets == 1 ? " preset" : " presets");
}

juce::ConsoleApplication::Command makeVerifyCommand()
{
    return { "verify", "verify FILE.k7rpkg", "Checks a package's signature and documents",
             "Opens the package as the plug-in does, and reads its manifest and all presets. A right signature\n"
             "says that the package is whole, not who made it.",
             runVerify };
}

} // namespace K7R::package
