// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentBrowser.h"

#include "core/BasePlugin.h"
#include "widgets/Icons.h"

namespace quilvane
{

namespace
{

constexpr int buttonHeight = 20, bottomRow = 25, belowPanels = 35, leftMargin = 5, spacing = 6;
constexpr int nameWidth = 300, longestName = 150;
constexpr const char* newName = "New Preset";

juce::File desktop()
{
    return juce::File::getSpecialLocation (juce::File::userDesktopDirectory);
}

} // namespace

ContentBrowser::ContentBrowser (BasePlugin& owner, const juce::String& windowTitle,
                                const juce::String& packageExtension, Listener& toTell) :
    WindowComponent (windowTitle),
    plugin (owner),
    listener (toTell),
    browserTitle (windowTitle),
    extension (packageExtension),
    content (juce::StringArray::fromTokens (owner.getCategories(), ";", "")),
    importDirectory (desktop()),
    exportDirectory (desktop()),
    sources (
        content, [this] { rebuild (Reading::whatComesIn); },
        [this]
        {
            sources.setExpanded (! sources.isExpanded());
            resized();
        }),
    filters (content,
             [this]
             {
                 results.rebuild();
                 resized();
             }),
    results (content, static_cast<ContentResults::Listener&> (*this)),
    exportButton ("Export", *Icons::create (Icons::Name::exportArrow), juce::Colour (Icons::colour)),
    importButton ("Import", *Icons::create (Icons::Name::import), juce::Colour (Icons::colour)),
    editButton ("Edit Mode", *Icons::create (Icons::Name::edit), juce::Colour (Icons::colour)),
    deleteButton ("Delete", *Icons::create (Icons::Name::bin), juce::Colour (Icons::colour)),
    leftRow (ComponentRow::Direction::horizontal, ComponentRow::Alignment::start, spacing),
    browseRow (ComponentRow::Direction::horizontal, ComponentRow::Alignment::start, spacing),
    saveRow (ComponentRow::Direction::horizontal, ComponentRow::Alignment::start, spacing),
    importer (*this, static_cast<PackageImportExport::Listener&> (*this))
{
    escapeCloses = false; // it's told from the close button below

    for (auto* button : { &okButton, &cancelButton, &saveButton, &saveCancelButton })
        button->setSize (getLookAndFeel().getTextButtonWidthToFitText (*button, buttonHeight), buttonHeight);

    for (auto* button : { &editButton, &deleteButton, &exportButton, &importButton })
    {
        button->setSize (getLookAndFeel().getTextButtonWidthToFitText (*button, buttonHeight) + buttonHeight,
                         buttonHeight);
        leftRow.add (*button);
    }

    for (auto* button :
         std::initializer_list<juce::Button*> { &okButton, &cancelButton, &saveButton, &saveCancelButton, &editButton,
                                                &deleteButton, &exportButton, &importButton })
        button->addListener (this);

    editButton.setClickingTogglesState (true);
    editButton.setTooltip ("Rename, tag, delete, import and export your presets");
    deleteButton.setTooltip ("Delete the selected presets");
    exportButton.setTooltip ("Save the selected presets as one archive");
    importButton.setTooltip ("Add the presets of an archive to yours");

    nameEditor.setTitle ("Name of the preset");
    nameEditor.setSize (nameWidth, buttonHeight);
    nameEditor.setText (newName, false);
    nameEditor.setInputRestrictions (longestName);
    nameEditor.setSelectAllWhenFocused (true);
    nameEditor.addListener (this);

    browseRow.add (okButton);
    browseRow.add (cancelButton);
    saveRow.add (nameEditor);
    saveRow.add (saveButton);
    saveRow.add (saveCancelButton);

    results.setMultiSelect (true);

    for (auto* panel : std::initializer_list<juce::Component*> { &sources, &filters, &results, &leftRow })
        addAndMakeVisible (panel);

    addChildComponent (browseRow);
    addChildComponent (saveRow);
    updateLayout();
}

ContentBrowser::~ContentBrowser()
{
    nameEditor.removeListener (this);
}

void ContentBrowser::addSource (ContentSource* source)
{
    if (! content.addSource (source))
        return;

    sources.addSource (*source);
    rebuild (Reading::nothing);
}

//==============================================================================
void ContentBrowser::releaseItems()
{
    results.releaseItems();

    if (tagEditor != nullptr)
        tagEditor->releaseItems();
}

void ContentBrowser::rebuild (Reading reading)
{
    auto* const only = isEditing() ? content.currentSource : nullptr;
    releaseItems();

    if (reading == Reading::whatComesIn)
        content.rebuild (only);
    else
        content.collect (only);

    sources.updateButtons (only);
    filters.rebuild();
    updateLayout();
}

void ContentBrowser::updateEditMode()
{
    const auto isSaving = mode == Mode::saveAs;
    const auto wantsEditor = isSaving || isEditing();
    const auto* current = isSaving ? content.find (returnItem) : nullptr;

    tagEditor.reset();
    results.setEditMode (isEditing());

    if (wantsEditor)
    {
        tagEditor = std::make_unique<ContentTagEditor> (
            content, isSaving ? ContentTagEditor::Purpose::saveAs : ContentTagEditor::Purpose::edit, false,
            current != nullptr ? current->tags : TagSet(), [this] { updateLayout(); });
        addAndMakeVisible (*tagEditor);
    }

    updateLayout();
}

void ContentBrowser::setEditMode (bool shouldEdit)
{
    if (mode != Mode::browse)
        return;

    editButton.setToggleState (shouldEdit, juce::dontSendNotification);
    updateEditMode();
    rebuild (Reading::nothing);
}

//==============================================================================
void ContentBrowser::openAt (juce::Component& editor)
{
    editor.addChildComponent (this);
    showModal (Placement::atPosition, getPosition());
}

void ContentBrowser::openBrowse (juce::Component& editor)
{
    const auto wasSaving = mode == Mode::saveAs;
    setTitle (browserTitle);
    returnItem = BrowserContent::keyOf (results.getList().getCurrentItem());
    mode = Mode::browse;

    if (wasSaving)
        rebuild (Reading::whatComesIn);

    updateEditMode();
    openAt (editor);
    results.setMultiSelect (true);
    results.flush();
    selectionChanged();

    if (isShowing())
        results.grabKeyboardFocus();

    listener.browserOpened (*this);
}

void ContentBrowser::openSaveAs (juce::Component& editor)
{
    auto* source = content.currentSource;

    if (source == nullptr || ! source->canSave() || mode == Mode::saveAs)
        return;

    setTitle (browserTitle + " - Save As");
    mode = Mode::saveAs;
    results.flush();
    returnItem = BrowserContent::keyOf (results.getList().getCurrentItem());

    // All of the user's items, whatever is filtered.
    results.releaseItems();
    source->enabled = true;
    source->reload();
    content.collect (source);
    results.setMultiSelect (false);
    results.show (content.getItems());

    auto* item = content.find (returnItem);
    results.selectItem (item, false);
    nameEditor.setText (item != nullptr ? item->name : juce::String (newName), false);
    updateEditMode();
    openAt (editor);

    if (isShowing())
        nameEditor.grabKeyboardFocus();

    listener.browserOpened (*this);
}

void ContentBrowser::close (bool confirmed)
{
    alert.reset();
    chooser.reset();
    importer.stop();

    const auto previousMode = std::exchange (mode, Mode::browse);
    updateEditMode();

    if (previousMode == Mode::saveAs)
    {
        setTitle (browserTitle);
        results.setMultiSelect (true);
        rebuild (Reading::whatComesIn);
        results.flush();
    }

    if (! confirmed)
        results.selectItem (content.find (returnItem), false);

    hideModal();
    listener.browserClosed (*this, previousMode, confirmed);
}

void ContentBrowser::dismiss()
{
    close (mode == Mode::browse);
}

//==============================================================================
void ContentBrowser::updateLayout()
{
    const auto isBrowsing = mode == Mode::browse;
    const auto hasSource = content.currentSource != nullptr && content.currentSource->enabled;
    const auto hasSelection = results.getList().getNumSelected() > 0;
    const auto isBusy = importer.isImporting();

    browseRow.setVisible (isBrowsing);
    saveRow.setVisible (! isBrowsing);
    saveButton.setEnabled (nameEditor.getText().trim().isNotEmpty());

    editButton.setVisible (isBrowsing && hasSource && ! resultsExpanded);
    editButton.setEnabled (! isBusy);
    importButton.setVisible (isEditing());
    importButton.setEnabled (! isBusy);

    for (auto* button : { &deleteButton, &exportButton })
        button->setVisible (isEditing() && hasSelection && ! isBusy);

    filters.setVisible (tagEditor == nullptr && ! resultsExpanded);
    resized();
}

void ContentBrowser::resized()
{
    WindowComponent::resized();

    const auto area = getContentArea();
    auto panels = area.withTrimmedBottom (belowPanels);
    constexpr int gap = 4;

    sources.setBounds (panels.removeFromLeft (sources.getPreferredWidth()));
    panels.removeFromLeft (gap);

    if (tagEditor != nullptr)
    {
        tagEditor->setBounds (panels.removeFromLeft (tagEditor->getPreferredWidth()));
        panels.removeFromLeft (gap);
    }
    else if (filters.isVisible())
    {
        filters.setBounds (panels.removeFromLeft (filters.getPreferredWidth()));
        panels.removeFromLeft (gap);
    }

    results.setBounds (panels);

    const auto rowTop = area.getBottom() - bottomRow;
    leftRow.setTopLeftPosition (area.getX() + leftMargin, rowTop);
    browseRow.setTopLeftPosition (area.getRight() - browseRow.getWidth(), rowTop);
    saveRow.setTopLeftPosition (area.getRight() - saveRow.getWidth(), rowTop);
}

//==============================================================================
void ContentBrowser::selectionChanged()
{
    if (tagEditor != nullptr && mode == Mode::browse)
        tagEditor->setItems (results.getList().getSelectedItems());

    updateLayout();
}

void ContentBrowser::itemClicked (ContentItem& item)
{
    if (mode == Mode::browse)
    {
        if (! item.source->loadItem (item.name))
            listener.browserMessage ("'" + item.name + "' can't be read");
    }
    else
    {
        nameEditor.setText (item.name, false);

        if (tagEditor != nullptr)
            tagEditor->setTags (item.tags);

        if (isShowing())
            nameEditor.grabKeyboardFocus();
    }

    selectionChanged();
}

void ContentBrowser::itemDoubleClicked (ContentItem&)
{
    if (mode == Mode::browse)
        close (true);
}

void ContentBrowser::resultsReturnPressed()
{
    if (mode == Mode::browse)
        close (true);
    else
        save();
}

void ContentBrowser::resultsExpandClicked()
{
    resultsExpanded = ! resultsExpanded;
    results.setExpanded (resultsExpanded);
    updateLayout();
}

void ContentBrowser::itemRenamed (ContentItem& item)
{
    results.rebuild();
    results.flush();
    results.selectItem (&item, false);
}

void ContentBrowser::buttonClicked (juce::Button* button)
{
    if (button == &getCloseButton() || button == &cancelButton || button == &saveCancelButton)
        close (false);
    else if (button == &okButton)
        close (true);
    else if (button == &saveButton)
        save();
    else if (button == &editButton)
        setEditMode (editButton.getToggleState());
    else if (button == &deleteButton)
        deleteSelected();
    else if (button == &exportButton)
        chooseExport();
    else if (button == &importButton)
        chooseImport();
}

bool ContentBrowser::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress::escapeKey)
        close (false);
    else if (key == juce::KeyPress::returnKey)
        resultsReturnPressed();
    else if (key == juce::KeyPress::deleteKey && deleteButton.isVisible())
        deleteSelected();
    else
        return false;

    return true;
}

