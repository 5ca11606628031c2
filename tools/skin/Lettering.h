// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R::skin
{

/** A typeface that gives outlines by the height of its capitals. */
class Lettering
{
public:
    /** Reads a font file; throws a Failure. */
    explicit Lettering (const juce::File&);

    /** Corrects the distance of two letters.
        @param amount of the capitals' height; negative brings them together */
    void setKerning (const juce::String& pair, float amount) { kerning[pair] = amount; }

    /** The outlines of a text that starts at the left edge of its first letter's shape, on a baseline at y = 0.
        @param capHeight the height of the letter H
        @param tracking  the room that is added between two letters, of the capitals' height */
    juce::Path getOutline (const juce::String&, float capHeight, float tracking) const;

    /** The outline of one character from the pen's position on, not from the edge of its shape. */
    juce::Path getGlyph (juce::juce_wchar, float capHeight) const;

    /** How far the pen goes on after a character. */
    float getAdvance (juce::juce_wchar, float capHeight) const;

private:
    float getScale (float capHeight) const { return capHeight / unitCapHeight; }

    juce::Typeface::Ptr typeface;
    float unitCapHeight = 1.0f; // at a font height of 1
    std::map<juce::String, float> kerning;
};

} // namespace K7R::skin
