// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/PngDecoder.h"

#include <png.h>

namespace K7R
{

namespace
{

void premultiply (juce::uint8* line, int numPixels)
{
    auto* pixels = reinterpret_cast<juce::PixelARGB*> (line);

    for (int x = 0; x < numPixels; ++x)
        pixels[x].premultiply();
}

} // namespace

juce::Image decodePng (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    png_image state {};
    state.version = PNG_IMAGE_VERSION;
    juce::Image image;

    if (numBytes > 0 && png_image_begin_read_from_memory (&state, data, numBytes) != 0 && state.width > 0
        && state.height > 0 && static_cast<juce::int64> (state.width) <= maximumPixels / state.height)
    {
        // The order that juce::PixelARGB has in memory. Samples are taken as they stand, whatever curve the file names.
        state.format = juce::ByteOrder::isBigEndian() ? PNG_FORMAT_ARGB : PNG_FORMAT_BGRA;
        state.flags |= PNG_IMAGE_FLAG_16BIT_sRGB | PNG_IMAGE_FLAG_COLORSPACE_NOT_sRGB;

        image = juce::Image (juce::SoftwareImageType().create (juce::Image::ARGB, static_cast<int> (state.width),
                                                               static_cast<int> (state.height), false));
        const juce::Image::BitmapData bitmap (image, juce::Image::BitmapData::writeOnly);

        if (png_image_finish_read (&state, nullptr, bitmap.data, bitmap.lineStride, nullptr) == 0)
            image = {};
        else
            for (int y = 0; y < bitmap.height; ++y)
                premultiply (bitmap.getLinePointer (y), bitmap.width);
    }

    png_image_free (&state);
    return image;
}

} // namespace K7R
