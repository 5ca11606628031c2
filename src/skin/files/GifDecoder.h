// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** Decodes the first picture of a GIF file that may come from anywhere. JUCE's decoder believes the code sizes and
    the codes that stand in the file, and writes where they lead, so it's never given one.

    A picture that breaks off keeps what was read; the rest of it is transparent.

    @returns an invalid image for what is no GIF file, or has more pixels than `maximumPixels` */
juce::Image decodeGif (const void* data, size_t numBytes, juce::int64 maximumPixels);

} // namespace K7R
