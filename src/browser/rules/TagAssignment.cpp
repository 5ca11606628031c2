// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/rules/TagAssignment.h"

#include <algorithm>

namespace K7R
{

namespace
{

template <typename Callback>
void forEachTag (const TagSet& set, Callback&& callback)
{
    for (const auto& category : set.getCategories())
        for (const auto& tag : category.tags)
            callback (category.name, tag);
}

} // namespace

void TagAssignment::reset (const std::vector<ContentItem*>& items, const TagSet& initialTags)
{
    addTags = {};
    keepTags = {};

    TagMap all;

    for (const auto* item : items)
        all.merge (item->tags);

    forEachTag (all.getAll(),
                [&] (const juce::String& category, const juce::String& tag)
                {
                    const auto isOnAll =
                        std::all_of (items.begin(), items.end(),
                                     [&] (const auto* item) { return item->tags.contains (category, tag); });
                    (isOnAll ? addTags : keepTags).add (category, tag);
                });

    if (items.empty())
        addTags = initialTags;

    mixedTags = keepTags;
    initialAddTags = addTags;
}

TagAssignment::State TagAssignment::getState (const juce::String& category, const juce::String& tag) const
{
    if (addTags.contains (category, tag))
        return State::on;

    return keepTags.contains (category, tag) ? State::mixed : State::off;
}

TagAssignment::State TagAssignment::getInitialState (const juce::String& category, const juce::String& tag) const
{
    if (mixedTags.contains (category, tag))
        return State::mixed;

    return initialAddTags.contains (category, tag) ? State::on : State::off;
}

void TagAssignment::toggle (const juce::String& category, const juce::String& tag)
{
    if (addTags.contains (category, tag))
        addTags.remove (category, tag);
    else if (! mixedTags.contains (category, tag))
        addTags.add (category, tag);
    else if (keepTags.contains (category, tag))
    {
        keepTags.remove (category, tag);
        addTags.add (category, tag);
    }
    else
        keepTags.add (category, tag);
}

TagSet TagAssignment::tagsFor (const TagSet& oldTags) const
{
    TagSet result;

    forEachTag (oldTags,
                [&] (const juce::String& category, const juce::String& tag)
                {
                    // Only so many tags of many items are known; the others stay.
                    if (keepTags.contains (category, tag) || getInitialState (category, tag) == State::off)
                        result.add (category, tag);
                });

    result.merge (addTags);
    return result.withoutEmptyCategories();
}

} // namespace K7R
