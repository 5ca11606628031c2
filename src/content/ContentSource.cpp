// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/ContentSource.h"

#include <algorithm>
#include <set>

#include "support/SafeFile.h"

namespace K7R
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

    return replaceFileSafely (file, decodeText (bytes.getData(), bytes.getSize()));
}

/** A name that no point ends before its time. */
juce::String withoutPoints (const juce::String& name)
{
    return name.trim().trimCharactersAtStart (". ").trimCharactersAtEnd (". ").replaceCharacter ('.', '_');
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
        tagMap->merge (tags.getAll());
}

void ContentSource::setTagMap (TagMap* map)
{
    tagMap = map;

    if (tagMap != nullptr)
        tagMap->merge (tags.getAll());

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

//==============================================================================
juce::String ContentSource::nameInFile (const juce::String& itemName) const
{
    const auto file = getItemFile (itemName);
    return file != juce::File() ? file.getFileNameWithoutExtension() : juce::String();
}

ContentPlacement ContentSource::place (const juce::String& itemName) const
{
    using Kind = ContentPlacement::Kind;

    if (const auto* item = findItem (itemName))
        return { Kind::sameItem, item->name };

    const auto file = getItemFile (itemName);

    if (file == juce::File() || file.isDirectory())
        return {};

    // Another program's file may not be listed yet.
    auto standing = file.getFileNameWithoutExtension();
    const auto* occupant = findItem (standing);

    if (occupant == nullptr && ! file.exists())
        return { Kind::free, standing };

    if (occupant != nullptr)
        standing = occupant->name;

    return { standing.equalsIgnoreCase (itemName) ? Kind::sameItem : Kind::otherItem, standing };
}

juce::String ContentSource::keepableName (const juce::String& wanted) const
{
    return nameInFile (wanted) == wanted ? wanted : nameInFile (withoutPoints (wanted));
}

juce::String ContentSource::uniqueItemName (const juce::String& wanted) const
{
    const auto isFree = [this] (const juce::String& candidate)
    {
        const auto placement = place (candidate);
        return placement.kind == ContentPlacement::Kind::free && placement.name == candidate;
    };

    if (isFree (wanted))
        return wanted;

    auto kept = nameInFile (withoutPoints (wanted));

    if (kept.isEmpty() || isFree (kept))
        return kept;

    // A name that is as long as a file's can be gets shorter by what comes behind it.
    const auto withEnd = [&] (const juce::String& end)
    {
        auto start = kept;

        while (start.isNotEmpty() && nameInFile (start + end) != start + end)
            start = start.dropLastCharacters (1);

        return start + end;
    };

    for (int number = 1; number <= highestNumber; ++number)
        if (auto candidate = withEnd (" (" + juce::String (number) + ")"); isFree (candidate))
            return candidate;

    return withEnd (" - Copy (" + juce::String (juce::Time::currentTimeMillis()) + ")");
}

ContentItem* ContentSource::addItemFromStream (juce::InputStream& stream, const juce::String& itemName)
{
    const auto placement = place (itemName);

    if (placement.kind != ContentPlacement::Kind::free || ! writeStream (stream, getItemFile (itemName)))
        return nullptr;

    auto& item = addItem ({ placement.name, readItemTags (placement.name) });
    tags.merge (item.tags);

    if (tagMap != nullptr)
        tagMap->merge (item.tags);

    numberTags (item);
    return &item;
}

ContentItem* ContentSource::replaceItemFromStream (const juce::String& itemName, juce::InputStream& stream)
{
    const auto placement = place (itemName);

    if (placement.kind != ContentPlacement::Kind::sameItem || isReadOnly()
        || ! writeStream (stream, getItemFile (placement.name)))
        return nullptr;

    auto* item = findItem (placement.name);

    if (item == nullptr)
        item = &addItem ({ placement.name, {} });

    item->tags = readItemTags (placement.name);

    if (tagMap != nullptr)
        tagMap->merge (item->tags);

    numberTags (*item);
    return item;
}

ContentItem* ContentSource::saveItem (const juce::String& itemName, const TagSet& itemTags)
{
    const auto* old = findItem (itemName);
    const auto oldFile = old != nullptr ? getItemFile (old->name) : juce::File();

    if (! canSave() || place (itemName).kind == ContentPlacement::Kind::otherItem
        || ! createItemFile (itemName, itemTags))
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

bool ContentSource::deleteFile (const ContentItem& item)
{
    return item.source == this && ! isReadOnly() && deleteItemFile (item.name);
}

void ContentSource::forgetItems (const std::vector<ContentItem*>& unwanted)
{
    const std::set<const ContentItem*> gone (unwanted.begin(), unwanted.end());
    const auto kept =
        std::remove_if (items.begin(), items.end(), [&] (const auto& i) { return gone.count (i.get()) != 0; });

    // A source that isn't shown has no items, and still knows its tags.
    if (kept == items.end())
        return;

    items.erase (kept, items.end());
    rebuildTags();
}

bool ContentSource::removeItem (ContentItem& item)
{
    if (! deleteFile (item))
        return false;

    forgetItems ({ &item });
    return true;
}

} // namespace K7R
