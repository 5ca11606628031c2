// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/ListenerArray.h"
#include "widgets/controls/TextToggleButton.h"

namespace K7R
{

/** A column of the browser: a category with its tags. It serves the filters, where tags are ticked, and the tag editor,
    where they can be mixed and those that were changed are marked. */
class CategoryComponent final : public juce::Component
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The state of a tag has gone one further. */
        virtual void categoryItemClicked (CategoryComponent&, int itemIndex) = 0;
        virtual void categoryAnyAllChanged (CategoryComponent&, bool /*needsAll*/) {}
        virtual void categoryAddClicked (CategoryComponent&) {}
        virtual void categoryMoveLeft (CategoryComponent&) {}
        virtual void categoryMoveRight (CategoryComponent&) {}
    };

    struct Item
    {
        juce::String tag;
        int state = 0;
        int stateCount = 2; // with three, 1 is mixed and 2 is ticked; with one, a click does nothing
        int initialState = 0;
    };

    enum class Mode
    {
        filter,
        editor,
    };

    CategoryComponent (const juce::String& category, Mode, Listener&);
    ~CategoryComponent() override;

    const juce::String& getCategory() const noexcept { return category; }

    /** Shows these, in their order, in place of those before. */
    void setItems (std::vector<Item>);
    const std::vector<Item>& getItems() const noexcept { return items; }

    // Of the header.
    void setArrows (bool canMoveLeft, bool canMoveRight);
    void setNeedsAll (bool);
    void setAddVisible (bool);

    void resized() override;
    void paint (juce::Graphics&) override;

    static constexpr int headerHeight = 22;

private:
    class CategoryButton;
    class ItemButton;
    class TagList;

    void itemClicked (int index);

    const juce::String category;
    const Mode mode;
    Listener& listener;
    std::vector<Item> items;
    std::unique_ptr<CategoryButton> header;
    std::unique_ptr<TagList> list;
};

} // namespace K7R
