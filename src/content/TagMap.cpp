// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/TagMap.h"

namespace K7R
{

namespace
{

int positionOf (int categoryId)
{
    return categoryId / TagMap::idsPerCategory - 1;
}

} // namespace

TagMap::Category* TagMap::findOrAdd (const juce::String& category)
{
    const auto number = static_cast<int> (categories.size()) + 1;

    if (const auto found = categories.find (category); found != categories.end())
        return &found->second;

    if (number > maximumCategories)
        return nullptr;

    all.appendCategory (category);
    return &categories.emplace (category, Category { number * idsPerCategory, {} }).first->second;
}

void TagMap::merge (const TagSet& set)
{
    for (const auto& [name, tags] : set.getCategories())
    {
        auto* category = findOrAdd (name);

        if (category == nullptr)
            continue;

        for (const auto& tag : tags)
        {
            const auto number = static_cast<int> (category->tagIds.size()) + 1;

            if (number < idsPerCategory && numTags < maximumTags
                && category->tagIds.emplace (tag, category->id + number).second)
            {
                all.appendTag (static_cast<size_t> (positionOf (category->id)), tag);
                ++numTags;
            }
        }
    }
}

int TagMap::getId (const juce::String& category, const juce::String& tag) const
{
    const auto found = categories.find (category);

    if (found == categories.end())
        return unknownId;

    if (tag.isEmpty())
        return found->second.id;

    const auto& ids = found->second.tagIds;
    const auto id = ids.find (tag);
    return id != ids.end() ? id->second : unknownId;
}

juce::String TagMap::getCategoryName (int id) const
{
    return getNames (id).category;
}

TagMap::Names TagMap::getNames (int id) const
{
    const auto position = positionOf (id);
    const auto& list = all.getCategories();

    if (! juce::isPositiveAndBelow (position, static_cast<int> (list.size())))
        return { -1, {}, {} };

    const auto& category = list[static_cast<size_t> (position)];
    const auto tag = id % idsPerCategory - 1;
    return tag < category.tags.size() ? Names { id, category.name, category.tags[tag] } : Names { -1, {}, {} };
}

} // namespace K7R
