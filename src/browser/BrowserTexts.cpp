// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/BrowserTexts.h"

#include "widgets/windows/AlertWindow.h"

namespace K7R
{

namespace
{

constexpr size_t mostNamesAsked = 3;

juce::String quoted (const juce::String& name)
{
    return "'" + AlertWindow::shorten (name) + "'";
}

juce::String numberOf (int number, const juce::String& thing)
{
    return juce::String (number) + " " + thing + (number == 1 ? "" : "s");
}

} // namespace

juce::String BrowserTexts::askToOverwrite (const juce::String& itemName)
{
    return quoted (itemName) + " already exists.\nDo you want to overwrite it?";
}

juce::String BrowserTexts::askToDelete (const std::vector<ContentItem*>& items)
{
    juce::StringArray names;

    for (size_t i = 0; i < juce::jmin (items.size(), mostNamesAsked); ++i)
        names.add (quoted (items[i]->name));

    if (const auto others = static_cast<int> (items.size() - static_cast<size_t> (names.size())); others > 0)
        names.add (juce::String (others) + " more");

    const auto last = names.strings.removeAndReturn (names.size() - 1);
    const auto list = names.isEmpty() ? last : names.joinIntoString (", ") + " and " + last;

    return "Do you want to delete " + numberOf (static_cast<int> (items.size()), "preset") + "?\n" + list;
}

juce::String BrowserTexts::refuseName (const juce::String& name, const ContentPlacement& placement)
{
    using Kind = ContentPlacement::Kind;

    if (placement.kind == Kind::sameItem)
        return quoted (placement.name) + " already exists.";

    if (placement.kind == Kind::otherItem)
        return quoted (name) + " would take the file of " + quoted (placement.name) + ":\n"
               + (name.containsChar ('.') ? "what follows the last point of a name isn't kept."
                                          : "some of its characters can't stand in the name of a file.");

    return quoted (name) + " can't be the name of a file.";
}

juce::String BrowserTexts::reportFailedTags (int numItems)
{
    return "The tags of " + numberOf (numItems, "preset") + " couldn't be written";
}

juce::String BrowserTexts::reportStopped (const juce::String& what, int numDone, int number)
{
    return "Stopped: " + juce::String (numDone) + " of " + numberOf (number, "preset") + " " + what;
}

juce::String BrowserTexts::reportImport (const ImportCounts& counts, bool wasStopped)
{
    auto text = (wasStopped ? "Import stopped: " : "") + numberOf (counts.imported, "preset") + " imported";

    for (const auto& [number, what] : { std::pair { counts.renamed, " of them renamed" },
                                        { counts.skipped, " skipped" },
                                        { counts.failed, " failed" } })
        if (number > 0)
            text << ", " << number << what;

    return text;
}

} // namespace K7R
