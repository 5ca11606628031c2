// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "content/ContentSource.h"

namespace K7R
{

/** The outcome of an import, in numbers of the archive's items. */
struct ImportCounts
{
    int imported = 0; // new ones, and those that replaced others
    int renamed = 0;  // of these, under another name than in the archive
    int skipped = 0;  // because of their names
    int failed = 0;   // that couldn't be read or written
};

/** The browser's messages and questions; each question names what would be lost. */
namespace BrowserTexts
{

juce::String askToOverwrite (const juce::String& itemName);

/** Names the items where they are few, or else some of them and their number. */
juce::String askToDelete (const std::vector<ContentItem*>&);

/** Says why an item can't have a name. */
juce::String refuseName (const juce::String& name, const ContentPlacement&);

/** Reports a task that was stopped.
    @param what was done to the items */
juce::String reportStopped (const juce::String& what, int numDone, int number);

juce::String reportFailedTags (int numItems);
juce::String reportImport (const ImportCounts&, bool wasStopped);

} // namespace BrowserTexts

} // namespace K7R