//==============================================================================
void ContentBrowser::save()
{
    auto* source = content.currentSource;
    const auto name = nameEditor.getText().trim();

    if (source == nullptr || ! source->canSave() || name.isEmpty())
        return;

    if (! source->containsItem (name))
        return performSave();

    question = Question::overwrite;
    alert = K7R::AlertWindow::open (static_cast<K7R::AlertWindow::Caller*> (this), "Overwrite confirmation",
                                    "Preset already exists.\nDo you want to overwrite it?", K7R::AlertWindow::yesOrNo,
                                    this);
}

void ContentBrowser::performSave()
{
    auto& source = *content.currentSource;
    const auto name = nameEditor.getText().trim();
    const auto tags = tagEditor != nullptr ? tagEditor->getTags().withoutEmptyCategories() : TagSet();

    results.releaseItems();
    const auto* item = source.saveItem (name, tags);
    const auto saved = BrowserContent::keyOf (item);

    if (item != nullptr)
        source.loadItem (item->name);
    else
        listener.browserMessage ("'" + name + "' couldn't be saved");

    close (item != nullptr);

    if (auto* shown = content.find (saved))
        results.selectItem (shown, false);
}

void ContentBrowser::deleteSelected()
{
    question = Question::deletion;
    alert = K7R::AlertWindow::open (static_cast<K7R::AlertWindow::Caller*> (this), "Delete confirmation",
                                    "Do you want to delete selected files?", K7R::AlertWindow::yesOrNo, this);
}

