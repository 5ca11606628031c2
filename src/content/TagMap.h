// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <unordered_map>

#include "content/TagSet.h"

namespace quilvane
{

/** Gives every category and every tag a number, so that filters compare integers.

    A category's id is a multiple of 1000 and the ids of its tags follow it, up to 999 of them. Names
    that have an id keep it: sets are only ever added. Message thread; one for each browser.
*/
class TagMap
{
public:
    static constexpr int unknownId = 0;
    static constexpr int idsPerCategory = 1000;

    /** Numbers what is new in a set. */
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
    void store (const juce::String& key, int id);

    std::unordered_map<juce::String, int> ids;
    std::unordered_map<int, juce::String> keys;
    TagSet all;
};

} // namespace quilvane
