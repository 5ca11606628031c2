// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "browser/HeaderComponent.h"
#include "browser/ResultsGrid.h"
#include "browser/rules/ResultList.h"
#include "widgets/windows/AlertWindow.h"

namespace K7R
{

/** The items that the filters have left: which of them are selected, by mouse and keyboard, and their names. */
class ContentResults final : public juce::Component,
                             private ResultsGrid::Owner,
                             private juce::AsyncUpdater,
                             private juce::TextEditor::Listener,
                             private AlertWindow::Caller
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** Other items are selected, or shown. */
        virtual void selectionChanged() = 0;

        /** The user has chosen an item, or a step has led to it. */
        virtual void itemClicked (ContentItem&) = 0;
        virtual void itemDoubleClicked (ContentItem&) = 0;

        /** Return, where it isn't for the list. */
        virtual void resultsReturnPressed() = 0;
        virtual void resultsExpandClicked() = 0;

        /** An item has another name now. */
        virtual void itemRenamed (ContentItem&, const juce::String& oldName) = 0;

        /** Something for the status bar. */
        virtual void resultsMessage (const juce::String&) = 0;
    };

    ContentResults (BrowserContent&, Listener&);
    ~ContentResults() override;

    //==============================================================================
    /** Takes the items that aren't hidden: soon, or at once by flush(). */
    void rebuild();
    void flush();

    /** Before items go: nothing here touches them again until the next rebuild(). */
    void releaseItems();

    /** Shows exactly these items, at once. */
    void show (const std::vector<ContentItem*>&);

    const ResultList& getList() const noexcept { return list; }

    /** Off: one item at most is selected; of several the current one stays. */
    void setMultiSelect (bool);
    void setEditMode (bool isOn) { editMode = isOn; }

    /** Selects an item alone, and scrolls to it; null, or one that isn't shown, clears the selection.
        @param notify whether it's as if the user had clicked it */
    void selectItem (ContentItem*, bool notify);

    /** Selects these items, as far as they're shown, without loading one. */
    void selectKeys (const std::vector<BrowserContent::Key>&);

    /** A step from the current item, as if the user had clicked where it leads. Nothing in an empty list. */
    void selectAdjacent (int distance);

    /** Opens the field for the current item's name. */
    void startRenaming();
    void cancelRenaming();

    void setExpanded (bool);

    void resized() override;
    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override;
    void focusLost (FocusChangeType) override;

private:
    void select (int index, ResultList::How, bool notify);
    void moveBy (int distance, const juce::ModifierKeys&);
    void listChanged();

    void resultClicked (int index, const juce::ModifierKeys&) override;
    void resultDoubleClicked (int index, const juce::ModifierKeys&) override;
    void handleAsyncUpdate() override;
    void textEditorReturnKeyPressed (juce::TextEditor&) override;
    void textEditorEscapeKeyPressed (juce::TextEditor&) override;
    void textEditorFocusLost (juce::TextEditor&) override { finishRenaming (Loading::yes); }
    void alertClosed (AlertWindow*, int result) override;
    void openRenaming (const juce::String& text);

    /** Whether the item is loaded under its new name. */
    enum class Loading
    {
        no,
        yes,
    };

    void finishRenaming (Loading);
    void hideRenaming();
    void refuseName (const juce::String& why);

    BrowserContent& content;
    Listener& listener;
    ResultList list;
    bool editMode = false;

    juce::DrawableButton expandButton { "Expand / Collapse", juce::DrawableButton::ImageFitted };
    juce::DrawableButton viewButton { "Change view", juce::DrawableButton::ImageFitted };
    HeaderComponent header { "RESULTS", &expandButton, &viewButton };
    ResultsGrid grid;

    juce::TextEditor nameEditor;
    BrowserContent::Key renamingItem;
    BrowserContent::Key refusedItem;
    juce::String refusedName;
    std::unique_ptr<AlertWindow> warning;
};

} // namespace K7R
