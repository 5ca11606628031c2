// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/rules/CategoryFilters.h"

#include <algorithm>
#include <set>

namespace K7R
{

void CategoryFilters::rebuild()
{
    for (auto& filter : filters)
    {
        filter.selected.clear();
        filter.needsAll = false;
    }

    refresh();
}

void CategoryFilters::restore (std::vector<CategoryFilter> before)
{
    std::set<juce::String> wanted;
    filters.clear();

    for (const auto& category : content.getTags().getCategories())
        wanted.insert (category.name);

    for (auto& filter : before)
        if (wanted.erase (filter.category) != 0)
            filters.push_back (std::move (filter));

    for (const auto& category : content.getTags().getCategories())
        if (wanted.erase (category.name) != 0)
        {
            CategoryFilter filter;
            filter.category = category.name;
            const auto id = content.getTagMap().getId (category.name, {});
            filter.firstTagId = id + 1;
            filter.lastTagId = id + TagMap::idsPerCategory - 1;
            filters.push_back (std::move (filter));
        }

    apply();
}

void CategoryFilters::apply()
{
    for (auto* item : content.getItems())
        item->hidden = false;

    auto ids = collectIds();

    for (auto& filter : filters)
    {
        offer (filter, ids);

        if (enabled && ! filter.selected.isEmpty())
        {
            hide (filter);
            ids = collectIds();
        }
    }
}

std::vector<int> CategoryFilters::collectIds() const
{
    std::vector<bool> isThere;

    for (const auto* item : content.getItems())
        if (! item->hidden)
            for (const auto id : item->tagIds)
            {
                if (static_cast<size_t> (id) >= isThere.size())
                    isThere.resize (static_cast<size_t> (id) + 1);

                isThere[static_cast<size_t> (id)] = true;
            }

    std::vector<int> ids;

    for (size_t id = 0; id < isThere.size(); ++id)
        if (isThere[id])
            ids.push_back (static_cast<int> (id));

    return ids;
}

void CategoryFilters::offer (CategoryFilter& filter, const std::vector<int>& ids) const
{
    filter.available.assign (std::lower_bound (ids.begin(), ids.end(), filter.firstTagId),
                             std::upper_bound (ids.begin(), ids.end(), filter.lastTagId));

    for (int i = filter.selected.size(); --i >= 0;)
        if (const auto id = content.getTagMap().getId (filter.category, filter.selected[i]);
            ! std::binary_search (filter.available.begin(), filter.available.end(), id))
            filter.selected.remove (i);
}

juce::StringArray CategoryFilters::getOffered (const CategoryFilter& filter) const
{
    juce::StringArray tags;

    for (const auto id : filter.available)
        tags.add (content.getTagMap().getNames (id).tag);

    tags.sortNatural();
    return tags;
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

} // namespace K7R
