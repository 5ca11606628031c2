// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_graphics/juce_graphics.h>

namespace K7R
{

/** Decodes a PNG, JPEG or GIF image that may come from anywhere.

    Sizes are bounded before anything is allocated, and the decoders behind it stop at the first fault.

    @param maximumPixels what the caller has room for; 4 bytes each
    @returns an invalid image for one that is damaged, larger than that, or of another format
*/
juce::Image decodeBoundedImage (const void* data, size_t numBytes, juce::int64 maximumPixels);

} // namespace K7R
