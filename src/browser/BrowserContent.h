// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "content/ContentSource.h"

namespace K7R
{

/** What the panels of a browser share: the sources, and the items and tags of those that are shown. Sources belong to
    the plug-in, and outlive this. Message thread. */
class BrowserContent
{
public:
    /** An item by what stays when its source is read anew. */
    struct Key
    {
        ContentSource* source = nullptr;
        juce::String name;

        bool operator== (const Key& other) const { return source == other.source && name == other.name; }
    };

    /** @param fixedCategories come first, in this order */
    explicit BrowserContent (const juce::StringArray& fixedCategories) : categories (fixedCategories) {}
    ~BrowserContent();

    BrowserContent (const BrowserContent&) = delete;
    BrowserContent& operator= (const BrowserContent&) = delete;

    /** Adds a source at the end, and reads it; ignores null and one that is there.
        @returns whether it was added */
    bool addSource (ContentSource*);

    const std::vector<ContentSource*>& getSources() const noexcept { return sources; }

    /** Chooses the sources that are shown (the ticked ones, or all if none is), reads those that come in or are stale,
        and collects items and tags. Items from before are gone after this.
        @param only while not null, items of this source alone are collected */
    void rebuild (ContentSource* only);

    /** Has a source shown after the next rebuild(): ticks it if others alone are ticked. */
    void showSource (ContentSource&);

    /** Whether a source that is shown would be read again by rebuild(). */
    bool isStale() const;

    /** Collects anew without reading a source. */
    void collect (ContentSource* only);

    /** Sorted by name, numbers by their value and without regard to case. */
    const std::vector<ContentItem*>& getItems() const noexcept { return items; }
    const TagSet& getTags() const noexcept { return tags; }
    const TagMap& getTagMap() const noexcept { return tagMap; }

    /** The tags of all sources, shown or not: fixed categories first, each category's tags sorted. */
    TagSet getVocabulary() const;

    // Keep the list sorted when an item comes, goes, or has another name.
    void insert (ContentItem&);
    void remove (const ContentItem&);

    /** What is listed under a key; null if it's gone or not shown. */
    ContentItem* find (const Key&) const;

    /** Returns the item of a name, the current source's if there are several; null for none. */
    ContentItem* findNamed (const juce::String&) const;

    static Key keyOf (const ContentItem* item) { return item != nullptr ? Key { item->source, item->name } : Key(); }

    /** Where new items go. */
    ContentSource* currentSource = nullptr;

private:
    bool isAnySelected() const;
    TagSet inFixedOrder (const TagSet&) const;

    const juce::StringArray categories;
    std::vector<ContentSource*> sources;
    std::vector<ContentItem*> items;
    TagSet tags;
    TagMap tagMap;
};

} // namespace K7R
