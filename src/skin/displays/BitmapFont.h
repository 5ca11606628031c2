// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

class SkinFile;

/** A font of a skin: an image as wide as one glyph, with the glyphs from the top down, and twice; the second set is
    for the character under the caret.

    A font that begins with the blank is completed by the program's own: a letter that it lacks is drawn in the colour,
    at the size and on the line of its own capitals, and squeezed into its cell. Any other font shows its first glyph
    for what it lacks.
*/
class BitmapFont
{
public:
    /** Reads "resource", "fontHeight" and "firstASCII"; without an image, the one before stays. */
    void readFromXml (const juce::XmlElement& gfx, SkinFile&);

    bool isValid() const noexcept { return image.isValid(); }

    /** In pixels, at least 1. */
    int getGlyphWidth() const noexcept { return glyphWidth; }

    void draw (juce::Graphics&, juce::juce_wchar character, int x, bool atCaret) const;

private:
    /** The look of a set's capitals. */
    struct Ink
    {
        juce::Colour colour;
        int top = 0, bottom = 0; // rows of the cell; the bottom is the line
    };

    std::optional<int> findGlyph (juce::juce_wchar) const;
    juce::Rectangle<int> getCell (int glyph, bool atCaret) const;
    std::optional<Ink> findInk (bool atCaret) const;
    void drawCell (juce::Graphics&, int glyph, int x, bool atCaret) const;

    juce::Image image;
    int glyphWidth = 8;
    int height = 0;
    int first = ' ', last = 160;
};

} // namespace K7R
