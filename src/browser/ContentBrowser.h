// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "browser/ContentFilters.h"
#include "browser/ContentResults.h"
#include "browser/ContentSourcesComponent.h"
#include "browser/ContentTagEditor.h"
#include "browser/PackageImportExport.h"
#include "browser/ReturnKey.h"
#include "widgets/windows/FileChooserWindow.h"

namespace K7R
{

class BasePlugin;

/** The browser of presets: one window inside the editor, with the sources, the filters or the tag editor, and the
    results. Once made it lives as long as the editor, shown or not, because next and previous walk through its results.
    Message thread. */
class ContentBrowser final : public WindowComponent,
                             private ContentResults::Listener,
                             private AlertWindow::Caller,
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

    /** Loads the result after, or before, the one that is loaded, shown or not. Nothing in an empty list. */
    void selectAdjacent (int distance);

    /** Marks no item as loaded. */
    void clearSelection();

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
    static constexpr const char* newName = "New Preset";

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

    juce::String getLoadedName() const;

    /** Makes what is loaded the current item, unless it's been so since it was loaded: a project that is restored
        brings another preset. */
    void selectLoaded();

    void releaseItems();
    void rebuild (Reading, Ticks = Ticks::discarded);
    void updateEditMode (const TagSet& tagsToSave = {});
    void updateLayout();
    juce::String getTypedName() const;
    void save();
    void performSave (const juce::String& name);
    void performDelete();
    void deleteSelected();
    void assignTags (std::vector<ContentTagEditor::Change>);

    /** Does something so many times, as a sliced task.
        @param verb for the title */
    void runTask (const juce::String& verb, size_t number, const std::function<void (size_t index)>& doOne,
                  const std::function<void (bool wasStopped)>& onEnd);
    void showProgress (const juce::String& verb, int numDone, int number);
    void taskEnded();
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
    void resultsMessage (const juce::String& text) override { listener.browserMessage (text); }
    void buttonClicked (juce::Button*) override;
    void alertClosed (AlertWindow*, int result) override;
    void textEditorTextChanged (juce::TextEditor&) override { updateLayout(); }
    void textEditorReturnKeyPressed (juce::TextEditor&) override;
    void textEditorEscapeKeyPressed (juce::TextEditor&) override;
    void itemImported (ContentItem&, bool isNew) override;
    void importProgressed (int numDone, int numEntries) override;
    void importFinished (const ImportCounts&, bool wasStopped) override;

    BasePlugin& plugin;
    Listener& listener;
    const juce::String browserTitle, extension;
    BrowserContent content;
    Mode mode = Mode::browse;
    bool resultsExpanded = false;
    juce::String loadedName; // when the current item was last made what is loaded
    BrowserContent::Key returnItem;
    std::vector<CategoryFilter> stateBeforeEditing; // of the filters
    juce::File importDirectory, exportDirectory;
    std::vector<BrowserContent::Key> imported;

    ContentSourcesComponent sources;
    ContentFilters filters;
    std::unique_ptr<ContentTagEditor> tagEditor;
    ContentResults results;

    TextButtonWithIcon exportButton, importButton, editButton, deleteButton;
    ComponentRow leftRow, browseRow, saveRow;
    juce::TextButton stopButton { "Stop" }; // of what is being done to many files
    juce::TextButton okButton { "OK" }, cancelButton { "Cancel" }, saveButton { "Save" }, saveCancelButton { "Cancel" };
    juce::TextEditor nameEditor;

    enum class Question
    {
        overwrite,
        otherName, // than one that leads to another item's file
        deletion,
    };

    Question question = Question::overwrite;
    juce::String itemInQuestion;
    std::unique_ptr<AlertWindow> alert;
    std::unique_ptr<FileChooserWindow> chooser;
    SlicedTask task;
    PackageImportExport importer;
    ReturnKey returnKey { *this, [this] { resultsReturnPressed(); } };
};

} // namespace K7R
