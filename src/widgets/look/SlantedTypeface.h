// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** An upright typeface whose glyphs lean to the right, for an italic face that the program doesn't carry. Widths and
    positions are those of the upright one. */
class SlantedTypeface final : public juce::Typeface
{
public:
    explicit SlantedTypeface (juce::Typeface::Ptr uprightFace) :
        juce::Typeface (uprightFace->getName(), uprightFace->getStyle() + " Oblique"),
        upright (std::move (uprightFace))
    {
    }

    float getAscent() const override { return upright->getAscent(); }
    float getDescent() const override { return upright->getDescent(); }
    float getHeightToPointsFactor() const override { return upright->getHeightToPointsFactor(); }
    float getStringWidth (const juce::String& text) override { return upright->getStringWidth (text); }

    void getGlyphPositions (const juce::String& text, juce::Array<int>& glyphs, juce::Array<float>& offsets) override
    {
        upright->getGlyphPositions (text, glyphs, offsets);
    }

    bool getOutlineForGlyph (int glyphNumber, juce::Path& path) override
    {
        constexpr float lean = 0.2f; // to the right, of the height above the base line: 11 degrees

        if (! upright->getOutlineForGlyph (glyphNumber, path))
            return false;

        path.applyTransform (juce::AffineTransform::shear (-lean, 0.0f));
        return true;
    }

private:
    const juce::Typeface::Ptr upright;
};

} // namespace K7R
