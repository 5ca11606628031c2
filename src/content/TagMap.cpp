// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/TagMap.h"

namespace quilvane
{

namespace
{

juce::String keyOf (const juce::String& category, const juce::String& tag)
{
    return tag.isEmpty() ? category : category + ":" + tag;
}

} // namespace

void TagMap::merge (const TagSet& set)
{
    all.merge (set);
    int categoryId = 0;

    for (const auto& category : all.getCategories())
    {
        categoryId += idsPerCategory;
        store (category.name, categoryId);
        int id = categoryId;

        for (const auto& tag : category.tags)
            store (keyOf (category.name, tag), ++id);
    }
}

void TagMap::store (const juce::String& key, int id)
{
    if (ids.count (key) != 0 || keys.count (id) != 0)
        return;

    ids.emplace (key, id);
    keys.emplace (id, key);
}

int TagMap::getId (const juce::String& category, const juce::String& tag) const
{
    const auto found = ids.find (keyOf (category, tag));
    return found != ids.end() ? found->second : unknownId;
}

juce::String TagMap::getCategoryName (int id) const
{
    return getNames (id).category;
}

TagMap::Names TagMap::getNames (int id) const
{
    const auto found = keys.find (id);

    if (found == keys.end())
        return { -1, {}, {} };

    const auto& key = found->second;
    const auto colon = key.indexOfChar (':');

    return { id, colon >= 0 ? key.substring (0, colon) : key, colon >= 0 ? key.substring (colon + 1) : juce::String() };
}

} // namespace quilvane
