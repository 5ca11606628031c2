// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/GifDecoder.h"

#include <array>
#include <cstring>
#include <vector>

namespace K7R
{

namespace
{

constexpr int maximumCodes = 4096; // of 12 bits
constexpr int noCode = -1;

/** The file's bytes in order; zeros behind the end. */
class Bytes
{
public:
    Bytes (const void* start, size_t numBytes) : data (static_cast<const juce::uint8*> (start)), size (numBytes) {}

    bool isAtEnd() const noexcept { return position >= size; }

    /** Whether more was asked for than there is. */
    bool hasOverrun() const noexcept { return overrun; }

    int next() noexcept
    {
        overrun = overrun || isAtEnd();
        return overrun ? 0 : data[position++];
    }

    int nextShort() noexcept
    {
        const auto low = next();
        return low + next() * 256;
    }

    void skip (size_t numBytes) noexcept
    {
        overrun = overrun || numBytes > size - position;
        position = juce::jmin (size, position + numBytes);
    }

    /** Blocks, each behind its length, up to an empty one. */
    void skipBlocks() noexcept
    {
        while (const auto length = next())
            skip (static_cast<size_t> (length));
    }

private:
    const juce::uint8* data;
    size_t size, position = 0;
    bool overrun = false;
};

/** The codes of a picture, which are packed across the blocks that hold them. */
class Codes
{
public:
    explicit Codes (Bytes& source) : bytes (source) {}

    int next (int numBits)
    {
        while (numHeld < numBits)
        {
            if (blockLeft == 0)
                blockLeft = bytes.next();

            if (blockLeft == 0 || bytes.isAtEnd())
                return noCode;

            held |= static_cast<juce::uint32> (bytes.next()) << numHeld;
            numHeld += 8;
            --blockLeft;
        }

        const auto code = static_cast<int> (held & ((1u << numBits) - 1u));
        held >>= numBits;
        numHeld -= numBits;
        return code;
    }

