// SPDX-License-Identifier: GPL-3.0-or-later

// Packages that are signed, and whose archives lie.

#include <gtest/gtest.h>

#include "Signature.h"
#include "support/LyingArchive.h"
#include "support/PackageInTest.h"

using namespace K7R;
using namespace K7R::package;
using namespace K7R::test;

//==============================================================================
TEST (HostilePackage, NamesAreTexts)
{
    auto members = makeMembers();
    members.push_back ({ "../../x.qvprs2", bytes ("up") });
    members.push_back ({ "/etc/x.qvprs2", bytes ("root") });
    members.push_back ({ "Slow.qvprs2", bytes ("twin") });
    members.push_back ({ "Clipped", bytes ("name") });
    members.push_back ({ juce::String::repeatedString ("n", maximumZipNameBytes + 1), bytes ("long") });

    auto archive = makeArchive (members);
    put (entryOf (archive, 6) + nameInEntry + 6, 0xf0, 1); // the first byte of four, with no others
    const auto package = openSigned (archive);

    ASSERT_EQ (package.getNumEntries(), 8);
    EXPECT_EQ (package.readEntryText (package.findEntry ("../../x.qvprs2")), "up");
    EXPECT_EQ (package.readEntryText (package.findEntry ("/etc/x.qvprs2")), "root");
    EXPECT_EQ (package.findEntry ("Slow.qvprs2"), 1) << "the first of two counts";
    EXPECT_EQ (package.readEntryText (5), "twin");
    EXPECT_EQ (package.getEntryName (6), "");
    EXPECT_EQ (package.getEntryName (7), "");
    EXPECT_EQ (package.findEntry (""), -1);
}

TEST (HostilePackage, AMemberThatLiesDoesNotOpenAndTheOthersDo)
{
    struct Lie
    {
        const char* name;
        bool isDeflated;
        int offset;
        juce::uint32 value;
        int numBytes;
    };

    const std::vector<Lie> lies {
        { "claims 4 GiB", true, bytesInEntry, 0xffffffff, 4 },
        { "claims 4 GiB in the file", false, storedBytesInEntry, 0xffffffff, 4 },
        { "claims one byte more than there is", true, bytesInEntry, 33, 4 },
        { "is cut off", true, storedBytesInEntry, 20, 4 },
        { "starts beyond the end", false, startInEntry, 0xffffffff, 4 },
        { "starts at no member", false, startInEntry, 1, 4 },
        { "isn't compressed as it says", false, methodInEntry, 8, 2 },
        { "has an unknown method", true, methodInEntry, 12, 2 },
    };

    for (const auto& lie : lies)
    {
        auto archive = lie.isDeflated ? makeDeflatedArchive (makeMembers()) : makeArchive (makeMembers());
        put (entryOf (archive, 1) + lie.offset, lie.value, lie.numBytes);

        const auto package = openSigned (archive);
        ASSERT_TRUE (package.isOpen()) << lie.name;
        EXPECT_EQ (package.openEntry (1), nullptr) << lie.name;
        EXPECT_EQ (package.readEntryText (1), "") << lie.name;
        EXPECT_EQ (package.readEntryText (2), "<Preset tags=\"Spatialize:Wide\"/>") << lie.name;
    }
}

TEST (HostilePackage, AnArchiveThatLiesIsNotOpened)
{
    struct Lie
    {
        const char* name;
        int offset; // in the end record
        juce::uint32 value;
        int numBytes;
    };

    const std::vector<Lie> lies {
        { "the directory is beyond the end", directoryInEndRecord, 0xffffffff, 4 },
        { "the directory is within the end record", directoryInEndRecord, 0x7fffffff, 4 },
        { "the directory begins at a member", directoryInEndRecord, 0, 4 },
        { "there are more members than records", entriesInEndRecord, 4, 2 },
        { "there are 65535 members", entriesInEndRecord, 65535, 2 },
    };

    for (const auto& lie : lies)
    {
        auto archive = makeArchive (makeMembers());
        put (endRecordOf (archive) + lie.offset, lie.value, lie.numBytes);
        EXPECT_FALSE (openSigned (archive).isOpen()) << lie.name;
    }

    auto archive = makeArchive (makeMembers());
    put (entryOf (archive, 1), 0, 4);
    EXPECT_FALSE (openSigned (archive).isOpen()) << "a record is none";
}

