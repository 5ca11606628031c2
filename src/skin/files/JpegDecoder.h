// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** Decodes a JPEG file that may come from anywhere. JUCE's decoder goes on after errors that the library must not
    be called after, so it's never given one.

    @returns an invalid image for a file that is damaged, or has more pixels than `maximumPixels` */
juce::Image decodeJpeg (const void* data, size_t numBytes, juce::int64 maximumPixels);

} // namespace K7R
