// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "browser/BrowserContent.h"

namespace K7R
{

/** An archive that is made of the files of items, for other machines. The files are gathered one by one; the archive is
    written when all are there, as a whole or not at all. */
class PackageExport
{
public:
    /** @param target a file that stands there goes when the archive is complete */
    explicit PackageExport (const juce::File& target);

    /** Takes an item's file; one that can't be read, or that no import would take, is left out. */
    void add (const ContentItem&);

    /** Writes what was taken.
        @returns whether it stands; nothing is written without a file */
    bool write();

    int getNumFiles() const noexcept { return numFiles; }
    const juce::File& getTarget() const noexcept { return target; }

private:
    const juce::File target;
    juce::ZipFile::Builder builder;
    juce::int64 numBytes = 0;
    int numFiles = 0;
};

} // namespace K7R
