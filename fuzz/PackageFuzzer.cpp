// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the bytes as a package, and once more as the inner archive of one: no fuzzer finds signatures, but
// anyone can make them.

#include <cstdlib>

#include "content/PackageFile.h"
#include "support/BoundedXml.h"

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

namespace
{

using namespace K7R;

// Small, so that inputs of a fuzzer's length reach them.
constexpr ZipBounds bounds { 65536, 64, 16384, 65536 };

std::unique_ptr<juce::InputStream> makeStream (const uint8_t* data, size_t size)
{
    return std::make_unique<juce::MemoryInputStream> (data, size, false);
}

void require (bool condition)
{
    if (! condition)
        std::abort();
}

void readPackage (const PackageFile& package)
{
    require (package.isOpen() || package.getNumEntries() == 0);

    for (int i = -1; i <= package.getNumEntries(); ++i)
        parseBoundedXml (package.readEntryText (i));
}

void readArchive (BoundedZip& archive)
{
    juce::int64 total = 0;

    require (archive.getNumEntries() <= bounds.entries);

    for (int i = -1; i <= archive.getNumEntries(); ++i)
    {
        const auto name = archive.getEntryName (i);
        require (name.getNumBytesAsUTF8() <= static_cast<size_t> (maximumZipNameBytes));
        require (name.isEmpty() || archive.findEntry (name) <= i);

        if (const auto stream = archive.openEntry (i, bounds.memberBytes))
        {
            total += stream->getTotalLength();
            parseBoundedXml (stream->readEntireStreamAsString());
        }

        if (const auto stream = archive.openStoredEntry (i))
            PackageFile::computeDigest (*stream);
    }

    require (total <= bounds.expandedBytes);
}

} // namespace

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    readPackage (PackageFile (makeStream (data, size)));

    if (const auto archive = BoundedZip::open (makeStream (data, size), bounds))
        readArchive (*archive);

    return 0;
}