void ContentBrowser::alertClosed (K7R::AlertWindow*, int result)
{
    const auto answered = std::move (alert);

    if (result != K7R::AlertWindow::yes)
    {
        if (question == Question::overwrite && isShowing())
            nameEditor.grabKeyboardFocus();

        return;
    }

    if (question == Question::overwrite)
        return performSave();

    const auto selected = results.getList().getSelectedItems();
    int numKept = 0;

    releaseItems();

    for (auto* item : selected)
    {
        content.remove (*item);

        if (! item->source->removeItem (*item))
        {
            content.insert (*item);
            ++numKept;
        }
    }

    if (numKept > 0)
        listener.browserMessage (juce::String (numKept) + " of the files couldn't be deleted");

    rebuild (Reading::nothing);
}

//==============================================================================
juce::String ContentBrowser::getProposedExportName() const
{
    auto name = plugin.getProductName() + " - " + browserTitle;

    if (! plugin.getReleaseChannel().equalsIgnoreCase ("master"))
        name << " - " << juce::Time::getCurrentTime().formatted ("%Y-%m-%d - %H_%M_%S") << " - " << plugin.getBuildId();

    return name + extension;
}

void ContentBrowser::chooseExport()
{
    const auto folder = exportDirectory.isDirectory() ? exportDirectory : desktop();

    chooser = std::make_unique<FileChooserWindow> ("Export items", FileChooserWindow::Mode::save, extension,
                                                   folder.getChildFile (getProposedExportName()),
                                                   [this] (const juce::File& file)
                                                   {
                                                       const auto finished = std::move (chooser);

                                                       if (file != juce::File())
                                                           exportTo (file.withFileExtension (extension));
                                                   });
    chooser->show (*this);
}

