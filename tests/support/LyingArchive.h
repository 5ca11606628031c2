// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::test
{

// The places in an archive that lie about it. Offsets are those of the ZIP format.

inline constexpr int endRecordBytes = 22;
inline constexpr int entriesInEndRecord = 10;
inline constexpr int directoryInEndRecord = 16;
inline constexpr int methodInEntry = 10;
inline constexpr int storedBytesInEntry = 20;
inline constexpr int bytesInEntry = 24;
inline constexpr int startInEntry = 42;
inline constexpr int nameInEntry = 46;

inline char* endRecordOf (juce::MemoryBlock& archive)
{
    return archive.begin() + archive.getSize() - endRecordBytes;
}

/** The directory's record of a member. */
inline char* entryOf (juce::MemoryBlock& archive, int index)
{
    auto* entry = archive.begin() + juce::ByteOrder::littleEndianInt (endRecordOf (archive) + directoryInEndRecord);

    while (--index >= 0)
        entry += nameInEntry + juce::ByteOrder::littleEndianShort (entry + 28);

    return entry;
}

inline void put (char* place, juce::uint32 value, int numBytes)
{
    for (int i = 0; i < numBytes; ++i)
        place[i] = static_cast<char> (value >> (8 * i));
}

} // namespace K7R::test
