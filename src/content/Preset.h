// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

namespace quilvane
{

class Parameter;
class ParameterManager;

/** A named set of parameter values, kept as machine text: by id in memory, by the parameters' names
    in XML, so that a document stays valid when ids move between versions of a table.

    A plain value without a lock; it belongs to the thread that uses it.
*/
class Preset
{
public:
    struct Entry
    {
        int id;
        juce::String value;
    };

    juce::String name;

    const std::vector<Entry>& getEntries() const noexcept { return entries; }
    bool contains (int id) const { return ids.contains (id); }

    void clear();

    /** Appends a parameter's present value. */
    void add (const Parameter&);

    /** Replaces the preset by the content of an element "Preset". Values of names that the manager
        doesn't know are left out; null or another element leaves the preset empty. */
    void readXml (const juce::XmlElement*, const ParameterManager&);

    /** An element "Preset" with the name, if it is not empty, and all values. */
    std::unique_ptr<juce::XmlElement> createXml (const ParameterManager&) const;

private:
    void addEntry (int id, const juce::String& value);

    std::vector<Entry> entries;
    juce::SparseSet<int> ids;
};

} // namespace quilvane
