// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/PresetsDirectoryContent.h"

#include "support/BoundedXml.h"
#include "support/SafeFile.h"

namespace K7R
{

namespace
{

constexpr const char* fileVersion = "1.0";
constexpr int coarsestTimeMs = 2000; // of the times that file systems keep

/** File systems take names of 255 bytes; the extension and the name of a temporary file need some of them. */
constexpr size_t maximumNameBytes = 200;

/** A name that stays in its folder: no separators or control characters, not hidden, not too long. */
juce::String toFileName (const juce::String& name)
{
    static const juce::String forbidden ("/\\:*?\"<>|");
    juce::String result;

    for (auto c = name.getCharPointer(); ! c.isEmpty();)
    {
        const auto character = c.getAndAdvance();

        if (character >= ' ' && character != 0x7f && ! forbidden.containsChar (character))
            result += character;
        else
            result += '_';
    }

    while (result.getNumBytesAsUTF8() > maximumNameBytes)
        result = result.dropLastCharacters (1);

    result = result.trim().trimCharactersAtStart (".").trim();

    // Elsewhere such a name is somebody's home.
    return result.startsWithChar ('~') ? "_" + result.substring (1) : result;
}

/** A name can stand for the file of another one, which isn't its own to change. */
bool isFileOf (const juce::File& file, const juce::String& itemName)
{
    return file.existsAsFile() && file.getFileNameWithoutExtension().equalsIgnoreCase (itemName);
}

} // namespace

PresetsDirectoryContent::PresetsDirectoryContent (PresetHost& presetHost, const juce::String& sourceName,
                                                  const juce::File& folder, const juce::String& presetExtension) :
    PresetsContent (presetHost, sourceName, presetExtension),
    directory (folder)
{
}

juce::File PresetsDirectoryContent::getItemFile (const juce::String& itemName) const
{
    // A name that was listed is its own file, whatever it holds.
    if (itemName.isNotEmpty() && ! itemName.containsAnyOf ("/\\") && ! itemName.startsWithChar ('.'))
        if (auto listed = fileNamed (itemName); listed.existsAsFile())
            return listed;

    const auto fileName = toFileName (itemName);
    const auto stem =
        fileName.containsChar ('.') ? toFileName (fileName.upToLastOccurrenceOf (".", false, false)) : fileName;

    return stem.isNotEmpty() ? fileNamed (stem) : juce::File();
}

juce::File PresetsDirectoryContent::fileNamed (const juce::String& stem) const
{
    // By its path: juce::File takes a child's name with a leading "~" for somebody's home.
    const auto path = juce::File::addTrailingSeparator (directory.getFullPathName()) + stem;
    const juce::File usual (path + extension), inCapitals (path + extension.toUpperCase());

    return ! usual.exists() && inCapitals.existsAsFile() ? inCapitals : usual;
}

juce::RangedDirectoryIterator PresetsDirectoryContent::listFiles() const
{
    return juce::RangedDirectoryIterator (directory, false, "*" + extension,
                                          juce::File::findFiles | juce::File::ignoreHiddenFiles);
}

bool PresetsDirectoryContent::canBeLoaded (const juce::File& file) const
{
    // By its name: those that aren't UTF-8 lead to no file, and pipes would make wait.
    return isRegularFile (file) && file == fileNamed (file.getFileNameWithoutExtension());
}

bool PresetsDirectoryContent::Header::isOf (const juce::DirectoryEntry& entry) const
{
    // A file that was young when it was read may have changed since without another time.
    const auto wasSettled = readAt - modified > coarsestTimeMs;
    return wasSettled && size == entry.getFileSize() && modified == entry.getModificationTime().toMilliseconds();
}

std::vector<ContentSource::Listing> PresetsDirectoryContent::listItems() const
{
    const auto now = juce::Time::currentTimeMillis();
    std::vector<Listing> result;
    std::map<juce::String, Header> found;
    TagBudget budget;

    for (const auto& entry : listFiles())
    {
        const auto file = entry.getFile();

        if (! canBeLoaded (file))
            continue;

        const auto fileName = file.getFileName();
        const auto known = headers.find (fileName);

        if (known != headers.end() && known->second.isOf (entry))
        {
            auto kept = known->second;
            kept.listing.tags = budget.take (kept.listing.tags);
            found.emplace (fileName, std::move (kept));
        }
        else
        {
            Preset header;
            header.loadFromFile (file, host.getPresetParameters(), Preset::Extent::header);
            found.emplace (fileName, Header { entry.getFileSize(),
                                              entry.getModificationTime().toMilliseconds(),
                                              now,
                                              { header.name, budget.take (header.tags) } });
        }

        result.push_back (found.at (fileName).listing);
    }

    headers = std::move (found);
    return result;
}

bool PresetsDirectoryContent::isStale() const
{
    size_t numFiles = 0;

    for (const auto& entry : listFiles())
    {
        const auto known = headers.find (entry.getFile().getFileName());

        if (known == headers.end() && ! canBeLoaded (entry.getFile()))
            continue;

        if (known == headers.end() || ! known->second.isOf (entry))
            return true;

        ++numFiles;
    }

    return numFiles != headers.size();
}

TagSet PresetsDirectoryContent::readItemTags (const juce::String& itemName) const
{
    Preset header;
    header.loadFromFile (getItemFile (itemName), host.getPresetParameters(), Preset::Extent::header);
    return header.tags;
}

std::unique_ptr<Preset> PresetsDirectoryContent::readPreset (const juce::String& itemName) const
{
    const auto file = getItemFile (itemName);

    auto preset = std::make_unique<Preset>();

    if (! isFileOf (file, itemName) || ! preset->loadFromFile (file, host.getPresetParameters()))
        return nullptr;

    return preset;
}

bool PresetsDirectoryContent::deleteItemFile (const juce::String& itemName)
{
    const auto file = getItemFile (itemName);
    return isFileOf (file, itemName) && file.deleteFile();
}

bool PresetsDirectoryContent::renameItemFile (const juce::String& oldName, const juce::String& newName)
{
    const auto oldFile = getItemFile (oldName);
    const auto newFile = getItemFile (newName);

    if (! isFileOf (oldFile, oldName) || newFile == juce::File())
        return false;

    // A change of case can meet the same file, where names of different case are one; no other may be there.
    if (newFile.exists() && ! isSameFile (oldFile, newFile))
        return false;

    return renameFile (oldFile, newFile);
}

bool PresetsDirectoryContent::writeItemTags (const juce::String& itemName, const TagSet& newTags)
{
    const auto file = getItemFile (itemName);
    return isFileOf (file, itemName) && Preset::writeTagsToFile (file, newTags);
}

bool PresetsDirectoryContent::createItemFile (const juce::String& itemName, const TagSet& newTags)
{
    const auto file = getItemFile (itemName);

    if (file == juce::File() || (file.exists() && ! isFileOf (file, itemName)))
        return false;

    Preset preset;
    host.fillPreset (preset);
    preset.version = fileVersion;
    preset.tags = newTags;

    const auto* old = findItem (itemName);
    const auto before = parseBoundedXml (old != nullptr ? getItemFile (old->name) : file);
    return preset.saveToFile (file, host.getPresetParameters(), before.get());
}

} // namespace K7R
