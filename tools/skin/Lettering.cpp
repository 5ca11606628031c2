// SPDX-License-Identifier: GPL-3.0-or-later

#include "Lettering.h"

#include "Failure.h"

namespace K7R::skin
{

namespace
{

struct Glyph
{
    int number = 0;
    float advance = 0.0f;
};

Glyph findGlyph (juce::Typeface& typeface, juce::juce_wchar character)
{
    juce::Array<int> numbers;
    juce::Array<float> offsets;
    typeface.getGlyphPositions (juce::String::charToString (character), numbers, offsets);

    if (numbers.isEmpty() || offsets.size() < 2)
        return {};

    return { numbers[0], offsets[1] };
}

} // namespace

Lettering::Lettering (const juce::File& file)
{
    juce::MemoryBlock data;

    if (! file.loadFileAsData (data))
        throw Failure ("cannot read the font " + file.getFullPathName());

    typeface = juce::Typeface::createSystemTypefaceFor (data.getData(), data.getSize());

    if (typeface != nullptr)
        unitCapHeight = getGlyph ('H', 1.0f).getBounds().getHeight();

    if (typeface == nullptr || unitCapHeight <= 0.0f)
        throw Failure (file.getFullPathName() + " is not a font that can be drawn with");
}

juce::Path Lettering::getGlyph (juce::juce_wchar character, float capHeight) const
{
    juce::Path outline;
    typeface->getOutlineForGlyph (findGlyph (*typeface, character).number, outline);
    outline.applyTransform (juce::AffineTransform::scale (getScale (capHeight)));
    return outline;
}

float Lettering::getAdvance (juce::juce_wchar character, float capHeight) const
{
    return findGlyph (*typeface, character).advance * getScale (capHeight);
}

juce::Path Lettering::getOutline (const juce::String& text, float capHeight, float tracking) const
{
    juce::Path result;
    float pen = 0.0f;

    for (int i = 0; i < text.length(); ++i)
    {
        auto glyph = getGlyph (text[i], capHeight);
        glyph.applyTransform (juce::AffineTransform::translation (pen, 0.0f));
        result.addPath (glyph);

        const auto pair = kerning.find (text.substring (i, i + 2));
        const auto correction = pair != kerning.end() ? pair->second : 0.0f;
        pen += getAdvance (text[i], capHeight) + (tracking + correction) * capHeight;
    }

    result.applyTransform (juce::AffineTransform::translation (-result.getBounds().getX(), 0.0f));
    return result;
}

} // namespace K7R::skin
