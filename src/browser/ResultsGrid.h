// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include "browser/rules/ResultList.h"
#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** The results as a grid that fills from the top down, column by column, and is scrolled sideways. Only the part of it
    that is seen has components, so that thousands of items cost no more than a page. */
class ResultsGrid final : public juce::Viewport
{
public:
    class Owner
    {
    public:
        virtual ~Owner() = default;

        virtual void resultClicked (int index, const juce::ModifierKeys&) = 0;
        virtual void resultDoubleClicked (int index, const juce::ModifierKeys&) = 0;
    };

    ResultsGrid (const ResultList&, Owner&);
    ~ResultsGrid() override;

    /** The list has other items. */
    void layOut();

    /** The list has other items selected, or none of those that are shown. */
    void update();

    /** Scrolls to an item; nothing for an index that the grid has no place for. */
    void show (int index);

    /** In the grid's content. */
    juce::Rectangle<int> placeOf (int index) const;

    /** How many results stand one below the other; 0 if the grid is too low for one. */
    int getNumRows() const noexcept { return rows; }

    /** Wide or narrow columns. */
    void changeView();

    void resized() override;
    void visibleAreaChanged (const juce::Rectangle<int>&) override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

private:
    class ResultButton;

    const ResultList& list;
    Owner& owner;
    juce::Component places;
    std::vector<std::unique_ptr<ResultButton>> buttons;
    int rows = 0, columnWidth = 1, widestColumn;
    juce::Point<int> margin; // what whole rows and columns leave, in halves on both sides
};

} // namespace K7R
