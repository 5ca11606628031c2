// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/PngDecoder.h"

#include <vector>

#include <png.h>

namespace quilvane
{

namespace
{

constexpr size_t numChannels = 4;

/** @returns the pixels, rows of red, green, blue and opacity; none for a file that can't be read */
std::vector<juce::uint8> decode (png_image& state, const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    if (png_image_begin_read_from_memory (&state, data, numBytes) == 0 || state.width == 0 || state.height == 0
        || static_cast<juce::int64> (state.width) > maximumPixels / state.height)
        return {};

    // Samples are taken as they stand, whatever curve the file names.
    state.format = PNG_FORMAT_RGBA;
    state.flags |= PNG_IMAGE_FLAG_16BIT_sRGB | PNG_IMAGE_FLAG_COLORSPACE_NOT_sRGB;

    std::vector<juce::uint8> pixels (numChannels * state.width * state.height);

    if (png_image_finish_read (&state, nullptr, pixels.data(), 0, nullptr) == 0)
        pixels.clear();

    return pixels;
}

} // namespace

juce::Image decodePng (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    png_image state {};
    state.version = PNG_IMAGE_VERSION;

    const auto pixels = numBytes > 0 ? decode (state, data, numBytes, maximumPixels) : std::vector<juce::uint8>();
    juce::Image image;

    if (! pixels.empty())
    {
        const auto width = static_cast<int> (state.width), height = static_cast<int> (state.height);
        image = juce::Image (juce::Image::ARGB, width, height, false);
        const juce::Image::BitmapData bitmap (image, juce::Image::BitmapData::writeOnly);
        const auto* pixel = pixels.data();

        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x, pixel += numChannels)
                bitmap.setPixelColour (x, y, juce::Colour (pixel[0], pixel[1], pixel[2], pixel[3]));
    }

    png_image_free (&state);
    return image;
}

} // namespace quilvane
