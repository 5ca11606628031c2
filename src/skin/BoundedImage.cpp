// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/BoundedImage.h"

#include <array>
#include <cstring>

namespace quilvane
{

namespace
{

struct Size
{
    juce::int64 width = 0;
    juce::int64 height = 0;
};

using Bytes = const juce::uint8*;

/** The header chunk comes first in every PNG file. */
Size sizeOfPng (Bytes data, size_t numBytes)
{
    static constexpr std::array<juce::uint8, 8> signature { 0x89, 'P', 'N', 'G', 0x0d, 0x0a, 0x1a, 0x0a };

    if (numBytes < 24 || std::memcmp (data, signature.data(), signature.size()) != 0
        || std::memcmp (data + 12, "IHDR", 4) != 0)
        return {};

    return { juce::ByteOrder::bigEndianInt (data + 16), juce::ByteOrder::bigEndianInt (data + 20) };
}

Size sizeOfGif (Bytes data, size_t numBytes)
{
    if (numBytes < 10 || std::memcmp (data, "GIF8", 4) != 0)
        return {};

    return { juce::ByteOrder::littleEndianShort (data + 6), juce::ByteOrder::littleEndianShort (data + 8) };
}

/** The size stands in the first frame header, behind any number of other segments. */
Size sizeOfJpeg (Bytes data, size_t numBytes)
{
    if (numBytes < 4 || data[0] != 0xff || data[1] != 0xd8)
        return {};

    for (size_t position = 2; position + 9 < numBytes;)
    {
        const auto marker = data[position + 1];

        if (data[position] != 0xff)
            return {};

        if (marker == 0xff)
        {
            ++position; // a fill byte
            continue;
        }

        const auto isFrameHeader =
            marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;

        if (isFrameHeader)
            return { juce::ByteOrder::bigEndianShort (data + position + 7),
                     juce::ByteOrder::bigEndianShort (data + position + 5) };

        position += 2u + juce::ByteOrder::bigEndianShort (data + position + 2);
    }

    return {};
}

} // namespace

juce::Image decodeBoundedImage (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    const auto* bytes = static_cast<Bytes> (data);

    for (const auto& size : { sizeOfPng (bytes, numBytes), sizeOfJpeg (bytes, numBytes), sizeOfGif (bytes, numBytes) })
        if (size.width > 0 && size.height > 0)
            return size.width <= maximumPixels / size.height ? juce::ImageFileFormat::loadFrom (data, numBytes)
                                                             : juce::Image();

    return {};
}

} // namespace quilvane
