// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentBrowser.h"

#include <utility>

#include "core/BasePlugin.h"
#include "widgets/Icons.h"

namespace quilvane
{

namespace
{

constexpr int buttonHeight = 20, bottomRow = 25, belowPanels = 35, leftMargin = 5, spacing = 6;
constexpr int nameWidth = 300, longestName = 150;
constexpr const char* newName = "New Preset";

} // namespace

ContentBrowser::ContentBrowser (BasePlugin& owner, const juce::String& windowTitle,
                                const juce::String& packageExtension, Listener& toTell) :
    WindowComponent (windowTitle),
    plugin (owner),
    listener (toTell),
    browserTitle (windowTitle),
    extension (packageExtension),
    content (juce::StringArray::fromTokens (owner.getCategories(), ";", "")),
    importDirectory (juce::File::getSpecialLocation (juce::File::userDesktopDirectory)),
    exportDirectory (importDirectory),
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

void ContentBrowser::rebuild (Reading reading, Ticks ticks)
{
    auto* const only = isEditing() ? content.currentSource : nullptr;
    releaseItems();

    if (reading == Reading::whatComesIn)
        content.rebuild (only);
    else
        content.collect (only);

    if (ticks == Ticks::kept)
        filters.refresh();
    else
        filters.rebuild();

    updateLayout();
}

void ContentBrowser::updateEditMode (const TagSet& tagsToSave)
{
    const auto isSaving = mode == Mode::saveAs;
    const auto wantsEditor = isSaving || isEditing();

    tagEditor.reset();
    results.setEditMode (isEditing());

    if (wantsEditor)
    {
        tagEditor = std::make_unique<ContentTagEditor> (
            content, isSaving ? ContentTagEditor::Purpose::saveAs : ContentTagEditor::Purpose::edit, false, tagsToSave,
            [this] { updateLayout(); });
        addAndMakeVisible (*tagEditor);
    }

    sources.updateButtons (wantsEditor ? content.currentSource : nullptr);
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

    const auto* current = results.getList().getCurrentItem();
    const auto tags = current != nullptr ? current->tags : TagSet();
    returnItem = BrowserContent::keyOf (current);
    nameEditor.setText (current != nullptr ? current->name : juce::String (newName), false);

    // All of the user's items, whatever is filtered.
    releaseItems();
    source->enabled = true;
    source->reload();
    content.collect (source);
    results.setMultiSelect (false);
    results.show (content.getItems());
    results.selectItem (content.find (returnItem), false);
    updateEditMode (tags);
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
    results.cancelRenaming();

    const auto previousMode = std::exchange (mode, Mode::browse);
    updateEditMode();

    if (previousMode == Mode::saveAs)
    {
        setTitle (browserTitle);
        results.setMultiSelect (true);
        rebuild (Reading::whatComesIn, confirmed ? Ticks::discarded : Ticks::kept);
    }

    results.flush();

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

void ContentBrowser::renameFailed (const ContentItem& item)
{
    listener.browserMessage ("'" + item.name + "' couldn't be renamed");
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

void ContentBrowser::itemRenamed (ContentItem& item, const juce::String& oldName)
{
    if (returnItem == BrowserContent::Key { item.source, oldName })
        returnItem.name = item.name;

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

} // namespace quilvane
