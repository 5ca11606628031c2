// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{

/** Tags in categories, both in the order of their first appearance.

    A value. Names are compared with regard to case. In text: "Modulation:Slow|Wide;Spatialize:Big". */
class TagSet
{
public:
    struct Category
    {
        juce::String name;
        juce::StringArray tags;

        bool operator== (const Category& other) const { return name == other.name && tags == other.tags; }
    };

    // The most that is read from a text; the rest is left out. No file of ours comes near.
    static constexpr int maximumCategories = 64;
    static constexpr int maximumTagsPerCategory = 999; // a TagMap has no numbers for more
    static constexpr int maximumTags = 8192;           // in all categories together

    TagSet() = default;

    /** Reads the text form. A part without ":" is a category without tags. */
    static TagSet fromText (const juce::String&);
    juce::String toText() const;

    bool isEmpty() const noexcept { return categories.empty(); }
    const std::vector<Category>& getCategories() const noexcept { return categories; }

    bool contains (const juce::String& category, const juce::String& tag) const;
    void add (const juce::String& category, const juce::String& tag);

    // Append what the caller knows to be new.
    void appendCategory (const juce::String& category) { categories.push_back ({ category, {} }); }
    void appendTag (size_t categoryPosition, const juce::String& tag) { categories[categoryPosition].tags.add (tag); }

    /** Adds a category without tags. */
    void addCategory (const juce::String& category) { findOrAdd (category); }
    TagSet withoutEmptyCategories() const;

    /** The category stays, also when this was its last tag. */
    void remove (const juce::String& category, const juce::String& tag);

    /** Adds all that another set has, in its order. */
    void merge (const TagSet&);

    /** The set that holds one category alone; empty if there is none at the position. */
    TagSet getSubset (int categoryPosition) const;

    bool operator== (const TagSet& other) const { return categories == other.categories; }
    bool operator!= (const TagSet& other) const { return ! operator== (other); }

private:
    const Category* find (const juce::String& name) const;
    Category& findOrAdd (const juce::String& name);

    std::vector<Category> categories;
};

/** The tags that a list of items may hold in memory, all copies counted; 10,000 presets of 50 tags come to just that. */
class TagBudget
{
public:
    static constexpr size_t maximumTags = 500'000;

    /** Returns the tags while there is room for them, and none from then on. */
    TagSet take (const TagSet&);

private:
    size_t room = maximumTags;
};

} // namespace K7R
