// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>

#include "content/PresetsContent.h"

namespace K7R
{

/** The user's presets: the files of one folder, whose base names are the presets' names.

    Nothing watches the folder: it's listed when the source is reloaded, and isStale() tells whether other programs have
    changed it since. Files that are as they were aren't read again. Names come
    from users and archives; whatever they hold, the file of an item lies in the folder itself.
*/
class PresetsDirectoryContent final : public PresetsContent
{
public:
    PresetsDirectoryContent (PresetHost&, const juce::String& sourceName, const juce::File& folder,
                             const juce::String& presetExtension);

    bool isReadOnly() const override { return false; }
    bool canSave() const override { return true; }

    /** The path of a name in the folder: the file of just this name if there is one that is listed. For others, what no
        file name can hold is replaced, and what follows the last point of a name isn't kept; a name of which nothing
        remains gives no file. */
    juce::File getItemFile (const juce::String& itemName) const override;
    TagSet readItemTags (const juce::String& itemName) const override;
    std::unique_ptr<Preset> readPreset (const juce::String& itemName) const override;
    bool isStale() const override;

    bool deleteItemFile (const juce::String& itemName) override;

    /** False if the new name is another preset's. */
    bool renameItemFile (const juce::String& oldName, const juce::String& newName) override;
    bool writeItemTags (const juce::String& itemName, const TagSet&) override;

    /** Keeps what the preset of that name, whatever its case, has beyond values and tags. Also false if the name's path
        is that of a preset of another name. */
    bool createItemFile (const juce::String& itemName, const TagSet&) override;

protected:
    std::vector<Listing> listItems() const override;

private:
    /** A file's listing, and the state of the file when it was read. */
    struct Header
    {
        bool isOf (const juce::DirectoryEntry&) const;

        juce::int64 size, modified, readAt; // times in milliseconds
        Listing listing;
    };

    juce::RangedDirectoryIterator listFiles() const;
    bool canBeLoaded (const juce::File&) const;
    juce::File fileNamed (const juce::String& stem) const;

    const juce::File directory;
    mutable std::map<juce::String, Header> headers; // by file name, of the last listing
};

} // namespace K7R
