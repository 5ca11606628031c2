// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "SkinDrawing.h"

namespace K7R::skin
{

namespace
{

/** Where Debian and its kin install fonts. */
constexpr const char* systemFonts = "/usr/share/fonts";

void writeImage (const juce::Image& image, const juce::File& file)
{
    OutputFile::write (file, [&image] (juce::OutputStream& out)
                       { return juce::PNGImageFormat().writeImageToStream (image, out); });
}

void writeSkin (const SkinDrawing& drawing, const juce::File& folder)
{
    if (folder.createDirectory().failed())
        throw Failure ("cannot make the folder " + folder.getFullPathName());

    for (const auto& [name, image] : drawing.getImages())
        writeImage (image, folder.getChildFile (name));

    OutputFile::write (folder.getChildFile ("skin.xml"),
                       [&drawing] (juce::OutputStream& out)
                       {
                           drawing.getDocument().writeTo (out, juce::XmlElement::TextFormat());
                           return true;
                       });
}

void runDraw (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--size", Options::Kind::single },
                                        { "--fonts", Options::Kind::single },
                                        { "--preview", Options::Kind::single } });
    const auto& names = options.requirePositional (2, 2, "SOURCE_FOLDER and OUT_FOLDER");
    const auto sizeName = options.getValue ("--size");

    if (! sizeName)
        throw Failure ("--size is missing");

    const SkinSource source (resolveFile (names[0]), resolveFile (options.getValue ("--fonts").value_or (systemFonts)));
    const auto folder = resolveFile (names[1]);
    const SkinDrawing drawing (source, source.getSize (*sizeName));

    writeSkin (drawing, folder);

    if (const auto file = options.getValue ("--preview"))
        writeImage (drawing.getPreview(), resolveFile (*file));

    const auto megapixels = static_cast<double> (drawing.getNumPixelsInMemory()) * 1.0e-6;
    std::cout << folder.getFileName() << ": " << drawing.getImages().size() << " images, "
              << juce::String (megapixels, 1) << " megapixels in memory" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeDrawCommand()
{
    return { "draw", "draw SOURCE_FOLDER OUT_FOLDER --size NAME", "Draws all images of a skin in one size",
             "Takes the description of the panel, SOURCE_FOLDER/panel.xml, and writes the skin's document and images\n"
             "into OUT_FOLDER, which is made if it isn't there. Each size is drawn from the vectors.\n"
             "\n"
             "  --size NAME     a size that the description has: Big or Small\n"
             "  --fonts FOLDER  where the fonts are, at any depth; /usr/share/fonts if not given\n"
             "  --preview FILE  writes a picture of the whole panel, too",
             runDraw };
}

} // namespace K7R::skin
