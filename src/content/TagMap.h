// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <unordered_map>

#include "content/TagSet.h"

namespace K7R
{

/** The union of many sets, which gives every category and every tag a number, so that filters compare integers.

    A category's id is a multiple of 1000 and the ids of its tags follow it, up to 999 of them. Names
    that have an id keep it: sets are only ever added. What is beyond the bounds below has no id, and isn't in the
    union. Message thread.
*/
class TagMap
{
public:
    static constexpr int unknownId = 0;
    static constexpr int idsPerCategory = 1000;

    // The most that a browser shows; more than anyone sorts presets by.
    static constexpr int maximumCategories = 256;
    static constexpr int maximumTags = 16384; // in all categories together

    /** Numbers what is new in a set, in time by its size alone. */
    void merge (const TagSet&);

    /** The id of a tag, or of the category if the tag is empty. */
    int getId (const juce::String& category, const juce::String& tag) const;

    /** The category that an id of its own or of one of its tags belongs to; empty if unknown. */
    juce::String getCategoryName (int id) const;

    struct Names
    {
        int id; // -1 if unknown
        juce::String category;
        juce::String tag;
    };

    Names getNames (int id) const;

    /** Everything that was ever merged. */
    const TagSet& getAll() const noexcept { return all; }

private:
    struct Category
    {
        int id;
        std::unordered_map<juce::String, int> tagIds;
    };

    Category* findOrAdd (const juce::String& category);

    std::unordered_map<juce::String, Category> categories;
    TagSet all;
    int numTags = 0;
};

} // namespace K7R
