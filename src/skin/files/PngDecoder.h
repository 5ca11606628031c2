// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** Decodes a PNG file that may come from anywhere. JUCE's decoder jumps into the void after an error of the
    system's library, so it's never given one.

    @returns an invalid image for a file that is damaged, or has more pixels than `maximumPixels` */
juce::Image decodePng (const void* data, size_t numBytes, juce::int64 maximumPixels);

} // namespace K7R
