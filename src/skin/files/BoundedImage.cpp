// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/BoundedImage.h"

#include "skin/files/GifDecoder.h"
#include "skin/files/JpegDecoder.h"
#include "skin/files/PngDecoder.h"

namespace K7R
{

juce::Image decodeBoundedImage (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    for (const auto decode : { decodePng, decodeJpeg, decodeGif })
        if (auto image = decode (data, numBytes, maximumPixels); image.isValid())
            return image;

    return {};
}

} // namespace K7R
