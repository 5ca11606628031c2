// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "browser/CategoriesContainer.h"
#include "browser/HeaderComponent.h"
#include "browser/rules/CategoryFilters.h"

namespace K7R
{

/** The panel of filters: a column of tags for each category. */
class ContentFilters final : public juce::Component,
                             private juce::AsyncUpdater,
                             private CategoriesContainer::Owner,
                             private CategoryComponent::Listener
{
public:
    /** @param onChange told after each filtering */
    ContentFilters (const BrowserContent&, std::function<void()> onChange);
    ~ContentFilters() override;

    /** The content is another one. */
    void rebuild();

    /** The same, and what is ticked stays so. */
    void refresh();

    // The ticks and the order of the columns; restore() is a refresh() to an earlier state.
    std::vector<CategoryFilter> getState() const { return filters.getFilters(); }
    void restore (std::vector<CategoryFilter>);

    /** The columns' width, in pixels. */
    int getPreferredWidth() const noexcept;

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    void changed();
    std::unique_ptr<CategoryComponent> createColumn (int index) override;
    void fillColumn (int index, CategoryComponent&) override;
    void handleAsyncUpdate() override;
    void categoryItemClicked (CategoryComponent&, int itemIndex) override;
    void categoryAnyAllChanged (CategoryComponent&, bool needsAll) override;
    void categoryMoveLeft (CategoryComponent&) override;
    void categoryMoveRight (CategoryComponent&) override;

    CategoryFilters filters;
    const std::function<void()> onChange;
    juce::DrawableButton clearButton { "Clear", juce::DrawableButton::ImageFitted };
    TextToggleButton onOffButton { "On", "Off" };
    HeaderComponent header { "FILTERS", nullptr, nullptr };
    CategoriesContainer container { *this, "Filters" };
    juce::StringArray shownCategories;
};

} // namespace K7R
