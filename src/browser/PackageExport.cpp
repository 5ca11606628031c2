// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/PackageExport.h"

#include "browser/PackageImportExport.h"
#include "support/SafeFile.h"

namespace K7R
{

PackageExport::PackageExport (const juce::File& file) : target (file) {}

void PackageExport::add (const ContentItem& item)
{
    const auto& bounds = PackageImportExport::bounds;
    const auto file = item.source->getItemFile (item.name);
    juce::MemoryBlock bytes;

    if (numFiles == bounds.entries || ! readRegularFile (file, static_cast<size_t> (bounds.memberBytes), bytes))
        return;

    const auto size = static_cast<juce::int64> (bytes.getSize());

    if (numBytes + size > bounds.expandedBytes)
        return;

    builder.addEntry (new juce::MemoryInputStream (std::move (bytes)), 0,
                      file.getFileNameWithoutExtension() + item.source->getItemExtension(),
                      file.getLastModificationTime());
    numBytes += size;
    ++numFiles;
}

bool PackageExport::write()
{
    return numFiles > 0
           && replaceFileSafely (target, [this] (juce::OutputStream& stream)
                                 { return builder.writeToStream (stream, nullptr); });
}

} // namespace K7R
