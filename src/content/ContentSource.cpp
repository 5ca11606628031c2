// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/ContentSource.h"

#include <algorithm>
#include <set>

#include "parameters/SafeFile.h"

namespace quilvane
{

namespace
{

constexpr int highestNumber = 1000;

/** No item is read beyond this from a stream; a preset has a few kilobytes. */
constexpr int maximumItemBytes = 1024 * 1024;

bool writeStream (juce::InputStream& stream, const juce::File& file)
{
    juce::MemoryBlock bytes;

    if (stream.readIntoMemoryBlock (bytes, maximumItemBytes + 1) > maximumItemBytes)
        return false;

    return replaceFileSafely (file,
                              juce::String::createStringFromData (bytes.getData(), static_cast<int> (bytes.getSize())));
}

} // namespace

void ContentSource::reload()
{
    items.clear();
    tags = {};

    for (auto& listing : listItems())
        tags.merge (addItem (std::move (listing)).tags);

    setTagMap (tagMap);
}

void ContentSource::rebuildTags()
{
    tags = {};

    for (const auto& item : items)
        tags.merge (item->tags);

    if (tagMap != nullptr)
        tagMap->merge (tags);
}

void ContentSource::setTagMap (TagMap* map)
{
    tagMap = map;

    if (tagMap != nullptr)
        tagMap->merge (tags);

    for (const auto& item : items)
        numberTags (*item);
}

void ContentSource::numberTags (ContentItem& item) const
{
    item.tagIds.clear();

    if (tagMap == nullptr)
        return;

    for (const auto& category : item.tags.getCategories())
        for (const auto& tag : category.tags)
            item.tagIds.push_back (tagMap->getId (category.name, tag));
}

ContentItem& ContentSource::addItem (Listing listing)
{
    auto item = std::make_unique<ContentItem>();
    item->source = this;
    item->name = std::move (listing.name);
    item->tags = std::move (listing.tags);
    items.push_back (std::move (item));
    return *items.back();
}

ContentItem* ContentSource::findItem (const juce::String& itemName) const
{
    // Where names of different case are different files, the one that was meant.
    ContentItem* similar = nullptr;

    for (const auto& item : items)
    {
        if (item->name == itemName)
            return item.get();

        if (similar == nullptr && item->name.equalsIgnoreCase (itemName))
            similar = item.get();
    }

    return similar;
}

juce::String ContentSource::uniqueItemName (const juce::String& wanted) const
{
    if (! containsItem (wanted))
        return wanted;

    for (int number = 1; number <= highestNumber; ++number)
        if (auto candidate = wanted + " (" + juce::String (number) + ")"; ! containsItem (candidate))
            return candidate;

    return wanted + " - Copy (" + juce::String (juce::Time::currentTimeMillis()) + ")";
}

ContentItem* ContentSource::addItemFromStream (juce::InputStream& stream, const juce::String& itemName)
{
    const auto file = getItemFile (itemName);

    if (file == juce::File() || file.existsAsFile() || containsItem (itemName))
        return nullptr;

    if (! writeStream (stream, file))
        return nullptr;

    auto& item = addItem ({ file.getFileNameWithoutExtension(), readItemTags (itemName) });
    tags.merge (item.tags);

    if (tagMap != nullptr)
        tagMap->merge (tags);

    numberTags (item);
    return &item;
}

ContentItem* ContentSource::replaceItemFromStream (ContentItem& old, juce::InputStream& stream)
{
    if (old.source != this || isReadOnly() || ! writeStream (stream, getItemFile (old.name)))
        return nullptr;

    old.tags = readItemTags (old.name);

    if (tagMap != nullptr)
        tagMap->merge (old.tags);

    numberTags (old);
    return &old;
}

ContentItem* ContentSource::saveItem (const juce::String& itemName, const TagSet& itemTags)
{
    const auto* old = findItem (itemName);
    const auto oldFile = old != nullptr ? getItemFile (old->name) : juce::File();

    if (! canSave() || ! createItemFile (itemName, itemTags))
        return nullptr;

    const auto file = getItemFile (itemName);

    if (old != nullptr)
    {
        if (oldFile != file && ! isSameFile (oldFile, file))
            deleteItemFile (old->name);

        items.erase (std::find_if (items.begin(), items.end(), [&] (const auto& i) { return i.get() == old; }));
    }

    auto& item = addItem ({ file.getFileNameWithoutExtension(), itemTags });
    rebuildTags();
    numberTags (item);
    return &item;
}

bool ContentSource::renameItem (ContentItem& item, const juce::String& newName)
{
    if (isReadOnly() || ! renameItemFile (item.name, newName))
        return false;

    item.name = getItemFile (newName).getFileNameWithoutExtension();
    return true;
}

bool ContentSource::assignTags (ContentItem& item, const TagSet& newTags)
{
    if (isReadOnly() || ! writeItemTags (item.name, newTags))
        return false;

    item.tags = newTags;

    if (tagMap != nullptr)
        tagMap->merge (newTags);

    numberTags (item);
    return true;
}

void ContentSource::clear()
{
    items.clear();
}

int ContentSource::removeItems (const std::vector<ContentItem*>& unwanted)
{
    std::set<const ContentItem*> gone;

    for (const auto* item : unwanted)
        if (item->source == this && ! isReadOnly() && deleteItemFile (item->name))
            gone.insert (item);

    items.erase (std::remove_if (items.begin(), items.end(), [&] (const auto& i) { return gone.count (i.get()) != 0; }),
                 items.end());
    rebuildTags();
    return static_cast<int> (unwanted.size() - gone.size());
}

void ContentSource::sendContentChanged()
{
    listeners.call ([this] (Listener& l) { l.contentChanged (*this); });
}

} // namespace quilvane
