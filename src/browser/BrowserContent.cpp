// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/BrowserContent.h"

#include <algorithm>

namespace quilvane
{

namespace
{

bool comesBefore (const ContentItem* a, const ContentItem* b)
{
    return a->name.compareNatural (b->name) < 0;
}

} // namespace

BrowserContent::~BrowserContent()
{
    for (auto* source : sources)
        source->setTagMap (nullptr);
}

bool BrowserContent::addSource (ContentSource* source)
{
    if (source == nullptr || std::find (sources.begin(), sources.end(), source) != sources.end())
        return false;

    source->setTagMap (&tagMap);
    source->reload();
    sources.push_back (source);
    return true;
}

void BrowserContent::rebuild (ContentSource* only)
{
    items.clear();

    const auto anySelected =
        std::any_of (sources.begin(), sources.end(), [] (const auto* source) { return source->selected; });

    for (auto* source : sources)
    {
        const auto shown = source->selected || ! anySelected;

        if (shown == source->enabled)
            continue;

        source->enabled = shown;

        if (shown)
            source->reload();
        else
            source->clear();
    }

    collect (only);
}

void BrowserContent::collect (ContentSource* only)
{
    TagSet found;
    items.clear();

    for (auto* source : sources)
    {
        if (! source->enabled || (only != nullptr && source != only))
            continue;

        found.merge (source->getTags());

        for (const auto& item : source->getItems())
            items.push_back (item.get());
    }

    tags = inFixedOrder (found);
    std::stable_sort (items.begin(), items.end(), comesBefore);
}

TagSet BrowserContent::inFixedOrder (const TagSet& set) const
{
    TagSet result;

    for (const auto& name : categories)
        for (const auto& category : set.getCategories())
            if (category.name == name)
                for (const auto& tag : category.tags)
                    result.add (name, tag);

    result.merge (set);
    return result;
}

TagSet BrowserContent::getVocabulary() const
{
    TagSet all;

    for (const auto* source : sources)
        all.merge (source->getTags());

    TagSet result;

    for (const auto& name : categories)
        result.addCategory (name);

    const auto ordered = inFixedOrder (all);

    for (const auto& category : ordered.getCategories())
    {
        auto sorted = category.tags;
        sorted.sortNatural();
        result.addCategory (category.name);

        for (const auto& tag : sorted)
            result.add (category.name, tag);
    }

    return result;
}

void BrowserContent::insert (ContentItem& item)
{
    items.insert (std::upper_bound (items.begin(), items.end(), &item, comesBefore), &item);
}

void BrowserContent::remove (const ContentItem& item)
{
    items.erase (std::remove (items.begin(), items.end(), &item), items.end());
}

ContentItem* BrowserContent::find (const Key& key) const
{
    if (key.source == nullptr)
        return nullptr;

    auto* item = key.source->findItem (key.name);
    return item != nullptr && item->name == key.name && std::find (items.begin(), items.end(), item) != items.end()
               ? item
               : nullptr;
}

} // namespace quilvane
