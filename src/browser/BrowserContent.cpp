// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/BrowserContent.h"

#include <algorithm>

namespace K7R
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

bool BrowserContent::isAnySelected() const
{
    return std::any_of (sources.begin(), sources.end(), [] (const auto* source) { return source->selected; });
}

void BrowserContent::showSource (ContentSource& source)
{
    source.selected = source.selected || isAnySelected();
}

void BrowserContent::rebuild (ContentSource* only)
{
    items.clear();

    const auto anySelected = isAnySelected();

    for (auto* source : sources)
    {
        const auto shown = source->selected || ! anySelected;

        if (shown == source->enabled && ! (shown && source->isStale()))
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
    TagMap found;
    items.clear();

    for (auto* source : sources)
    {
        if (! source->enabled || (only != nullptr && source != only))
            continue;

        found.merge (source->getTags());

        for (const auto& item : source->getItems())
            items.push_back (item.get());
    }

    tags = inFixedOrder (found.getAll());
    std::stable_sort (items.begin(), items.end(), comesBefore);
}

bool BrowserContent::isStale() const
{
    return std::any_of (sources.begin(), sources.end(),
                        [] (const auto* source) { return source->enabled && source->isStale(); });
}

TagSet BrowserContent::inFixedOrder (const TagSet& set) const
{
    const auto& list = set.getCategories();
    TagMap result;

    for (const auto& name : categories)
        for (size_t i = 0; i < list.size(); ++i)
            if (list[i].name == name)
                result.merge (set.getSubset (static_cast<int> (i)));

    result.merge (set);
    return result.getAll();
}

TagSet BrowserContent::getVocabulary() const
{
    TagMap all, result;

    for (const auto* source : sources)
        all.merge (source->getTags());

    TagSet fixed, sorted;

    for (const auto& name : categories)
        fixed.addCategory (name);

    const auto ordered = inFixedOrder (all.getAll());

    for (const auto& category : ordered.getCategories())
    {
        auto tagsOfIt = category.tags;
        tagsOfIt.sortNatural();
        sorted.appendCategory (category.name);

        for (const auto& tag : tagsOfIt)
            sorted.appendTag (sorted.getCategories().size() - 1, tag);
    }

    result.merge (fixed);
    result.merge (sorted);
    return result.getAll();
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

ContentItem* BrowserContent::findNamed (const juce::String& name) const
{
    if (auto* item = find ({ currentSource, name }))
        return item;

    for (auto* source : sources)
        if (auto* item = find ({ source, name }))
            return item;

    return nullptr;
}

} // namespace K7R
