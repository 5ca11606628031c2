// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "content/ContentSource.h"

namespace K7R
{

/** What the selected items have of each tag, and what a click on a tag makes of that: a tag that only some of them have
    goes through all, none, and as it was. */
class TagAssignment
{
public:
    enum class State
    {
        off,   // no item has it
        mixed, // some have it, and keep it
        on,    // every item has it
    };

    /** Takes the items' tags as they are.
        @param initialTags those that are on where there are no items: of what will be saved */
    void reset (const std::vector<ContentItem*>& items, const TagSet& initialTags);

    State getState (const juce::String& category, const juce::String& tag) const;

    /** What the tag was at the reset. */
    State getInitialState (const juce::String& category, const juce::String& tag) const;

    /** A click. */
    void toggle (const juce::String& category, const juce::String& tag);

    /** The tags that an item gets which had these at the reset. */
    TagSet tagsFor (const TagSet& oldTags) const;

    /** The tags that every item gets. */
    const TagSet& getCommonTags() const noexcept { return addTags; }

private:
    TagSet addTags;   // every item shall have these
    TagSet keepTags;  // an item keeps these if it has them
    TagSet mixedTags; // what only some had at the reset
    TagSet initialAddTags;
};

} // namespace K7R
