// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentBrowser.h"

#include <utility>

#include "core/BasePlugin.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int buttonHeight = 20, bottomRow = 25, belowPanels = 35, leftMargin = 5, spacing = 6;
constexpr int leastResults = 160, shareOfResults = 3; // a column, and one part in so many of the window
constexpr int nameWidth = 300, longestName = 150;

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
    importer (*this, task, static_cast<PackageImportExport::Listener&> (*this))
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
    {
        button->addListener (this);
        button->setMouseClickGrabsKeyboardFocus (false);
    }

    stopButton.setMouseClickGrabsKeyboardFocus (false);

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

    stopButton.onClick = [this] { task.stop(); };
    addChildComponent (stopButton);
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
            [this] (std::vector<ContentTagEditor::Change> changes) { assignTags (std::move (changes)); });
        addChildComponent (*tagEditor);
    }

    sources.updateButtons (wantsEditor ? content.currentSource : nullptr);
    updateLayout();
}

void ContentBrowser::setEditMode (bool shouldEdit)
{
    if (mode != Mode::browse)
        return;

    const auto wasEditing = tagEditor != nullptr;
    editButton.setToggleState (shouldEdit, juce::dontSendNotification);

    if (shouldEdit && ! wasEditing)
        stateBeforeEditing = filters.getState();

    updateEditMode();
    rebuild (Reading::nothing, Ticks::kept);

    // The user's presets alone may have lacked what was ticked.
    if (wasEditing && ! shouldEdit)
        filters.restore (std::exchange (stateBeforeEditing, {}));
}

//==============================================================================
void ContentBrowser::updateLayout()
{
    const auto isBrowsing = mode == Mode::browse;
    const auto hasSource = content.currentSource != nullptr && content.currentSource->enabled;
    const auto hasSelection = results.getList().getNumSelected() > 0;
    const auto isBusy = task.isRunning();

    browseRow.setVisible (isBrowsing);
    saveRow.setVisible (! isBrowsing);
    saveButton.setEnabled (nameEditor.getText().trim().isNotEmpty());

    editButton.setVisible (isEditing() || (isBrowsing && hasSource && ! resultsExpanded));
    editButton.setEnabled (! isBusy);
    importButton.setVisible (isEditing());
    importButton.setEnabled (! isBusy);

    for (auto* button : { &deleteButton, &exportButton })
        button->setVisible (isEditing() && hasSelection && ! isBusy);

    filters.setVisible (tagEditor == nullptr && ! resultsExpanded);

    if (tagEditor != nullptr)
    {
        tagEditor->setVisible (! resultsExpanded);
        tagEditor->setEnabled (! isBusy);
    }

    for (auto* panel : std::initializer_list<juce::Component*> { &sources, &filters, &results })
        panel->setEnabled (! isBusy);

    stopButton.setVisible (isBusy);

    resized();
}

void ContentBrowser::resized()
{
    WindowComponent::resized();

    const auto area = getContentArea();
    auto panels = area.withTrimmedBottom (belowPanels);
    constexpr int gap = 4;

    // The results keep their room; columns that have none are scrolled to.
    const auto takeColumns = [&] (juce::Component& columns, int preferredWidth)
    {
        const auto room = panels.getWidth() - gap - juce::jmax (leastResults, area.getWidth() / shareOfResults);
        columns.setBounds (panels.removeFromLeft (juce::jlimit (0, juce::jmax (0, room), preferredWidth)));
        panels.removeFromLeft (gap);
    };

    sources.setBounds (panels.removeFromLeft (sources.getPreferredWidth()));
    panels.removeFromLeft (gap);

    if (tagEditor != nullptr && tagEditor->isVisible())
        takeColumns (*tagEditor, tagEditor->getPreferredWidth());
    else if (filters.isVisible())
        takeColumns (filters, filters.getPreferredWidth());

    results.setBounds (panels);

    const auto rowTop = area.getBottom() - bottomRow;
    leftRow.setTopLeftPosition (area.getX() + leftMargin, rowTop);
    stopButton.setBounds (deleteButton.getBounds() + leftRow.getPosition());
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

        loadedName = getLoadedName();
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
    if (task.isRunning())
        return;

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
        task.isRunning() ? task.stop() : close (false);
    else if (key == juce::KeyPress::returnKey)
        resultsReturnPressed();
    else if (key == juce::KeyPress::deleteKey && deleteButton.isVisible())
        deleteSelected();
    else
        return false;

    return true;
}

} // namespace K7R
