// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** Makes a typeface of a TrueType or OpenType font that may come from anywhere. JUCE takes for granted that the
    library can read it and that it has a table of characters, so both are looked at here first.

    @returns null for what is no such font, is a font of bitmaps, or has no name */
juce::Typeface::Ptr createBoundedTypeface (const void* data, size_t numBytes);

} // namespace K7R
