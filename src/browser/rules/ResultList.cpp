// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/rules/ResultList.h"

#include <algorithm>
#include <set>

namespace K7R
{

void ResultList::releaseItems()
{
    if (results.empty())
        return;

    releasedSelection.clear();

    for (const auto& result : results)
        if (result.isSelected)
            releasedSelection.push_back (BrowserContent::keyOf (result.item));

    releasedCurrent = BrowserContent::keyOf (getCurrentItem());
    results.clear();
    current = anchor = rangeEnd = -1;
    numSelected = 0;
}

void ResultList::setItems (const std::vector<ContentItem*>& items)
{
    releaseItems();
    results.reserve (items.size());

    std::set<std::pair<const ContentSource*, juce::String>> wanted;

    for (const auto& key : releasedSelection)
        wanted.emplace (key.source, key.name);

    for (auto* item : items)
    {
        const auto isSelected = wanted.count ({ item->source, item->name }) != 0;

        if (BrowserContent::keyOf (item) == releasedCurrent)
            current = anchor = size();

        numSelected += isSelected ? 1 : 0;
        results.push_back ({ item, isSelected });
    }

    if (results.empty())
        return;

    releasedSelection.clear();
    releasedCurrent = {};
}

int ResultList::indexOf (const ContentItem* item) const
{
    const auto found =
        std::find_if (results.begin(), results.end(), [&] (const auto& result) { return result.item == item; });
    return found != results.end() ? static_cast<int> (found - results.begin()) : -1;
}

void ResultList::setRange (int from, int to, bool isSelected)
{
    for (auto i = std::min (from, to); i <= std::max (from, to); ++i)
    {
        auto& result = results[static_cast<size_t> (i)];
        numSelected += (isSelected ? 1 : 0) - (result.isSelected ? 1 : 0);
        result.isSelected = isSelected;
    }
}

void ResultList::untickAll()
{
    for (auto& result : results)
        result.isSelected = false;

    numSelected = 0;
}

void ResultList::select (int index, How how)
{
    if (! juce::isPositiveAndBelow (index, size()))
        return;

    // Without an anchor there's no range yet.
    if (! multiSelect || (how == How::range && anchor < 0))
        how = How::single;

    if (how == How::range)
    {
        if (rangeEnd < 0)
            untickAll();
        else
            setRange (anchor, rangeEnd, false);

        setRange (anchor, index, true);
        rangeEnd = index;
    }
    else
    {
        const auto isSelected = results[static_cast<size_t> (index)].isSelected;

        if (how == How::single)
        {
            untickAll();
            setRange (index, index, true);
        }
        else if (! isSelected || numSelected > 1)
            setRange (index, index, ! isSelected);

        anchor = index;
        rangeEnd = -1;
    }

    current = index;
}

void ResultList::selectAll()
{
    if (multiSelect && ! results.empty())
        setRange (size() - 1, 0, true);
}

void ResultList::selectKeys (const std::vector<BrowserContent::Key>& keys)
{
    clearSelection();

    if (keys.empty())
        return;

    // The same way as over a rebuild.
    releasedSelection = keys;
    releasedCurrent = keys.back();

    std::vector<ContentItem*> items;

    for (const auto& result : results)
        items.push_back (result.item);

    results.clear();
    setItems (items);
}

void ResultList::clearSelection()
{
    untickAll();
    current = anchor = rangeEnd = -1;
    releasedSelection.clear();
    releasedCurrent = {};
}

std::vector<ContentItem*> ResultList::getSelectedItems() const
{
    std::vector<ContentItem*> selected;

    for (const auto& result : results)
        if (result.isSelected)
            selected.push_back (result.item);

    return selected;
}

ContentItem* ResultList::getCurrentItem() const
{
    return juce::isPositiveAndBelow (current, size()) ? results[static_cast<size_t> (current)].item : nullptr;
}

int ResultList::getStep (int distance) const
{
    if (results.empty())
        return -1;

    return current < 0 ? 0 : juce::jlimit (0, size() - 1, current + distance);
}

} // namespace K7R
