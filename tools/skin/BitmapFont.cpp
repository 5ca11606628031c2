// SPDX-License-Identifier: GPL-3.0-or-later

#include "BitmapFont.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Canvas.h"

namespace K7R::skin
{

namespace
{

bool isControlCode (juce::juce_wchar character)
{
    return character >= 127 && character < 160;
}

/** A glyph without what stands alone in its counter, such as the dot of a zero: of its outlines, the two
    largest. */
juce::Path withoutInnermost (const juce::Path& glyph)
{
    std::vector<juce::Path> outlines;

    for (juce::Path::Iterator i (glyph); i.next();)
    {
        switch (i.elementType)
        {
            case juce::Path::Iterator::startNewSubPath:
                outlines.emplace_back();
                outlines.back().startNewSubPath (i.x1, i.y1);
                break;
            case juce::Path::Iterator::lineTo: outlines.back().lineTo (i.x1, i.y1); break;
            case juce::Path::Iterator::quadraticTo: outlines.back().quadraticTo (i.x1, i.y1, i.x2, i.y2); break;
            case juce::Path::Iterator::cubicTo: outlines.back().cubicTo (i.x1, i.y1, i.x2, i.y2, i.x3, i.y3); break;
            case juce::Path::Iterator::closePath: outlines.back().closeSubPath(); break;
        }
    }

    std::sort (outlines.begin(), outlines.end(),
               [] (const auto& a, const auto& b) { return a.getBounds().getHeight() > b.getBounds().getHeight(); });

    juce::Path result;

    for (size_t i = 0; i < std::min (outlines.size(), size_t (2)); ++i)
        result.addPath (outlines[i]);

    result.setUsingNonZeroWinding (glyph.isUsingNonZeroWinding());
    return result;
}

/** A character as a bitmap font has it, on a baseline at y = 0. */
juce::Path getFontGlyph (const Lettering& lettering, juce::juce_wchar character, float cap)
{
    if (isControlCode (character))
        return {};

    const auto glyph = lettering.getGlyph (character, cap);
    return character == '0' ? withoutInnermost (glyph) : glyph;
}

} // namespace

juce::Image drawBitmapFont (const juce::XmlElement& font, const SkinSource& source, const SkinSize& size)
{
    const auto& lettering = source.getLettering (requireAttribute (font, "font"));
    const auto cap = juce::jmax (static_cast<float> (size.leastCap),
                                 static_cast<float> (std::round (font.getDoubleAttribute ("cap") * size.scale)));
    const auto advance = lettering.getAdvance ('0', cap);
    const auto width =
        static_cast<int> (std::ceil (advance + static_cast<float> (font.getDoubleAttribute ("looseness"))));
    const auto height = juce::roundToInt (font.getDoubleAttribute ("line") * size.scale);
    const auto baseline = std::round ((static_cast<float> (height) + cap) / 2);

    Canvas canvas (width, height);
    auto strip = makeImage (width, height * numFontRows);
    juce::Path cell;
    cell.addRectangle (0.0f, 0.0f, static_cast<float> (width), static_cast<float> (height));

    const auto text = source.getFill (requireAttribute (font, "fill"));
    const auto caret = source.getFill (requireAttribute (font, "caret"));
    const auto textInCaret = source.getFill (requireAttribute (font, "caretText"));

    for (int i = 0; i < numFontRows; ++i)
    {
        const auto isUnderCaret = i >= numCharacters;
        auto glyph =
            getFontGlyph (lettering, firstFontCharacter + static_cast<juce::juce_wchar> (i % numCharacters), cap);
        glyph.applyTransform (
            juce::AffineTransform::translation ((static_cast<float> (width) - advance) / 2, baseline));

        canvas.clear();

        if (isUnderCaret)
            canvas.fill (cell, caret.top, caret.bottom);

        canvas.fill (glyph, isUnderCaret ? textInCaret.top : text.top, isUnderCaret ? textInCaret.bottom : text.bottom);
        canvas.copyTo (strip, 0, i * height);
    }

    return strip;
}

} // namespace K7R::skin
