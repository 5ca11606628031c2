// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "browser/BrowserContent.h"
#include "browser/CategoriesContainer.h"
#include "browser/HeaderComponent.h"
#include "browser/TagAssignment.h"
#include "widgets/InputTextWindow.h"

namespace quilvane
{

/** Columns of every known tag. A click gives a tag to all selected items, or takes it from them, and writes their
    files at once; while a new item is to be saved, it's for that one. */
class ContentTagEditor final : public juce::Component,
                               private juce::AsyncUpdater,
                               private CategoryComponent::Listener,
                               private K7R::AlertWindow::Caller
{
public:
    enum class Purpose
    {
        edit,   // of the items that are selected
        saveAs, // of one to come
    };

    /** @param canAddTags whether the user may make new tags and categories
        @param initialTags those that are on in saveAs
        @param onWritten told after items have been written */
    ContentTagEditor (BrowserContent&, Purpose, bool canAddTags, const TagSet& initialTags,
                      std::function<void()> onWritten);
    ~ContentTagEditor() override;

    /** Shows the tags of these items: soon. */
    void setItems (std::vector<ContentItem*>);

    /** Before items go. */
    void releaseItems();

    /** The tags for an item to come. */
    const TagSet& getTags() const noexcept { return assignment.getCommonTags(); }

    /** Takes what an item has, for one to come. */
    void setTags (const TagSet&);

    int getPreferredWidth() const;

    void resized() override;
    void paint (juce::Graphics&) override;

    static constexpr int columnWidth = 144;

private:
    void takeTags();
    void apply();
    void showStates();
    void handleAsyncUpdate() override;
    void categoryItemClicked (CategoryComponent&, int itemIndex) override;
    void categoryAddClicked (CategoryComponent&) override;
    void alertClosed (K7R::AlertWindow*, int result) override;
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
    const std::function<void()> onWritten;

    std::vector<ContentItem*> items;
    std::vector<TagSet> itemTags; // as they were at the last reset
    TagAssignment assignment;
    TagSet shownTags; // of the columns
    TagSet newTags;   // that no item has yet

    juce::DrawableButton addCategoryButton { "Add category", juce::DrawableButton::ImageFitted };
    HeaderComponent header;
    CategoriesContainer container;

    Question question = Question::newTag;
    juce::String pendingCategory;
    std::unique_ptr<K7R::InputTextWindow> input;
};

} // namespace quilvane
