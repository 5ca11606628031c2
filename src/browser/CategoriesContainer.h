// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "browser/CategoryComponent.h"

namespace K7R
{

/** Columns side by side, scrolled sideways where there are more than fit. A column is made when it's first seen, so
    that many categories cost no more than a page of them. */
class CategoriesContainer final : public juce::Viewport
{
public:
    class Owner
    {
    public:
        virtual ~Owner() = default;

        virtual std::unique_ptr<CategoryComponent> createColumn (int index) = 0;

        /** Gives a column its tags: it's new, or seen for the first time since refresh(). */
        virtual void fillColumn (int index, CategoryComponent&) = 0;
    };

    /** @param title what its scroll bar is called */
    CategoriesContainer (Owner&, const juce::String& title);
    ~CategoriesContainer() override;

    /** Takes so many new columns in place of those before. */
    void setNumColumns (int);

    /** Fills those that are seen; the others are when they are. */
    void refresh();

    /** Returns the width of all columns, in pixels. */
    int getPreferredWidth() const noexcept { return columnWidth * static_cast<int> (columns.size()); }

    void resized() override;
    void visibleAreaChanged (const juce::Rectangle<int>&) override { update(); }

    static constexpr int columnWidth = 144;

private:
    struct Column
    {
        std::unique_ptr<CategoryComponent> component;
        bool isFilled = false;
    };

    void layOut();
    void update();

    Owner& owner;
    juce::Component places;
    std::vector<Column> columns;
};

} // namespace K7R
