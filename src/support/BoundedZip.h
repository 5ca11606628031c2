// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{

/** What a ZIP archive may claim before it is believed. */
struct ZipBounds
{
    juce::int64 archiveBytes;  // the archive itself
    int entries;               // members, of any kind
    juce::int64 memberBytes;   // one member, stored or decompressed; a larger one doesn't open
    juce::int64 expandedBytes; // all members that open, decompressed
};

/** Reads a ZIP archive that may come from anywhere.

    juce::ZipFile believes the directory: it allocates by the sizes that stand there, keeps names that are
    no UTF-8, and gives streams that inflate without end. So the directory is walked here first, and only
    an archive within its bounds is opened. On top of the caller's bounds these are refused:

    - a directory of more than maximumZipDirectoryBytes, or one that doesn't lie before the end record;
    - members that open and together take up more room than the archive has: honest members don't overlap,
      and a small archive whose members all share one block of data costs as much as a large one;
    - an end record that a second one overlaps, because two readers could then see two archives.

    Nothing is ever written: a member's name is a text, and no path.

    For one thread at a time.
*/
class BoundedZip
{
public:
    /** Opens an archive, and keeps the stream.
        @returns null if the stream is no ZIP archive or isn't within the bounds */
    static std::unique_ptr<BoundedZip> open (std::unique_ptr<juce::InputStream>, const ZipBounds&);

    ~BoundedZip();

    int getNumEntries() const noexcept { return static_cast<int> (entries.size()); }

    /** A member's name with its folders, as it stands in the directory: "../../x" is possible. A name that
        isn't UTF-8, or has more than maximumZipNameBytes bytes, is given as the empty text. */
    juce::String getEntryName (int index) const;

    /** The size that a member claims to have decompressed; 0 out of range. */
    juce::int64 getEntryBytes (int index) const;

    /** The first member of this name, with regard to case; -1 if there is none or the name is empty. */
    int findEntry (const juce::String& name) const;

    /** The member's whole content, in memory of its own: it outlives the archive, and two members can be read
        at once.
        @param maximumBytes what the caller takes, if that is less than memberBytes
        @returns null for an index out of range, and for a member that is damaged, claims more than
                 it may, or gives less than it claims */
    std::unique_ptr<juce::InputStream> openEntry (int index, juce::int64 maximumBytes);

    /** A member that isn't compressed, as a stream that reads from the archive's own, and has to be gone before
        the archive. It's the way to a member that is too large for memory.
        @returns null for an index out of range, and for a member that is compressed or claims too much */
    std::unique_ptr<juce::InputStream> openStoredEntry (int index);

private:
    struct Entry
    {
        juce::String name;
        juce::int64 storedBytes = 0;
        juce::int64 bytes = 0; // decompressed
        bool isStored = false;
        bool opens = false;
    };

    BoundedZip (std::unique_ptr<juce::InputStream>, std::vector<Entry>&&);

    static Entry readEntry (const char* record, int nameBytes, juce::int64 directoryStart, const ZipBounds&);
    static bool readDirectory (juce::InputStream&, const ZipBounds&, std::vector<Entry>&);
    bool agreesWithZipFile() const;
    bool canOpen (int index) const;

    std::vector<Entry> entries;
    juce::ZipFile zip;
};

/** 16384 members with names of 200 characters. */
constexpr int maximumZipDirectoryBytes = 4 * 1024 * 1024;

/** Four times what a file system takes for one name. */
constexpr int maximumZipNameBytes = 1024;

} // namespace K7R
