// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "browser/BrowserContent.h"

namespace K7R
{

/** The tags of one category that are offered, and those that are ticked. */
struct CategoryFilter
{
    juce::String category;
    int firstTagId = 0, lastTagId = 0; // of the category's tags
    std::vector<int> available;        // the ids of those that are offered, in ascending order
    juce::StringArray selected;
    bool needsAll = false; // an item needs all that are ticked, not just one
};

/** Hides items by their tags: categories one after the other, each among the items that those before it have left. So
    their order matters. */
class CategoryFilters
{
public:
    explicit CategoryFilters (const BrowserContent& theContent) : content (theContent) {}

    /** Makes a filter for each category of the content, those that were there in their order, and none of them with
        anything ticked; then applies them. */
    void rebuild();

    /** The same, with what is ticked. */
    void refresh() { restore (filters); }

    /** Goes back to the order and the ticks that there were, as far as the content has them still. */
    void restore (std::vector<CategoryFilter>);

    /** Sets what is hidden, and what each category offers. A ticked tag that isn't offered any more is unticked. */
    void apply();

    const std::vector<CategoryFilter>& getFilters() const noexcept { return filters; }

    /** The tags that a filter offers, sorted. */
    juce::StringArray getOffered (const CategoryFilter&) const;

    // Each applies all anew. A category that there isn't any more is passed over.
    void setSelected (const juce::String& category, const juce::String& tag, bool isSelected);
    void setNeedsAll (const juce::String& category, bool);
    void move (const juce::String& category, int distance);
    void setEnabled (bool);
    void clearSelection();

    bool isEnabled() const noexcept { return enabled; }
    bool hasSelection() const;

private:
    CategoryFilter* find (const juce::String& category);
    /** Returns the ids of the tags of all items that aren't hidden, in ascending order. */
    std::vector<int> collectIds() const;

    void offer (CategoryFilter&, const std::vector<int>& ids) const;
    void hide (const CategoryFilter&) const;

    const BrowserContent& content;
    std::vector<CategoryFilter> filters;
    bool enabled = true;
};

} // namespace K7R
