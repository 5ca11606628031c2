// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <juce_core/juce_core.h>

#include "content/TagSet.h"

namespace K7R
{

class Parameter;
class ParameterManager;

/** A named set of parameter values with what describes it.

    Values are kept as machine text: by id in memory, by the parameters' names in XML, so that a
    document stays valid when ids move between versions of a table. In a file, the name is the file's
    own; in a host's state it stands in the document.

    A plain value without a lock; it belongs to the thread that uses it. Reading never fails: what is
    missing or malformed leaves the preset empty, or the attribute at its default.
*/
class Preset
{
public:
    struct Entry
    {
        int id;
        juce::String value;
    };

    /** Whether the values are read, or only what describes them. */
    enum class Extent
    {
        header,
        everything,
    };

    juce::String name;
    juce::String author;
    juce::String id;
    juce::String application;
    juce::String category;
    juce::String version;
    std::optional<int> rating; // 1 to 5
    TagSet tags;

    //==============================================================================
    const std::vector<Entry>& getEntries() const noexcept { return entries; }
    bool contains (int parameterId) const { return ids.contains (parameterId); }

    void clearParameters();

    /** Appends a parameter's present value. */
    void addParameter (const Parameter&);

    //==============================================================================
    /** Replaces everything by the content of an element "Preset"; values of names that the manager
        doesn't know are left out. Null or another element clears the values and leaves the rest.
        @returns whether it was a preset */
    bool readXml (const juce::XmlElement*, const ParameterManager&, Extent = Extent::everything);

    /** An element "Preset". An entry without a parameter is left out. */
    std::unique_ptr<juce::XmlElement> createXml (const ParameterManager&, bool includeName) const;

    /** Reads a file, and takes its base name as the preset's name whatever it holds.
        @returns whether there was a preset in it */
    bool loadFromFile (const juce::File&, const ParameterManager&, Extent = Extent::everything);

    /** Writes a file as a whole or not at all: one that existed stays until the new one is complete.
        @param before a preset's element whose attributes and children are kept, but for its values, its tags, and
                      what this preset has itself; null for none
        @returns whether it was written */
    bool saveToFile (const juce::File&, const ParameterManager&, const juce::XmlElement* before = nullptr) const;

    /** Changes the tags in an existing file; its other attributes and its elements stay.
        @returns false if there is no preset in it or it can't be written */
    static bool writeTagsToFile (const juce::File&, const TagSet&);

private:
    void addEntry (int parameterId, const juce::String& value);

    std::vector<Entry> entries;
    juce::SparseSet<int> ids;
};

} // namespace K7R
