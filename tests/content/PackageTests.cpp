// SPDX-License-Identifier: GPL-3.0-or-later

#include <functional>

#include <gtest/gtest.h>

#include "Signature.h"
#include "support/PackageInTest.h"

namespace
{

using namespace K7R;
using namespace K7R::package;
using namespace K7R::test;

/** The first content that can be signed and whose digest the test wants. */
juce::MemoryBlock findContent (const std::function<bool (const juce::String&)>& isWanted)
{
    const auto archive = makeArchive (makeMembers());

    for (int nonce = 0;; ++nonce)
    {
        const auto content = withNonce (archive, nonce);
        const auto digest = digestOf (content);

        if (isWanted (digest) && canSign (digest))
            return content;
    }
}

} // namespace

//==============================================================================
TEST (Package, GivesItsManifestAndMembers)
{
    auto package = openSigned (makeArchive (makeMembers()));
    ASSERT_TRUE (package.isOpen());

    const auto& manifest = package.getManifest();
    EXPECT_EQ (manifest.product, "Quilvane 2");
    EXPECT_EQ (manifest.module, "Presets");
    EXPECT_EQ (manifest.type, "Factory");
    EXPECT_EQ (manifest.name, "Bank");
    EXPECT_EQ (manifest.revision, 7);
    EXPECT_EQ (manifest.author, "Ada");
    EXPECT_EQ (manifest.organization, "K7R Group");
    EXPECT_LT (juce::Time::currentTimeMillis() - manifest.readTime, 60000);

    ASSERT_EQ (package.getNumEntries(), 3);
    EXPECT_EQ (package.getEntryName (2), "Wide.qvprs2");
    EXPECT_EQ (package.findEntry ("Wide.qvprs2"), 2);
    EXPECT_EQ (package.findEntry ("wide.qvprs2"), -1);
    EXPECT_EQ (package.readEntryText (2), "<Preset tags=\"Spatialize:Wide\"/>");

    for (const auto index : { -1, 3 })
    {
        EXPECT_EQ (package.getEntryName (index), "");
        EXPECT_EQ (package.openEntry (index), nullptr);
    }

    const auto first = package.openEntry (1);
    const auto second = package.openEntry (2);
    package = PackageFile();
    EXPECT_EQ (first->readEntireStreamAsString(), "<Preset tags=\"Modulation:Slow\"/>");
    EXPECT_EQ (second->readEntireStreamAsString(), "<Preset tags=\"Spatialize:Wide\"/>");
}

TEST (Package, TakesCompressedMembersAndContent)
{
    const auto container = signArchive (makeDeflatedArchive (makeMembers()));
    juce::MemoryInputStream stream (container, false);
    juce::ZipFile zip (stream);
    juce::MemoryBlock content;
    std::unique_ptr<juce::InputStream> (zip.createStreamForEntry (0))->readIntoMemoryBlock (content);

    for (const auto& package :
         { openBytes (container), openBytes (makeCompressedContainer (content, sign (digestOf (content)))) })
    {
        ASSERT_TRUE (package.isOpen());
        EXPECT_EQ (package.getManifest().name, "Bank");
        EXPECT_EQ (package.readEntryText (1), "<Preset tags=\"Modulation:Slow\"/>");
    }
}

TEST (Package, WithoutAManifestThatCanBeReadIsOpenAndNameless)
{
    const std::vector<juce::String> manifests {
        "",
        "no XML",
        "<!DOCTYPE a [<!ENTITY b \"bbbbbbbb\"><!ENTITY c \"&b;&b;&b;&b;\">]><Package name=\"&c;\"/>",
        juce::String::repeatedString ("<a>", 200000),
    };

    for (const auto& manifest : manifests)
    {
        auto members = makeMembers();
        members[0].content = bytes (manifest);
        const auto package = openSigned (makeArchive (members));

        EXPECT_TRUE (package.isOpen()) << manifest.substring (0, 40);
        EXPECT_EQ (package.getManifest().name, "") << manifest.substring (0, 40);
        EXPECT_EQ (package.findEntry ("Slow.qvprs2"), 1);
    }
}

//==============================================================================
TEST (Package, AChangedBitAnywhereInTheContentLeavesNothingOpen)
{
    auto data = signArchive (makeArchive (makeMembers()));
    constexpr size_t start = 30 + 7; // the member's header, and its name
    const auto size = static_cast<size_t> (juce::ByteOrder::littleEndianInt (data.begin() + 18));
    ASSERT_GT (size, 300u);

    for (size_t bit = 0; bit < size * 8; ++bit)
    {
        auto& byte = data[start + bit / 8];
        const auto whole = byte;

        byte = static_cast<char> (byte ^ (1 << (bit % 8)));
        EXPECT_FALSE (openBytes (data).isOpen()) << bit;
        byte = whole;
    }

    EXPECT_TRUE (openBytes (data).isOpen());
}

TEST (Package, CutOffAtAnyByteOpensNothing)
{
    const auto data = signArchive (makeArchive (makeMembers()));

    for (size_t size = 0; size < data.getSize(); ++size)
        EXPECT_FALSE (openBytes ({ data.getData(), size }).isOpen()) << size;
}

TEST (Package, NeedsASignatureThatFits)
{
    const auto content = findContent ([] (const auto&) { return true; });
    const auto signature = sign (digestOf (content));
    const auto other =
        sign (digestOf (findContent ([&] (const auto& digest) { return digest != digestOf (content); })));

    const std::vector<std::pair<juce::String, bool>> hashes {
        { signature, true },
        { signature.toUpperCase(), true },
        { "\n " + signature + "\n", true },
        { "", false }, // no member at all
        { " ", false },
        { "0", false },
        { "-" + signature, false },
        { other, false },
        { digestOf (content), false },
        { signature + "0", false },
        { juce::String::repeatedString ("f", 100000), false },
    };

    for (const auto& [hash, opens] : hashes)
        EXPECT_EQ (openBytes (makeContainer (content, hash)).isOpen(), opens) << hash.substring (0, 80);
}

TEST (Package, ADigestThatBeginsWithZerosVerifies)
{
    const auto content = findContent ([] (const auto& digest) { return digest.startsWith ("0"); });

    EXPECT_TRUE (openBytes (makeContainer (content, sign (digestOf (content)))).isOpen());
}

TEST (Package, OneDigestIn361HasASignature)
{
    int numSigned = 0;

    for (int i = 0; i < 361 * 20; ++i)
    {
        const auto digest = digestOf (bytes (juce::String (i)));
        const auto signature = sign (digest);

        ASSERT_EQ (canSign (digest), signature.isNotEmpty());

        if (signature.isEmpty())
            continue;

        ++numSigned;
        EXPECT_EQ (PackageFile::digestOfSignature (signature), digest);
    }

    // 20 are expected, give or take 4.5.
    EXPECT_GT (numSigned, 2);
    EXPECT_LT (numSigned, 45);
}