    /** Goes behind the block that ends the picture. */
    void skipRest()
    {
        bytes.skip (static_cast<size_t> (blockLeft));
        bytes.skipBlocks();
    }

private:
    Bytes& bytes;
    juce::uint32 held = 0;
    int numHeld = 0;
    int blockLeft = 0;
};

using Palette = std::array<juce::Colour, 256>;

void readPalette (Bytes& bytes, int flags, Palette& palette)
{
    for (int i = 0; i < 2 << (flags & 7); ++i)
    {
        const auto red = static_cast<juce::uint8> (bytes.next());
        const auto green = static_cast<juce::uint8> (bytes.next());
        palette[static_cast<size_t> (i)] = juce::Colour (red, green, static_cast<juce::uint8> (bytes.next()));
    }
}

/** Undoes the compression: Lempel, Ziv and Welch's, with codes that start at one bit more than the pixels have.
    @returns the palette indexes; fewer than asked for if the codes end or can't be understood */
std::vector<juce::uint8> decompress (Bytes& bytes, size_t numPixels)
{
    const auto pixelBits = bytes.next();
    std::vector<juce::uint8> pixels;

    if (pixelBits < 1 || pixelBits > 8)
        return pixels;

    const auto clear = 1 << pixelBits, end = clear + 1;
    std::array<juce::uint16, maximumCodes> prefixes {};
    std::array<juce::uint8, maximumCodes> lasts {};
    std::vector<juce::uint8> text;
    Codes codes (bytes);
    int numBits = pixelBits + 1, numCodes = clear + 2, previous = noCode;

    while (pixels.size() < numPixels)
    {
        const auto code = codes.next (numBits);

        if (code == clear)
        {
            numBits = pixelBits + 1;
            numCodes = clear + 2;
            previous = noCode;
            continue;
        }

        // Only the code that comes next may be used before it's defined.
        if (code == noCode || code == end || code > numCodes || (previous == noCode && code > end)
            || (code == numCodes && previous == noCode))
            break;

        // A code's text, from its end on; a prefix is always an older code.
        text.clear();

        for (auto rest = code == numCodes ? previous : code;; rest = prefixes[static_cast<size_t> (rest)])
        {
            const auto isPixel = rest < clear;
            text.push_back (isPixel ? static_cast<juce::uint8> (rest) : lasts[static_cast<size_t> (rest)]);

            if (isPixel)
                break;
        }

        const auto first = text.back();

        if (code == numCodes)
            text.insert (text.begin(), first);

        if (previous != noCode && numCodes < maximumCodes)
        {
            prefixes[static_cast<size_t> (numCodes)] = static_cast<juce::uint16> (previous);
            lasts[static_cast<size_t> (numCodes)] = first;

            if (++numCodes == 1 << numBits && numBits < 12)
                ++numBits;
        }

        previous = code;
        const auto numTaken = juce::jmin (text.size(), numPixels - pixels.size());
        pixels.insert (pixels.end(), text.rbegin(), text.rbegin() + static_cast<std::ptrdiff_t> (numTaken));
    }

    codes.skipRest();
    return pixels;
}

/** The row of each row that is stored: every eighth, those in the middle between, and so on, or one by one. */
std::vector<int> orderRows (int height, bool isInterlaced)
{
    std::vector<int> rows;

    const auto add = [&] (int start, int step)
    {
        for (int y = start; y < height; y += step)
            rows.push_back (y);
    };

    if (! isInterlaced)
        add (0, 1);
    else
        for (const auto& [start, step] : { std::pair (0, 8), std::pair (4, 8), std::pair (2, 4), std::pair (1, 2) })
            add (start, step);

    return rows;
}

/** Goes over what follows the first picture; false if the file breaks off before its end. */
bool isWhole (Bytes& bytes)
{
    for (;;)
    {
        const auto kind = bytes.next();

        if (bytes.hasOverrun())
            return false;

        if (kind == ',')
        {
            bytes.skip (8); // place and size
            const auto flags = bytes.next();
            bytes.skip ((flags & 0x80) != 0 ? size_t (3) * (2u << (flags & 7)) : 0);
        }
        else if (kind != '!')
        {
            return true; // the end mark, or bytes that mean nothing
        }

        bytes.next(); // how many bits its pixels have, or which extension it is
        bytes.skipBlocks();
    }
}

juce::Image readPicture (Bytes& bytes, Palette palette, int transparent, juce::int64 maximumPixels)
{
    bytes.skip (4); // its place on the screen
    const auto width = bytes.nextShort(), height = bytes.nextShort(), flags = bytes.next();

    if (width == 0 || height == 0 || width > maximumPixels / height)
        return {};

    if ((flags & 0x80) != 0)
        readPalette (bytes, flags, palette);

    if (transparent >= 0)
        palette[static_cast<size_t> (transparent)] = juce::Colours::transparentBlack;

    const auto numPixels = static_cast<size_t> (width) * static_cast<size_t> (height);
    const auto pixels = decompress (bytes, numPixels);

    if (pixels.size() < numPixels || ! isWhole (bytes))
        return {};

    const auto rows = orderRows (height, (flags & 0x40) != 0);

    juce::Image image (juce::Image::ARGB, width, height, true);
    const juce::Image::BitmapData bitmap (image, juce::Image::BitmapData::writeOnly);

    for (size_t i = 0; i < pixels.size(); ++i)
        bitmap.setPixelColour (static_cast<int> (i % static_cast<size_t> (width)),
                               rows[i / static_cast<size_t> (width)], palette[pixels[i]]);

    return image;
}

} // namespace

juce::Image decodeGif (const void* data, size_t numBytes, juce::int64 maximumPixels)
{
    constexpr size_t signatureBytes = 6;

    if (numBytes < signatureBytes
        || (std::memcmp (data, "GIF87a", signatureBytes) != 0 && std::memcmp (data, "GIF89a", signatureBytes) != 0))
        return {};

    Bytes bytes (data, numBytes);
    bytes.skip (signatureBytes + 4); // and the screen's size
    const auto flags = bytes.next();
    bytes.skip (2);

    Palette palette;
    palette.fill (juce::Colours::black);
    int transparent = -1;

    if ((flags & 0x80) != 0)
        readPalette (bytes, flags, palette);

    while (! bytes.isAtEnd())
    {
        const auto kind = bytes.next();

        if (kind == ',')
            return readPicture (bytes, palette, transparent, maximumPixels);

        if (kind != '!')
            break;

        // Of the extensions only the one that tells the transparent colour matters.
        if (bytes.next() == 0xf9 && bytes.next() == 4)
        {
            const auto isTransparent = (bytes.next() & 1) != 0;
            bytes.skip (2); // a delay
            const auto index = bytes.next();
            transparent = isTransparent ? index : -1;
        }

        bytes.skipBlocks();
    }

    return {};
}

} // namespace K7R
