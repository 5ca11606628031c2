// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/BitmapFont.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

/** It stands on the line, and goes up to the height of capitals. */
constexpr juce::juce_wchar capital = 'H';

/** The outline of a character in the program's font, on a line at y = 0; a box if that hasn't got it either. */
juce::Path outlineOf (juce::juce_wchar character)
{
    constexpr float fontHeight = 100.0f; // any: it's scaled

    juce::GlyphArrangement glyphs;
    glyphs.addLineOfText (juce::Font (DefaultLookAndFeel::getEmbeddedTypeface()).withHeight (fontHeight),
                          juce::String::charToString (character), 0.0f, 0.0f);
    juce::Path outline;
    glyphs.createPath (outline);
    return outline;
}

/** How much of its ground a pixel hides. */
float differenceOf (juce::Colour pixel, juce::Colour ground)
{
    const auto channel = [&] (float p, float g)
    { return std::abs (p * pixel.getFloatAlpha() - g * ground.getFloatAlpha()); };

    return std::abs (pixel.getFloatAlpha() - ground.getFloatAlpha())
           + channel (pixel.getFloatRed(), ground.getFloatRed())
           + channel (pixel.getFloatGreen(), ground.getFloatGreen())
           + channel (pixel.getFloatBlue(), ground.getFloatBlue());
}

} // namespace

void BitmapFont::readFromXml (const juce::XmlElement& gfx, SkinFile& skin)
{
    if (const auto found = skin.readImage (gfx, "resource"); found.isValid())
    {
        image = found;
        glyphWidth = image.getWidth();
    }

    height = juce::jlimit (0, maximumControlSize, gfx.getIntAttribute ("fontHeight"));

    if (image.isValid() && (height < 1 || height > image.getHeight() / 2))
        skin.report (&gfx, "an image of " + juce::String (image.getHeight())
                               + " rows doesn't hold glyphs of this \"fontHeight\" twice");

    if (const auto text = gfx.getStringAttribute ("firstASCII", " "); text.isNotEmpty())
        first = static_cast<int> (static_cast<juce::uint32> (text[0]));

    // Half of the image's rows are for the caret.
    const auto numGlyphs = height >= 1 ? image.getHeight() / 2 / height : 1;
    last = first + juce::jmax (0, numGlyphs - 1);
}

std::optional<int> BitmapFont::findGlyph (juce::juce_wchar character) const
{
    const auto code = static_cast<int> (static_cast<juce::uint32> (character));

    if (! juce::isPositiveAndNotGreaterThan (code - first, last - first))
        return {};

    return code - first;
}

juce::Rectangle<int> BitmapFont::getCell (int glyph, bool atCaret) const
{
    const auto row = glyph + (atCaret ? last - first + 1 : 0);
    return { 0, row * height, glyphWidth, height };
}

std::optional<BitmapFont::Ink> BitmapFont::findInk (bool atCaret) const
{
    constexpr int mostSteps = 64; // along either side: a cell may be very large
    constexpr float leastShare = 0.5f, leastDifference = 0.1f;

    const auto glyph = findGlyph (capital);

    if (first != ' ' || ! glyph.has_value() || height < 1)
        return {};

    const juce::Image::BitmapData letter (image.getClippedImage (getCell (*glyph, atCaret)),
                                          juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData blank (image.getClippedImage (getCell (0, atCaret)),
                                         juce::Image::BitmapData::readOnly);
    std::vector<float> differences (static_cast<size_t> (letter.height)); // the largest of each row
    Ink ink;
    auto largest = 0.0f;

    for (int y = 0; y < letter.height; y += 1 + letter.height / mostSteps)
        for (int x = 0; x < letter.width; x += 1 + letter.width / mostSteps)
        {
            const auto pixel = letter.getPixelColour (x, y);
            const auto difference = differenceOf (pixel, blank.getPixelColour (x, y));
            auto& ofRow = differences[static_cast<size_t> (y)];
            ofRow = juce::jmax (ofRow, difference);

            if (difference > largest)
                std::tie (largest, ink.colour) = std::make_pair (difference, pixel);
        }

    if (largest < leastDifference)
        return {};

    const auto isInked = [=] (float difference) { return difference >= leastShare * largest; };
    const auto top = std::find_if (differences.begin(), differences.end(), isInked);
    const auto bottom = std::find_if (differences.rbegin(), differences.rend(), isInked);
    ink.top = static_cast<int> (top - differences.begin());
    ink.bottom = static_cast<int> (differences.rend() - bottom);
    return ink;
}

//==============================================================================
void BitmapFont::draw (juce::Graphics& g, juce::juce_wchar character, int x, bool atCaret) const
{
    if (const auto glyph = findGlyph (character))
        return drawCell (g, *glyph, x, atCaret);

    const auto ink = findInk (atCaret);

    if (! ink.has_value() || juce::CharacterFunctions::isWhitespace (character))
        return drawCell (g, 0, x, atCaret);

    drawCell (g, 0, x, atCaret);

    const auto outline = outlineOf (character);
    const auto scale = static_cast<float> (ink->bottom - ink->top) / outlineOf (capital).getBounds().getHeight();
    const auto place = outline.getBounds();
    const auto cellWidth = static_cast<float> (glyphWidth);
    const auto scaleX = juce::jmin (scale, cellWidth / juce::jmax (1.0f, place.getWidth()));

    g.setColour (ink->colour);
    g.fillPath (outline, juce::AffineTransform::translation (-place.getCentreX(), 0.0f)
                             .scaled (scaleX, scale)
                             .translated (static_cast<float> (x) + cellWidth / 2.0f, static_cast<float> (ink->bottom)));
}

void BitmapFont::drawCell (juce::Graphics& g, int glyph, int x, bool atCaret) const
{
    g.setOpacity (1.0f); // which images take from the colour that was set last
    g.drawImageAt (image.getClippedImage (getCell (glyph, atCaret)), x, 0);
}

} // namespace K7R
