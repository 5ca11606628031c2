// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/PackageFile.h"

#include <juce_cryptography/juce_cryptography.h>

#include "support/BoundedXml.h"

namespace K7R
{

namespace
{

/** What all packages are verified with: the public exponent and the modulus, in hexadecimal. */
constexpr const char* packageKey = "13,5d2c8e4fa07b93c1e6d4f8b2a17c05e9d3b6f4028ce17a96b05d8f3ce2a4917b";

constexpr int digestDigits = 32;
constexpr int hashReadBuffer = 65536; // bytes; MD5 asks for 512 at a time

constexpr ZipBounds containerBounds { maximumPackageBytes, maximumContainerEntries, maximumPackageBytes,
                                      maximumPackageBytes };

constexpr ZipBounds contentBounds { maximumPackageBytes, maximumPackageEntries, maximumPackageMemberBytes,
                                    maximumPackageExpandedBytes };

juce::String readText (std::unique_ptr<juce::InputStream> stream)
{
    return stream != nullptr ? stream->readEntireStreamAsString() : juce::String();
}

std::unique_ptr<juce::InputStream> openContent (BoundedZip& container)
{
    const auto index = container.findEntry (PackageFile::contentEntry);

    if (auto stored = container.openStoredEntry (index))
        return stored;

    return container.openEntry (index, maximumInflatedContentBytes);
}

} // namespace

//==============================================================================
PackageFile::PackageFile() = default;

PackageFile::PackageFile (const juce::File& file)
{
    // Devices and pipes, which could block, have no size.
    if (! file.existsAsFile() || file.getSize() == 0)
        return;

    auto stream = std::make_unique<juce::FileInputStream> (file);

    if (stream->openedOk())
        open (std::move (stream));
}

PackageFile::PackageFile (std::unique_ptr<juce::InputStream> stream)
{
    open (std::move (stream));
}

PackageFile::~PackageFile() = default;
PackageFile::PackageFile (PackageFile&&) noexcept = default;

PackageFile& PackageFile::operator= (PackageFile&& other) noexcept
{
    inner = std::move (other.inner);
    outer = std::move (other.outer);
    manifest = std::move (other.manifest);
    return *this;
}

void PackageFile::open (std::unique_ptr<juce::InputStream> stream)
{
    outer = BoundedZip::open (std::move (stream), containerBounds);

    if (outer == nullptr)
        return;

    const auto hash = readText (outer->openEntry (outer->findEntry (hashEntry), maximumHashBytes));
    const auto expected = digestOfSignature (hash);

    // Without a digest to compare with, the content needn't be read.
    if (expected.isNotEmpty())
        if (auto content = openContent (*outer); content != nullptr && computeDigest (*content) == expected)
            inner = BoundedZip::open (std::move (content), contentBounds);

    if (inner != nullptr)
        readManifest();
    else
        outer.reset();
}

void PackageFile::readManifest()
{
    const auto xml = parseBoundedXml (readEntryText (findEntry (manifestEntry)));
    manifest.readTime = juce::Time::currentTimeMillis();

    if (xml == nullptr)
        return;

    manifest.product = xml->getStringAttribute ("product");
    manifest.module = xml->getStringAttribute ("module");
    manifest.type = xml->getStringAttribute ("type");
    manifest.name = xml->getStringAttribute ("name");
    manifest.revision = xml->getIntAttribute ("revision");
    manifest.author = xml->getStringAttribute ("author");
    manifest.organization = xml->getStringAttribute ("organization");
}

//==============================================================================
int PackageFile::getNumEntries() const noexcept
{
    return isOpen() ? inner->getNumEntries() : 0;
}

juce::String PackageFile::getEntryName (int index) const
{
    return isOpen() ? inner->getEntryName (index) : juce::String();
}

int PackageFile::findEntry (const juce::String& name) const
{
    return isOpen() ? inner->findEntry (name) : -1;
}

std::unique_ptr<juce::InputStream> PackageFile::openEntry (int index) const
{
    return isOpen() ? inner->openEntry (index, maximumPackageMemberBytes) : nullptr;
}

bool PackageFile::isEntryTooLarge (int index) const
{
    return isOpen() && inner->getEntryBytes (index) > maximumPackageMemberBytes;
}

juce::String PackageFile::readEntryText (int index) const
{
    return readText (openEntry (index));
}

//==============================================================================
juce::String PackageFile::computeDigest (juce::InputStream& stream)
{
    juce::BufferedInputStream buffered (stream, hashReadBuffer);
    return juce::MD5 (buffered).toHexString();
}

juce::String PackageFile::digestOfSignature (const juce::String& hash)
{
    juce::BigInteger value;
    value.parseString (hash, 16);

    // The key can't be applied to anything else.
    if (value.isZero() || value.isNegative() || ! juce::RSAKey (packageKey).applyToValue (value))
        return {};

    return value.toString (16, digestDigits);
}

} // namespace K7R
