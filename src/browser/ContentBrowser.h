// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "browser/ContentFilters.h"
#include "browser/ContentResults.h"
#include "browser/ContentSourcesComponent.h"
#include "browser/ContentTagEditor.h"
#include "browser/PackageImportExport.h"
#include "widgets/FileChooserWindow.h"

namespace quilvane
{

class BasePlugin;

/** The browser of presets: one window inside the editor, with the sources, the filters or the tag editor, and the
    results. Once made it lives as long as the editor, shown or not, because next and previous walk through its results.
    Message thread. */
class ContentBrowser final : public WindowComponent,
                             private ContentResults::Listener,
                             private K7R::AlertWindow::Caller,
                             private juce::TextEditor::Listener,
                             private PackageImportExport::Listener
{
public:
    enum class Mode
    {
        browse,
        saveAs,
    };

    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void browserOpened (ContentBrowser&) = 0;
        virtual void browserClosed (ContentBrowser&, Mode previousMode, bool confirmed) = 0;

        /** Something for the status bar. */
        virtual void browserMessage (const juce::String&) = 0;
    };

    /** @param extension of the archives that are imported and exported, with its point */
    ContentBrowser (BasePlugin&, const juce::String& title, const juce::String& extension, Listener&);
    ~ContentBrowser() override;

    /** Ignores null and one that is there. */
    void addSource (ContentSource*);

    /** Where new items go; one of the sources. */
    void setCurrentSource (ContentSource* source) { content.currentSource = source; }

    //==============================================================================
    void openBrowse (juce::Component& editor);
    void openSaveAs (juce::Component& editor);

    /** @param confirmed whether what was chosen stands */
    void close (bool confirmed);
    Mode getMode() const noexcept { return mode; }

    /** Loads the result after, or before, the current one, shown or not. Nothing in an empty list. */
    void selectAdjacent (int distance) { results.selectAdjacent (distance); }
    void clearSelection() { results.selectItem (nullptr, false); }

    /** The same as a click on "Edit Mode". */
    void setEditMode (bool);

    /** Imports an archive into the current source. */
    void importFile (const juce::File&);

    ContentResults& getResults() noexcept { return results; }

    /** The host closes the window: what is heard stands. */
    void dismiss() override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    void openAt (juce::Component& editor);
    /** Whether sources that weren't shown are read anew. */
    enum class Reading
    {
        nothing,
        whatComesIn,
    };

    /** Whether the filters keep what is ticked in them. */
    enum class Ticks
    {
        discarded,
        kept,
    };

    void releaseItems();
    void rebuild (Reading, Ticks = Ticks::discarded);
    void updateEditMode (const TagSet& tagsToSave = {});
    void updateLayout();
    void save();
    void performSave();
    void performDelete();
    void deleteSelected();
    void chooseExport();
    void chooseImport();
    void exportTo (const juce::File&);
    bool isEditing() const { return mode == Mode::browse && editButton.getToggleState(); }
    juce::String getProposedExportName() const;

    void selectionChanged() override;
    void itemClicked (ContentItem&) override;
    void itemDoubleClicked (ContentItem&) override;
    void resultsReturnPressed() override;
    void resultsExpandClicked() override;
    void itemRenamed (ContentItem&, const juce::String& oldName) override;
    void renameFailed (const ContentItem&) override;
    void buttonClicked (juce::Button*) override;
    void alertClosed (K7R::AlertWindow*, int result) override;
    void textEditorTextChanged (juce::TextEditor&) override { updateLayout(); }
    void textEditorReturnKeyPressed (juce::TextEditor&) override;
    void textEditorEscapeKeyPressed (juce::TextEditor&) override;
    void itemImported (ContentItem&, bool isNew) override;
    void importProgressed (int numDone, int numEntries) override;
    void importFinished (int numImported) override;

    BasePlugin& plugin;
    Listener& listener;
    const juce::String browserTitle, extension;
    BrowserContent content;
    Mode mode = Mode::browse;
    bool resultsExpanded = false;
    BrowserContent::Key returnItem;
    juce::File importDirectory, exportDirectory;
    std::vector<BrowserContent::Key> imported;

    ContentSourcesComponent sources;
    ContentFilters filters;
    std::unique_ptr<ContentTagEditor> tagEditor;
    ContentResults results;

    TextButtonWithIcon exportButton, importButton, editButton, deleteButton;
    ComponentRow leftRow, browseRow, saveRow;
    juce::TextButton okButton { "OK" }, cancelButton { "Cancel" }, saveButton { "Save" }, saveCancelButton { "Cancel" };
    juce::TextEditor nameEditor;

    enum class Question
    {
        overwrite,
        deletion,
    };

    Question question = Question::overwrite;
    std::unique_ptr<K7R::AlertWindow> alert;
    std::unique_ptr<FileChooserWindow> chooser;
    PackageImportExport importer;
};

} // namespace quilvane