TEST (HostilePackage, OverlappingEndRecordsAreRefused)
{
    constexpr auto signature = 0x06054b50u;
    auto archive = makeArchive (makeMembers());
    const auto directory = juce::ByteOrder::littleEndianInt (endRecordOf (archive) + directoryInEndRecord);
    const auto end = archive.getSize() - endRecordBytes;

    for (const auto hasSecond : { false, true })
    {
        auto data = archive;
        data.setSize (archive.getSize() + 14, true); // with room for a comment

        // Fields of two records, 4 bytes apart, that don't get in each other's way and say the same.
        for (const auto offset : { 0, 4 })
        {
            auto* record = data.begin() + end + offset;
            put (record, offset > 0 || hasSecond ? signature : 0, 4);
            put (record + entriesInEndRecord, 3, 2);
            put (record + directoryInEndRecord, directory, 4);
        }

        auto stream = std::make_unique<juce::MemoryInputStream> (data, true);
        EXPECT_EQ (BoundedZip::open (std::move (stream), { 65536, 64, 65536, 65536 }) != nullptr, ! hasSecond);
    }
}

TEST (HostilePackage, OneBlockOfDataDoesNotStandForManyMembers)
{
    juce::MemoryBlock zeros (40 * 1024, true);
    auto archive = makeArchive ({ { "a", zeros }, { "b", {} }, { "c", {} } });

    for (const auto twin : { 1, 2 })
    {
        put (entryOf (archive, twin) + startInEntry, 0, 4);
        put (entryOf (archive, twin) + storedBytesInEntry, 40 * 1024, 4);
    }

    EXPECT_FALSE (openSigned (archive).isOpen());
}

TEST (HostilePackage, ExpansionIsBounded)
{
    // 1 MiB of zeros takes 1 KiB.
    const auto largest = static_cast<size_t> (maximumPackageMemberBytes);
    const juce::MemoryBlock zeros (largest, true);
    const juce::MemoryBlock tooMany (largest + 1, true);

    const auto package = openSigned (makeDeflatedArchive ({ { "most", zeros }, { "more", tooMany } }));
    ASSERT_TRUE (package.isOpen());
    ASSERT_NE (package.openEntry (0), nullptr);
    EXPECT_EQ (package.openEntry (0)->getTotalLength(), maximumPackageMemberBytes);
    EXPECT_EQ (package.openEntry (1), nullptr);

    constexpr auto most = static_cast<int> (maximumPackageExpandedBytes / maximumPackageMemberBytes);

    for (const auto count : { most, most + 1 })
    {
        std::vector<Member> members;

        for (int i = 0; i < count; ++i)
            members.push_back ({ juce::String (i), zeros });

        EXPECT_EQ (openSigned (makeDeflatedArchive (members)).isOpen(), count == most) << count;
    }
}

TEST (HostilePackage, MoreMembersThanABankHasAreRefused)
{
    for (const auto count : { maximumPackageEntries, maximumPackageEntries + 1 })
    {
        std::vector<Member> members;

        for (int i = 0; i < count; ++i)
            members.push_back ({ juce::String (i), {} });

        // Without a signature, which would take a while on an archive of this size.
        const auto archive = makeArchive (members);
        const ZipBounds bounds { maximumPackageBytes, maximumPackageEntries, 1, 1 };
        auto stream = std::make_unique<juce::MemoryInputStream> (archive, false);
        EXPECT_EQ (BoundedZip::open (std::move (stream), bounds) != nullptr, count == maximumPackageEntries);
    }
}

TEST (HostilePackage, CompressedContentIsNotInflatedBeyondItsBound)
{
    // What makes the content large is no member, but room in front of the directory.
    auto archive = makeArchive (makeMembers());
    const auto directory = juce::ByteOrder::littleEndianInt (endRecordOf (archive) + directoryInEndRecord);
    const auto room = static_cast<juce::uint32> (maximumInflatedContentBytes) - directory;
    put (endRecordOf (archive) + directoryInEndRecord, directory + room, 4);

    juce::MemoryOutputStream out;
    out.write (archive.getData(), directory);
    out.writeRepeatedByte (0, room);
    out.write (archive.begin() + directory, archive.getSize() - directory);

    auto content = out.getMemoryBlock();
    juce::String signature;

    // Counted in the room. To begin at 0 comes to the same end, 20 s later.
    for (juce::uint32 nonce = 863; signature.isEmpty(); ++nonce)
    {
        put (content.begin() + directory, nonce, 4);
        signature = sign (digestOf (content));
    }

    EXPECT_TRUE (openBytes (makeContainer (content, signature)).isOpen());
    EXPECT_FALSE (openBytes (makeCompressedContainer (content, signature)).isOpen());
}
