// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "browser/BrowserContent.h"

namespace K7R
{

/** The shown items in their order, with the rules of selecting them. */
class ResultList
{
public:
    enum class How
    {
        single, // this one alone
        toggle, // this one more, or less; the last one stays
        range,  // from the anchor to this one; this one alone if there is no anchor
    };

    struct Result
    {
        ContentItem* item;
        bool isSelected;
    };

    /** Takes other items. Those that were selected, and the current one, are so again if they're among them. */
    void setItems (const std::vector<ContentItem*>&);

    /** Forgets the items, but not which were selected: items that are gone aren't touched again. */
    void releaseItems();

    const std::vector<Result>& getResults() const noexcept { return results; }
    int size() const noexcept { return static_cast<int> (results.size()); }

    /** The position of an item, or -1. */
    int indexOf (const ContentItem*) const;

    /** An index out of range does nothing. */
    void select (int index, How);
    void selectAll();

    /** Selects these, as far as they're there, and no others; the last one becomes the current. */
    void selectKeys (const std::vector<BrowserContent::Key>&);

    /** Nothing is selected or current after this. */
    void clearSelection();

    int getNumSelected() const noexcept { return numSelected; }
    std::vector<ContentItem*> getSelectedItems() const;

    /** The item that was last chosen; null for none. */
    ContentItem* getCurrentItem() const;
    int getCurrentIndex() const noexcept { return current; }

    /** Where a step of so many places leads: from the current item, not beyond the ends; to the first one if there is
        no current. -1 in an empty list. */
    int getStep (int distance) const;

    /** Off: whatever is asked for selects one alone. */
    bool multiSelect = false;

private:
    void setRange (int from, int to, bool isSelected);
    void untickAll();

    std::vector<Result> results;
    std::vector<BrowserContent::Key> releasedSelection;
    BrowserContent::Key releasedCurrent;
    int current = -1;
    int numSelected = 0;
    int anchor = -1, rangeEnd = -1;
};

} // namespace K7R
