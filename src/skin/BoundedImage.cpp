// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/BoundedImage.h"

#include "skin/GifDecoder.h"
#include "skin/JpegDecoder.h"
#include "skin/PngDecoder.h"

namespace quilvane
{

juce::Image decodeBoundedImage (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    for (const auto decode : { decodePng, decodeJpeg, decodeGif })
        if (auto image = decode (data, numBytes, maximumPixels); image.isValid())
            return image;

    return {};
}

} // namespace quilvane
