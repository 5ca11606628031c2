// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/CategoryFilters.h"

#include <algorithm>
#include <set>

namespace quilvane
{

void CategoryFilters::rebuild()
{
    std::vector<juce::String> names;
    const auto& categories = content.getTags().getCategories();
    const auto isThere = [&] (const juce::String& name)
    { return std::any_of (categories.begin(), categories.end(), [&] (const auto& c) { return c.name == name; }); };

    for (const auto& filter : filters)
        if (isThere (filter.category))
            names.push_back (filter.category);

    for (const auto& category : categories)
        if (std::find (names.begin(), names.end(), category.name) == names.end())
            names.push_back (category.name);

    filters.clear();

    for (const auto& name : names)
    {
        CategoryFilter filter;
        filter.category = name;
        const auto id = content.getTagMap().getId (name, {});
        filter.firstTagId = id + 1;
        filter.lastTagId = id + TagMap::idsPerCategory - 1;
        filters.push_back (std::move (filter));
    }

    apply();
}

void CategoryFilters::refresh()
{
    const auto& categories = content.getTags().getCategories();
    const auto isSame = categories.size() == filters.size()
                        && std::all_of (categories.begin(), categories.end(),
                                        [this] (const auto& c) { return find (c.name) != nullptr; });

    if (isSame)
        apply();
    else
        rebuild();
}

void CategoryFilters::apply()
{
    for (auto* item : content.getItems())
        item->hidden = false;

    for (auto& filter : filters)
    {
        offer (filter);

        if (enabled && ! filter.selected.isEmpty())
            hide (filter);
    }
}

void CategoryFilters::offer (CategoryFilter& filter) const
{
    std::set<int> ids;

    for (const auto* item : content.getItems())
        if (! item->hidden)
            for (const auto id : item->tagIds)
                if (id >= filter.firstTagId && id <= filter.lastTagId)
                    ids.insert (id);

    filter.available.clear();

    for (const auto id : ids)
        filter.available.add (content.getTagMap().getNames (id).tag);

    filter.available.sortNatural();

    for (int i = filter.selected.size(); --i >= 0;)
        if (! filter.available.contains (filter.selected[i]))
            filter.selected.remove (i);
}

void CategoryFilters::hide (const CategoryFilter& filter) const
{
    std::vector<int> wanted;

    for (const auto& tag : filter.selected)
        wanted.push_back (content.getTagMap().getId (filter.category, tag));

    for (auto* item : content.getItems())
    {
        if (item->hidden)
            continue;

        const auto has = [&] (int id)
        { return std::find (item->tagIds.begin(), item->tagIds.end(), id) != item->tagIds.end(); };

        item->hidden = ! (filter.needsAll ? std::all_of (wanted.begin(), wanted.end(), has)
                                          : std::any_of (wanted.begin(), wanted.end(), has));
    }
}

//==============================================================================
CategoryFilter* CategoryFilters::find (const juce::String& category)
{
    const auto found =
        std::find_if (filters.begin(), filters.end(), [&] (const auto& filter) { return filter.category == category; });
    return found != filters.end() ? &*found : nullptr;
}

void CategoryFilters::setSelected (const juce::String& category, const juce::String& tag, bool isSelected)
{
    auto* filter = find (category);

    if (filter == nullptr)
        return;

    if (isSelected)
        filter->selected.addIfNotAlreadyThere (tag);
    else
        filter->selected.removeString (tag);

    apply();
}

void CategoryFilters::setNeedsAll (const juce::String& category, bool needsAll)
{
    if (auto* filter = find (category))
        filter->needsAll = needsAll;

    apply();
}

void CategoryFilters::move (const juce::String& category, int distance)
{
    const auto* filter = find (category);
    const auto index = filter != nullptr ? static_cast<int> (filter - filters.data()) : -1;
    const auto target = index + distance;

    if (index < 0 || ! juce::isPositiveAndBelow (target, static_cast<int> (filters.size())))
        return;

    std::swap (filters[static_cast<size_t> (index)], filters[static_cast<size_t> (target)]);
    apply();
}

void CategoryFilters::setEnabled (bool shouldBeEnabled)
{
    enabled = shouldBeEnabled;
    apply();
}

void CategoryFilters::clearSelection()
{
    for (auto& filter : filters)
        filter.selected.clear();

    apply();
}

bool CategoryFilters::hasSelection() const
{
    return std::any_of (filters.begin(), filters.end(), [] (const auto& f) { return ! f.selected.isEmpty(); });
}

} // namespace quilvane
