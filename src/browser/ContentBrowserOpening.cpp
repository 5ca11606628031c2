// SPDX-License-Identifier: GPL-3.0-or-later

// How the browser opens and closes, and what is selected then.

#include <utility>

#include "browser/ContentBrowser.h"
#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"

namespace K7R
{

juce::String ContentBrowser::getLoadedName() const
{
    return plugin.getParameters().getValueString (frameworkIds::presetName);
}

void ContentBrowser::selectLoaded()
{
    results.flush();
    const auto name = getLoadedName();

    // An item that couldn't be loaded stays the one from which next and previous go on.
    if (name == std::exchange (loadedName, name))
        return;

    if (const auto* current = results.getList().getCurrentItem(); current == nullptr || current->name != name)
        results.selectItem (content.findNamed (name), false);
}

void ContentBrowser::selectAdjacent (int distance)
{
    selectLoaded();
    results.selectAdjacent (distance);
}

void ContentBrowser::clearSelection()
{
    loadedName = getLoadedName();
    results.selectItem (nullptr, false);
}

void ContentBrowser::openAt (juce::Component& editor)
{
    editor.addChildComponent (this);
    showModal (Placement::atPosition, getPosition());
}

void ContentBrowser::openBrowse (juce::Component& editor)
{
    task.stop(); // it holds items
    const auto wasSaving = mode == Mode::saveAs;
    setTitle (browserTitle);
    mode = Mode::browse;

    // Other programs and instances write to the user's folder, too.
    if (wasSaving || content.isStale())
        rebuild (Reading::whatComesIn, Ticks::kept);

    updateEditMode();
    results.setMultiSelect (true);
    selectLoaded();
    returnItem = BrowserContent::keyOf (results.getList().getCurrentItem());
    openAt (editor);
    selectionChanged();

    if (isShowing())
        results.grabKeyboardFocus();

    listener.browserOpened (*this);
}

void ContentBrowser::openSaveAs (juce::Component& editor)
{
    task.stop(); // it holds items
    auto* source = content.currentSource;

    if (source == nullptr || ! source->canSave() || mode == Mode::saveAs)
        return;

    if (isEditing())
        setEditMode (false);

    // The tags that will be saved are seen.
    if (resultsExpanded)
        resultsExpandClicked();

    setTitle (browserTitle + " - Save As");
    mode = Mode::saveAs;
    selectLoaded();

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
    task.stop();
    results.cancelRenaming();

    if (isEditing())
        setEditMode (false);

    const auto previousMode = std::exchange (mode, Mode::browse);
    updateEditMode();

    if (previousMode == Mode::saveAs)
    {
        setTitle (browserTitle);
        results.setMultiSelect (true);
        rebuild (Reading::whatComesIn, Ticks::kept);
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

} // namespace K7R