void ContentBrowser::exportTo (const juce::File& file)
{
    exportDirectory = file.getParentDirectory();

    std::vector<ContentItem*> items;

    for (auto* item : results.getList().getSelectedItems())
        if (item->source == content.currentSource)
            items.push_back (item);

    listener.browserMessage (PackageImportExport::exportItems (items, file)
                                 ? "Exported: " + file.getFileName()
                                 : "'" + file.getFullPathName() + "' couldn't be written");
}

void ContentBrowser::chooseImport()
{
    chooser = std::make_unique<FileChooserWindow> ("Import package", FileChooserWindow::Mode::open, extension,
                                                   importDirectory,
                                                   [this] (const juce::File& file)
                                                   {
                                                       const auto finished = std::move (chooser);

                                                       if (file != juce::File())
                                                           importFile (file);
                                                   });
    chooser->show (*this);
}

void ContentBrowser::importFile (const juce::File& file)
{
    if (content.currentSource == nullptr)
        return;

    importDirectory = file.getParentDirectory();
    imported.clear();

    if (! importer.startImport (file, *content.currentSource))
        return listener.browserMessage ("'" + file.getFileName() + "' is no archive of presets");

    results.selectItem (nullptr, false);
    updateLayout();
}

void ContentBrowser::itemImported (ContentItem& item)
{
    content.insert (item);
    imported.push_back (BrowserContent::keyOf (&item));
}

void ContentBrowser::itemGoes (ContentItem& item)
{
    releaseItems();

    content.remove (item);
}

void ContentBrowser::importProgressed (int numDone, int numEntries)
{
    setTitle (browserTitle + " - Importing " + juce::String (numDone) + " of " + juce::String (numEntries));
}

void ContentBrowser::importFinished (int numImported)
{
    setTitle (browserTitle);
    rebuild (Reading::nothing);
    results.flush();
    results.selectKeys (imported);
    listener.browserMessage (numImported == 1 ? juce::String ("1 preset imported")
                                              : juce::String (numImported) + " presets imported");
}

} // namespace quilvane
