// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

#include "content/TagMap.h"
#include "content/TagSet.h"

namespace K7R
{

class ContentSource;

/** One named, tagged thing of a source. Its body is only read when it's loaded. */
struct ContentItem
{
    ContentSource* source = nullptr;
    juce::String name; // unique in the source, without regard to case
    TagSet tags;
    std::vector<int> tagIds; // of the tags, in their order
    bool hidden = false;     // by a filter
};

/** Where something of a name would be written, and what stands there. Different names can lead to one file. */
struct ContentPlacement
{
    enum class Kind
    {
        free,       // nothing stands there
        sameItem,   // an item of the name, whatever its case, listed or not
        otherItem,  // an item of another name
        impossible, // no file can be written there
    };

    Kind kind = Kind::impossible;
    juce::String name; // of the item that stands there, or that would; empty if it's impossible
};

/** A provider of named, tagged items: what a browser shows.

    The items are listed once, by reload(), with the tags from their headers, and live in memory.
    A source can always be read; whether it can be written is for its class to say, and what it can't
    do returns false.

    Owned by the BasePlugin; message thread only.
*/
class ContentSource
{
public:
    explicit ContentSource (const juce::String& sourceName) : name (sourceName) {}
    virtual ~ContentSource() = default;

    ContentSource (const ContentSource&) = delete;
    ContentSource& operator= (const ContentSource&) = delete;

    const juce::String& getName() const noexcept { return name; }

    //==============================================================================
    virtual bool isReadOnly() const { return true; }
    virtual bool canSave() const { return false; }

    /** Loads an item into the plug-in; false if it can't be read. */
    virtual bool loadItem (const juce::String& itemName) = 0;

    /** The file in which an item lies or would lie; none in a source without files. */
    virtual juce::File getItemFile (const juce::String&) const { return {}; }
    virtual juce::String getItemExtension() const { return {}; }
    virtual TagSet readItemTags (const juce::String&) const { return {}; }

    virtual bool deleteItemFile (const juce::String&) { return false; }
    virtual bool renameItemFile (const juce::String& /*oldName*/, const juce::String& /*newName*/) { return false; }
    virtual bool writeItemTags (const juce::String&, const TagSet&) { return false; }

    /** Saves what the plug-in plays now as an item's file, over one that exists; what else that knew stays. */
    virtual bool createItemFile (const juce::String&, const TagSet&) { return false; }

    //==============================================================================
    /** Lists the items afresh. Every item that was there is deleted. */
    void reload();

    /** Collects the tags anew from the items. */
    void rebuildTags();

    /** Whether what the items are read from is another than at the last reload(). */
    virtual bool isStale() const { return false; }

    const std::vector<std::unique_ptr<ContentItem>>& getItems() const noexcept { return items; }

    /** All tags of the items, as far as a TagMap has room for them. */
    const TagSet& getTags() const noexcept { return tags.getAll(); }

    /** Compared without regard to case; where there are several, the one of just this name. */
    ContentItem* findItem (const juce::String& itemName) const;
    bool containsItem (const juce::String& itemName) const { return findItem (itemName) != nullptr; }

    /** Tells what a name stands for, before something is written under it. */
    ContentPlacement place (const juce::String& itemName) const;

    /** Returns the name as a file can keep it, with "_" for the points that would end it; empty for a name of which
        nothing remains. */
    juce::String keepableName (const juce::String& wanted) const;

    /** Returns a name that is free and that its file keeps: the name itself if it is so, or else what a file can keep
        of it, with a number behind it if need be; empty for a name of which nothing remains. */
    juce::String uniqueItemName (const juce::String& wanted) const;

    /** Adds an item from the text of a file; null, with nothing written, if the name isn't free, or if it can't
        be written. */
    ContentItem* addItemFromStream (juce::InputStream&, const juce::String& itemName);

    /** Writes the text of a file over that of the item of a name, and reads its tags anew; it keeps its name, and is
        listed if it wasn't. The source's own tags are collected by rebuildTags(), once after all items. Null, with
        nothing changed, if there is no item of the name or it can't be written. */
    ContentItem* replaceItemFromStream (const juce::String& itemName, juce::InputStream&);

    /** Saves what the plug-in plays now under a name, in place of the item of that name, whatever its case. The new
        file stands before the old one goes; null, with nothing changed, if it can't be written, or if the name leads
        to another item's file. */
    ContentItem* saveItem (const juce::String& itemName, const TagSet&);

    /** Gives an item another name, and its file; false, with nothing changed, if that can't be done. */
    bool renameItem (ContentItem&, const juce::String& newName);

    /** Gives an item other tags, and writes them; false, with nothing changed, if that can't be done. The source's own
        tags are collected by rebuildTags(), once after all items. */
    bool assignTags (ContentItem&, const TagSet&);

    /** Deletes all items from memory. Their tags are remembered. */
    void clear();

    /** Deletes an item's file; the item stays until forgetItems(), once after all files. False if the file can't be
        deleted. */
    bool deleteFile (const ContentItem&);

    /** Deletes these from memory, as far as they're the source's. */
    void forgetItems (const std::vector<ContentItem*>&);

    /** Both for one; false if it stays. */
    bool removeItem (ContentItem&);

    /** The map that numbers the tags; null for none. Items that stand are numbered at once. */
    void setTagMap (TagMap*);

    bool enabled = true;   // its items are loaded
    bool selected = false; // it's ticked in the list of sources

protected:
    struct Listing
    {
        juce::String name;
        TagSet tags;
    };

    /** The names and tags of all items, in listing order. */
    virtual std::vector<Listing> listItems() const = 0;

private:
    ContentItem& addItem (Listing);
    juce::String nameInFile (const juce::String& itemName) const;
    void numberTags (ContentItem&) const;

    const juce::String name;
    std::vector<std::unique_ptr<ContentItem>> items;
    TagMap tags;
    TagMap* tagMap = nullptr;
};

} // namespace K7R
