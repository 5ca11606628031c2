// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentFilters.h"

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int onOffWidth = 36, onOffHeight = 16, clearSize = 16, spacing = 4;

} // namespace

ContentFilters::ContentFilters (const BrowserContent& content, std::function<void()> toCall) :
    filters (content),
    onChange (std::move (toCall))
{
    addAndMakeVisible (header);

    onOffButton.setName ("On/Off Button");
    onOffButton.setTitle ("Filters on or off");
    onOffButton.setTooltip ("Filters on or off");
    onOffButton.setToggleState (true, juce::dontSendNotification);
    onOffButton.onClick = [this]
    {
        filters.setEnabled (onOffButton.getToggleState());
        container.setEnabled (filters.isEnabled());
        changed();
    };
    addAndMakeVisible (onOffButton);

    Icons::setUp (clearButton, Icons::Name::reset, "Untick all tags", findColour (DefaultLookAndFeel::itemTextId));
    clearButton.setWantsKeyboardFocus (true);
    clearButton.onClick = [this]
    {
        filters.clearSelection();
        changed();
    };
    addChildComponent (clearButton);
    addAndMakeVisible (container);
}

ContentFilters::~ContentFilters()
{
    cancelPendingUpdate();
}

void ContentFilters::rebuild()
{
    filters.rebuild();
    changed();
}

void ContentFilters::refresh()
{
    filters.refresh();
    changed();
}

void ContentFilters::restore (std::vector<CategoryFilter> state)
{
    filters.restore (std::move (state));
    changed();
}

int ContentFilters::getPreferredWidth() const noexcept
{
    return CategoriesContainer::columnWidth * static_cast<int> (filters.getFilters().size());
}

void ContentFilters::changed()
{
    triggerAsyncUpdate();
    onChange();
}

void ContentFilters::handleAsyncUpdate()
{
    juce::StringArray categories;

    for (const auto& filter : filters.getFilters())
        categories.add (filter.category);

    // Columns of the same categories only take what they offer now, so that a list stays where it's scrolled to.
    if (categories != shownCategories)
    {
        shownCategories = categories;
        container.setNumColumns (categories.size());
    }

    container.refresh();
    clearButton.setVisible (filters.hasSelection());
}

std::unique_ptr<CategoryComponent> ContentFilters::createColumn (int index)
{
    return std::make_unique<CategoryComponent> (shownCategories[index], CategoryComponent::Mode::filter,
                                                static_cast<CategoryComponent::Listener&> (*this));
}

void ContentFilters::fillColumn (int index, CategoryComponent& column)
{
    const auto& all = filters.getFilters();

    if (index >= static_cast<int> (all.size()))
        return; // other columns are on their way

    const auto& filter = all[static_cast<size_t> (index)];

    if (filter.category != column.getCategory())
        return;

    std::vector<CategoryComponent::Item> items;

    for (const auto& tag : filters.getOffered (filter))
    {
        const auto state = filter.selected.contains (tag) ? 1 : 0;
        items.push_back ({ tag, state, 2, state });
    }

    column.setItems (std::move (items));
    column.setNeedsAll (filter.needsAll);
    column.setArrows (index > 0, index + 1 < static_cast<int> (all.size()));
}

//==============================================================================
void ContentFilters::categoryItemClicked (CategoryComponent& column, int itemIndex)
{
    const auto& item = column.getItems()[static_cast<size_t> (itemIndex)];
    filters.setSelected (column.getCategory(), item.tag, item.state > 0);
    changed();
}

void ContentFilters::categoryAnyAllChanged (CategoryComponent& column, bool needsAll)
{
    filters.setNeedsAll (column.getCategory(), needsAll);
    changed();
}

void ContentFilters::categoryMoveLeft (CategoryComponent& column)
{
    filters.move (column.getCategory(), -1);
    changed();
}

void ContentFilters::categoryMoveRight (CategoryComponent& column)
{
    filters.move (column.getCategory(), 1);
    changed();
}

//==============================================================================
void ContentFilters::resized()
{
    constexpr int belowHeader = 1;
    const auto top = getLocalBounds().removeFromTop (HeaderComponent::height);
    header.setBounds (top);

    auto row = top.withTrimmedRight (spacing);
    onOffButton.setBounds (row.removeFromRight (onOffWidth).withSizeKeepingCentre (onOffWidth, onOffHeight));
    row.removeFromRight (spacing);
    clearButton.setBounds (row.removeFromRight (clearSize).withSizeKeepingCentre (clearSize, clearSize));
    container.setBounds (getLocalBounds().withTrimmedTop (HeaderComponent::height + belowHeader));
}

void ContentFilters::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::windowFrameId));
}

} // namespace K7R
