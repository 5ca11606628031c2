// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/BoundedImage.h"

#include <array>
#include <cstring>

#include "skin/GifDecoder.h"
#include "skin/JpegDecoder.h"

namespace quilvane
{

namespace
{

/** The library allocates by the size that the header claims, which comes first in every file. */
juce::Image decodePng (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    static constexpr std::array<juce::uint8, 8> signature { 0x89, 'P', 'N', 'G', 0x0d, 0x0a, 0x1a, 0x0a };
    const auto* bytes = static_cast<const juce::uint8*> (data);

    if (numBytes < 24 || std::memcmp (bytes, signature.data(), signature.size()) != 0
        || std::memcmp (bytes + 12, "IHDR", 4) != 0)
        return {};

    const juce::int64 width = juce::ByteOrder::bigEndianInt (bytes + 16);
    const juce::int64 height = juce::ByteOrder::bigEndianInt (bytes + 20);

    if (width == 0 || height == 0 || width > maximumPixels / height)
        return {};

    juce::MemoryInputStream stream (data, numBytes, false);
    return juce::PNGImageFormat().decodeImage (stream);
}

} // namespace

juce::Image decodeBoundedImage (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    for (const auto decode : { decodePng, decodeJpeg, decodeGif })
        if (auto image = decode (data, numBytes, maximumPixels); image.isValid())
            return image;

    return {};
}

} // namespace quilvane
