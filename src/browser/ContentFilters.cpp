// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentFilters.h"

#include "widgets/DefaultLookAndFeel.h"
#include "widgets/Icons.h"

namespace quilvane
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
    filters.apply();
    changed();
}

int ContentFilters::getPreferredWidth() const
{
    return columnWidth * juce::jmax (1, static_cast<int> (filters.getFilters().size()));
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
        std::vector<std::unique_ptr<CategoryComponent>> columns;

        for (const auto& category : categories)
            columns.push_back (std::make_unique<CategoryComponent> (category, CategoryComponent::Mode::filter,
                                                                    static_cast<CategoryComponent::Listener&> (*this)));

        shownCategories = categories;
        container.setColumns (std::move (columns));
    }

    for (int i = 0; i < container.getNumColumns(); ++i)
    {
        const auto& filter = filters.getFilters()[static_cast<size_t> (i)];
        std::vector<CategoryComponent::Item> items;

        for (const auto& tag : filter.available)
        {
            const auto state = filter.selected.contains (tag) ? 1 : 0;
            items.push_back ({ tag, state, 2, state });
        }

        auto& column = container.getColumn (i);
        column.setItems (std::move (items));
        column.setNeedsAll (filter.needsAll);
        column.setArrows (i > 0, i + 1 < container.getNumColumns());
    }

    clearButton.setVisible (filters.hasSelection());
}

//==============================================================================
void ContentFilters::categoryItemClicked (CategoryComponent& column, int itemIndex)
{
    const auto& item = column.getItems()[static_cast<size_t> (itemIndex)];
    filters.setSelected (container.indexOf (column), item.tag, item.state > 0);
    changed();
}

void ContentFilters::categoryAnyAllChanged (CategoryComponent& column, bool needsAll)
{
    filters.setNeedsAll (container.indexOf (column), needsAll);
    changed();
}

void ContentFilters::categoryMoveLeft (CategoryComponent& column)
{
    filters.move (container.indexOf (column), -1);
    changed();
}

void ContentFilters::categoryMoveRight (CategoryComponent& column)
{
    filters.move (container.indexOf (column), 1);
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

} // namespace quilvane
