// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/BoundedZip.h"

namespace K7R
{

namespace
{

// The records of the ZIP format, with their sizes in bytes before names and comments.
constexpr juce::uint32 endSignature = 0x06054b50;
constexpr juce::uint32 entrySignature = 0x02014b50;
constexpr int endRecordBytes = 22;
constexpr int entryRecordBytes = 46;
constexpr int memberHeaderBytes = 30;

constexpr int longestComment = 65535; // behind the end record

constexpr int methodStored = 0;
constexpr int methodDeflated = 8;

int shortAt (const char* data)
{
    return juce::ByteOrder::littleEndianShort (data);
}

juce::int64 intAt (const char* data)
{
    return juce::ByteOrder::littleEndianInt (data);
}

bool hasSignature (const char* data, juce::uint32 signature)
{
    return juce::ByteOrder::littleEndianInt (data) == signature;
}

/** Reads a piece of the stream.
    @returns false if there is less than that */
bool readAt (juce::InputStream& stream, juce::int64 position, juce::int64 numBytes, juce::MemoryBlock& piece)
{
    const auto size = static_cast<size_t> (numBytes);
    piece.setSize (size);

    return stream.setPosition (position) && stream.read (piece.getData(), size) == static_cast<ssize_t> (size);
}

/** Where the end record stands in the archive's last bytes, or -1. juce::ZipFile takes the last one too,
    but looks through windows of the record's length, so that of two in one window it takes the first. */
int findEndRecord (const juce::MemoryBlock& tail)
{
    const auto* data = tail.begin();
    const auto last = static_cast<int> (tail.getSize()) - 4;

    for (int i = last; i >= 0; --i)
    {
        if (! hasSignature (data + i, endSignature))
            continue;

        for (int j = juce::jmax (0, i - endRecordBytes + 1); j < i; ++j)
            if (hasSignature (data + j, endSignature))
                return -1;

        return i + endRecordBytes <= static_cast<int> (tail.getSize()) ? i : -1;
    }

    return -1;
}

} // namespace

//==============================================================================
std::unique_ptr<BoundedZip> BoundedZip::open (std::unique_ptr<juce::InputStream> stream, const ZipBounds& bounds)
{
    std::vector<Entry> entries;

    if (stream == nullptr || ! readDirectory (*stream, bounds, entries))
        return nullptr;

    std::unique_ptr<BoundedZip> archive (new BoundedZip (std::move (stream), std::move (entries)));
    return archive->agreesWithZipFile() ? std::move (archive) : nullptr;
}

BoundedZip::BoundedZip (std::unique_ptr<juce::InputStream> stream, std::vector<Entry>&& known) :
    entries (std::move (known)),
    zip (stream.release(), true)
{
}

BoundedZip::~BoundedZip() = default;

BoundedZip::Entry BoundedZip::readEntry (const char* record, int nameBytes, juce::int64 directoryStart,
                                         const ZipBounds& bounds)
{
    const auto method = shortAt (record + 10);
    const auto start = intAt (record + 42);
    const auto* name = record + entryRecordBytes;

    Entry entry;
    entry.storedBytes = intAt (record + 20);
    entry.isStored = method == methodStored;
    entry.bytes = entry.isStored ? entry.storedBytes : intAt (record + 24);
    entry.opens = (entry.isStored || method == methodDeflated) && entry.bytes <= bounds.memberBytes
                  && start + memberHeaderBytes + entry.storedBytes <= directoryStart;

    // Text functions would run beyond the end of a text that stops within a character.
    if (nameBytes <= maximumZipNameBytes && juce::CharPointer_UTF8::isValidString (name, nameBytes))
        entry.name = juce::String::fromUTF8 (name, nameBytes);

    return entry;
}

bool BoundedZip::readDirectory (juce::InputStream& stream, const ZipBounds& bounds, std::vector<Entry>& entries)
{
    const auto length = stream.getTotalLength();

    if (length < endRecordBytes || length > bounds.archiveBytes)
        return false;

    juce::MemoryBlock block;
    const auto tailStart = juce::jmax (juce::int64 (0), length - endRecordBytes - longestComment);

    if (! readAt (stream, tailStart, length - tailStart, block))
        return false;

    const auto endRecord = findEndRecord (block);

    if (endRecord < 0)
        return false;

    const auto numEntries = shortAt (block.begin() + endRecord + 10);
    const auto start = intAt (block.begin() + endRecord + 16);
    const auto size = tailStart + endRecord - start;

    if (numEntries > bounds.entries || size < 0 || size > maximumZipDirectoryBytes
        || ! readAt (stream, start, size, block))
        return false;

    juce::int64 position = 0;
    juce::int64 storedBytes = 0;
    juce::int64 expandedBytes = 0;

    for (int i = 0; i < numEntries; ++i)
    {
        const auto* record = block.begin() + position;

        if (position + entryRecordBytes > size || ! hasSignature (record, entrySignature))
            return false;

        const auto nameBytes = shortAt (record + 28);
        position += entryRecordBytes + nameBytes + shortAt (record + 30) + shortAt (record + 32);

        if (position > size)
            return false;

        const auto entry = readEntry (record, nameBytes, start, bounds);

        if (entry.opens)
        {
            storedBytes += entry.storedBytes;
            expandedBytes += entry.bytes;
        }

        entries.push_back (entry);
    }

    return storedBytes <= length && expandedBytes <= bounds.expandedBytes;
}

bool BoundedZip::agreesWithZipFile() const
{
    if (zip.getNumEntries() != getNumEntries())
        return false;

    for (int i = 0; i < getNumEntries(); ++i)
    {
        const auto& entry = entries[static_cast<size_t> (i)];

        if (! entry.isStored && zip.getEntry (i)->uncompressedSize != entry.bytes)
            return false;
    }

    return true;
}

//==============================================================================
bool BoundedZip::canOpen (int index) const
{
    return juce::isPositiveAndBelow (index, getNumEntries()) && entries[static_cast<size_t> (index)].opens;
}

juce::String BoundedZip::getEntryName (int index) const
{
    return juce::isPositiveAndBelow (index, getNumEntries()) ? entries[static_cast<size_t> (index)].name
                                                             : juce::String();
}

juce::int64 BoundedZip::getEntryBytes (int index) const
{
    return juce::isPositiveAndBelow (index, getNumEntries()) ? entries[static_cast<size_t> (index)].bytes : 0;
}

int BoundedZip::findEntry (const juce::String& name) const
{
    if (name.isNotEmpty())
        for (int i = 0; i < getNumEntries(); ++i)
            if (entries[static_cast<size_t> (i)].name == name)
                return i;

    return -1;
}

std::unique_ptr<juce::InputStream> BoundedZip::openEntry (int index, juce::int64 maximumBytes)
{
    if (! canOpen (index) || entries[static_cast<size_t> (index)].bytes > maximumBytes)
        return nullptr;

    const std::unique_ptr<juce::InputStream> stream (zip.createStreamForEntry (index));
    const auto size = static_cast<size_t> (entries[static_cast<size_t> (index)].bytes);
    juce::MemoryBlock content (size);

    if (stream == nullptr || stream->read (content.getData(), size) != static_cast<ssize_t> (size))
        return nullptr;

    return std::make_unique<juce::MemoryInputStream> (std::move (content));
}

std::unique_ptr<juce::InputStream> BoundedZip::openStoredEntry (int index)
{
    if (! canOpen (index) || ! entries[static_cast<size_t> (index)].isStored)
        return nullptr;

    return std::unique_ptr<juce::InputStream> (zip.createStreamForEntry (index));
}

} // namespace K7R
