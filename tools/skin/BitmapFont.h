// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "SkinSource.h"

namespace K7R::skin
{

// The characters of a bitmap font: what European names and all units need.
constexpr juce::juce_wchar firstFontCharacter = 32;
constexpr juce::juce_wchar lastFontCharacter = 255;
constexpr int numCharacters = lastFontCharacter - firstFontCharacter + 1;

/** Each character twice. */
constexpr int numFontRows = 2 * numCharacters;

/** Draws the strip of a display's font: all characters on nothing, and all again as they are under the caret,
    dark on a filled cell. Each cell is as wide as the strip.
    @param font the element BitmapFont */
juce::Image drawBitmapFont (const juce::XmlElement& font, const SkinSource&, const SkinSize&);

} // namespace K7R::skin
