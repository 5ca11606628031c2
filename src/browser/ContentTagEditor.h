// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "browser/BrowserContent.h"
#include "browser/CategoriesContainer.h"
#include "browser/HeaderComponent.h"
#include "browser/rules/TagAssignment.h"
#include "widgets/windows/InputTextWindow.h"

namespace K7R
{

/** Columns of every known tag. A click gives a tag to all selected items, or takes it from them, and their files
    are written at once; while a new item is to be saved, it's for that one. */
class ContentTagEditor final : public juce::Component,
                               private juce::AsyncUpdater,
                               private CategoriesContainer::Owner,
                               private CategoryComponent::Listener,
                               private AlertWindow::Caller
{
public:
    enum class Purpose
    {
        edit,   // of the items that are selected
        saveAs, // of one to come
    };

    /** An item, and the tags that it gets. */
    struct Change
    {
        ContentItem* item = nullptr;
        TagSet tags;
    };

    /** @param canAddTags whether the user may make new tags and categories
        @param initialTags those that are on in saveAs
        @param onChange writes what has been changed */
    ContentTagEditor (BrowserContent&, Purpose, bool canAddTags, const TagSet& initialTags,
                      std::function<void (std::vector<Change>)> onChange);
    ~ContentTagEditor() override;

    /** Shows the tags of these items: soon. */
    void setItems (std::vector<ContentItem*>);

    /** Before items go. */
    void releaseItems();

    /** The tags for an item to come. */
    const TagSet& getTags() const noexcept { return assignment.getCommonTags(); }

    /** Shows the items' tags as they are now. */
    void refresh() { takeTags(); }

    /** Takes what an item has, for one to come. */
    void setTags (const TagSet&);

    int getPreferredWidth() const noexcept { return container.getPreferredWidth(); }

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    void takeTags();
    void apply();
    std::unique_ptr<CategoryComponent> createColumn (int index) override;
    void fillColumn (int index, CategoryComponent&) override;
    void handleAsyncUpdate() override;
    void categoryItemClicked (CategoryComponent&, int itemIndex) override;
    void categoryAddClicked (CategoryComponent&) override;
    void alertClosed (AlertWindow*, int result) override;
    void addTag (const juce::String& category, const juce::String& tag);
    void ask (const juce::String& title, const juce::String& text, const juce::String& name);

    enum class Question
    {
        newTag,
        newCategory,
        firstTag,
    };

    BrowserContent& content;
    const Purpose purpose;
    const bool canAddTags;
    TagSet initialTags;
    const std::function<void (std::vector<Change>)> onChange;

    std::vector<ContentItem*> items;
    std::vector<TagSet> itemTags; // as they were at the last reset
    TagAssignment assignment;
    TagSet shownTags; // of the columns
    TagSet newTags;   // that no item has yet

    juce::DrawableButton addCategoryButton { "Add category", juce::DrawableButton::ImageFitted };
    HeaderComponent header;
    CategoriesContainer container { *this, "Tags" };

    Question question = Question::newTag;
    juce::String pendingCategory;
    std::unique_ptr<InputTextWindow> input;
};

} // namespace K7R
