// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

#include "content/TagMap.h"
#include "content/TagSet.h"
#include "parameters/ListenerArray.h"

namespace quilvane
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

/** A provider of named, tagged items: what a browser shows.

    The items are listed once, by reload(), with the tags from their headers, and live in memory.
    A source can always be read; whether it can be written is for its class to say, and what it can't
    do returns false.

    Owned by the BasePlugin; message thread only.
*/
class ContentSource
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void contentChanged (ContentSource&) = 0;
    };

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

    /** Saves what the plug-in plays now as an item's file, over one that exists. */
    virtual bool createItemFile (const juce::String&, const TagSet&) { return false; }

    //==============================================================================
    /** Lists the items afresh. Every item that was there is deleted. */
    void reload();

    /** Collects the tags anew from the items. */
    void rebuildTags();

    const std::vector<std::unique_ptr<ContentItem>>& getItems() const noexcept { return items; }

    /** All tags of the items. */
    const TagSet& getTags() const noexcept { return tags; }

    /** Compared without regard to case; where there are several, the one of just this name. */
    ContentItem* findItem (const juce::String& itemName) const;
    bool containsItem (const juce::String& itemName) const { return findItem (itemName) != nullptr; }

    /** The name itself if it is free, or else with a number behind it. */
    juce::String uniqueItemName (const juce::String& wanted) const;

    /** Adds an item from the text of a file; null, with nothing written, if the name is taken, or if it can't
        be written. */
    ContentItem* addItemFromStream (juce::InputStream&, const juce::String& itemName);

    /** Writes the text of a file over an item's, and reads its tags anew; it keeps its name. The source's own tags are
        collected by rebuildTags(), once after all items. Null, with nothing changed, if it can't be written. */
    ContentItem* replaceItemFromStream (ContentItem&, juce::InputStream&);

    /** Saves what the plug-in plays now under a name, in place of the item of that name, whatever its case. The new
        file stands before the old one goes; null, with nothing changed, if it can't be written. */
    ContentItem* saveItem (const juce::String& itemName, const TagSet&);

    /** Gives an item another name, and its file; false, with nothing changed, if that can't be done. */
    bool renameItem (ContentItem&, const juce::String& newName);

    /** Gives an item other tags, and writes them; false, with nothing changed, if that can't be done. The source's own
        tags are collected by rebuildTags(), once after all items. */
    bool assignTags (ContentItem&, const TagSet&);

    /** Deletes all items from memory. Their tags are remembered. */
    void clear();

    /** Deletes items with their files; one whose file can't be deleted stays.
        @returns how many stay */
    int removeItems (const std::vector<ContentItem*>&);

    /** The same for one; false if it stays. */
    bool removeItem (ContentItem& item) { return removeItems ({ &item }) == 0; }

    /** The map that numbers the tags; null for none. Items that stand are numbered at once. */
    void setTagMap (TagMap*);

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }
    void sendContentChanged();

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
    void numberTags (ContentItem&) const;

    const juce::String name;
    std::vector<std::unique_ptr<ContentItem>> items;
    TagSet tags;
    TagMap* tagMap = nullptr;
    ListenerArray<Listener> listeners;
};

} // namespace quilvane
