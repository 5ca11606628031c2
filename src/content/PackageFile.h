// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_core/juce_core.h>

#include "support/BoundedZip.h"

namespace K7R
{

/** What a package says about itself. An attribute that is missing gives "" or 0. */
struct PackageManifest
{
    juce::String product;
    juce::String module;
    juce::String type;
    juce::String name;
    int revision = 0;
    juce::String author;
    juce::String organization;
    juce::int64 readTime = 0; // when it was read, in ms as juce::Time counts them
};

/** A preset package: a ZIP archive with the members "content", which is a ZIP archive itself, and "hash",
    the signature of "content". The inner archive holds the manifest "__desc__" and the presets.

    The signature finds damage and accidents. It keeps nobody out, so a package is taken for hostile even
    if it verifies: every size is bounded by the constants below, names are texts and never paths, and
    nothing is written anywhere.

    Opening reads the package once through MD5. Its members are then read from the file, which stays open for
    as long as the object lives; one member at a time is decompressed into memory.

    For the message thread.
*/
class PackageFile
{
public:
    /** Nothing is open. */
    PackageFile();

    /** Opens and verifies a package. If the file is missing, damaged, not signed or out of bounds, nothing is
        open; there's no message. */
    explicit PackageFile (const juce::File&);

    /** The same for a package that a stream holds, from its position 0 on. */
    explicit PackageFile (std::unique_ptr<juce::InputStream>);

    ~PackageFile();

    PackageFile (PackageFile&&) noexcept;
    PackageFile& operator= (PackageFile&&) noexcept;

    /** Whether the package was found and verified. If not, there are no entries and the manifest is empty. */
    bool isOpen() const noexcept { return inner != nullptr; }

    const PackageManifest& getManifest() const noexcept { return manifest; }

    /** The inner archive's entries, the manifest among them, in the archive's order. */
    int getNumEntries() const noexcept;

    /** The entry's name with folders and extension, see BoundedZip::getEntryName(); "" out of range. */
    juce::String getEntryName (int index) const;

    /** The first entry of this name, with regard to case, or -1. */
    int findEntry (const juce::String& name) const;

    /** An entry's content, decompressed. The stream may outlive the package.
        @returns null if the entry can't be read, see BoundedZip::openEntry() */
    std::unique_ptr<juce::InputStream> openEntry (int index) const;

    /** Whether an entry doesn't open because it claims more than maximumPackageMemberBytes. */
    bool isEntryTooLarge (int index) const;

    /** An entry's content as text: UTF-8, or what a byte order mark says; "" if it can't be read. */
    juce::String readEntryText (int index) const;

    /** The inner archive's member that holds the manifest. */
    static constexpr const char* manifestEntry = "__desc__";

    /** The outer archive's members. */
    static constexpr const char* contentEntry = "content";
    static constexpr const char* hashEntry = "hash";

    /** MD5 of a stream from its present position on, as signatures and comparisons take it: 32 digits in
        lower-case hexadecimal. */
    static juce::String computeDigest (juce::InputStream&);

    /** The digest that a signature stands for: a hexadecimal number, with zeros in front up to 32 digits.
        @returns "" for a text that is no signature */
    static juce::String digestOfSignature (const juce::String& hash);

private:
    void open (std::unique_ptr<juce::InputStream>);
    void readManifest();

    // The inner archive reads through a stream of the outer one, so it has to go first.
    std::unique_ptr<BoundedZip> outer;
    std::unique_ptr<BoundedZip> inner;
    PackageManifest manifest;
};

/** A bank of 96 presets is under 1 MiB; the whole package is read once when a plug-in starts. */
constexpr juce::int64 maximumPackageBytes = 64LL * 1024 * 1024;

/** A container has two members; some more may stand beside them. */
constexpr int maximumContainerEntries = 64;

/** Far beyond any bank, and few enough to be listed at once. */
constexpr int maximumPackageEntries = 16384;

/** A preset takes a few KiB. */
constexpr juce::int64 maximumPackageMemberBytes = 1024LL * 1024;

/** All members of a package, decompressed: listing reads each of them once. */
constexpr juce::int64 maximumPackageExpandedBytes = 128LL * 1024 * 1024;

/** "content" is meant to be stored. If it's compressed it is inflated once into memory, because each step
    back in it would inflate it again from the start; so it's kept well below what a file may have. */
constexpr juce::int64 maximumInflatedContentBytes = 16LL * 1024 * 1024;

/** A signature has 64 digits; numbers of any length would take time by the square of their length. */
constexpr juce::int64 maximumHashBytes = 1024;

} // namespace K7R
