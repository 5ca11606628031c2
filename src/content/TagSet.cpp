// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/TagSet.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace K7R
{

TagSet TagSet::fromText (const juce::String& text)
{
    TagSet result;
    std::unordered_map<juce::String, size_t> positions;
    std::set<std::pair<size_t, juce::String>> known; // because texts can be long

    for (const auto& part : juce::StringArray::fromTokens (text, ";", ""))
    {
        const auto colon = part.indexOfChar (':');

        if (part.isEmpty())
            continue;

        if (result.categories.size() >= static_cast<size_t> (maximumCategories))
            break;

        const auto name = colon >= 0 ? part.substring (0, colon) : part;
        const auto [found, isNew] = positions.emplace (name, result.categories.size());
        const auto position = found->second;

        if (isNew)
            result.appendCategory (name);

        if (colon < 0)
            continue;

        for (const auto& tag : juce::StringArray::fromTokens (part.substring (colon + 1), "|", ""))
            if (tag.isNotEmpty() && known.size() < static_cast<size_t> (maximumTags)
                && result.categories[position].tags.size() < maximumTagsPerCategory
                && known.emplace (position, tag).second)
                result.appendTag (position, tag);
    }

    return result;
}

juce::String TagSet::toText() const
{
    juce::StringArray parts;

    for (const auto& category : categories)
        parts.add (category.name + ":" + category.tags.joinIntoString ("|"));

    return parts.joinIntoString (";");
}

const TagSet::Category* TagSet::find (const juce::String& name) const
{
    const auto found =
        std::find_if (categories.begin(), categories.end(), [&] (const Category& c) { return c.name == name; });
    return found != categories.end() ? &*found : nullptr;
}

TagSet::Category& TagSet::findOrAdd (const juce::String& name)
{
    for (auto& category : categories)
        if (category.name == name)
            return category;

    categories.push_back ({ name, {} });
    return categories.back();
}

bool TagSet::contains (const juce::String& category, const juce::String& tag) const
{
    const auto* found = find (category);
    return found != nullptr && found->tags.contains (tag);
}

void TagSet::add (const juce::String& category, const juce::String& tag)
{
    findOrAdd (category).tags.addIfNotAlreadyThere (tag);
}

TagSet TagSet::withoutEmptyCategories() const
{
    auto result = *this;
    auto& list = result.categories;
    list.erase (std::remove_if (list.begin(), list.end(), [] (const Category& c) { return c.tags.isEmpty(); }),
                list.end());
    return result;
}

void TagSet::remove (const juce::String& category, const juce::String& tag)
{
    for (auto& c : categories)
        if (c.name == category)
            c.tags.removeString (tag);
}

void TagSet::merge (const TagSet& other)
{
    for (const auto& category : other.categories)
    {
        auto& mine = findOrAdd (category.name);

        for (const auto& tag : category.tags)
            mine.tags.addIfNotAlreadyThere (tag);
    }
}

TagSet TagSet::getSubset (int categoryPosition) const
{
    TagSet result;

    if (juce::isPositiveAndBelow (categoryPosition, static_cast<int> (categories.size())))
        result.categories.push_back (categories[static_cast<size_t> (categoryPosition)]);

    return result;
}

//==============================================================================
TagSet TagBudget::take (const TagSet& tags)
{
    size_t needed = 0;

    for (const auto& category : tags.getCategories())
        needed += 1 + static_cast<size_t> (category.tags.size());

    if (needed > room)
    {
        room = 0;
        return {};
    }

    room -= needed;
    return tags;
}

} // namespace K7R
