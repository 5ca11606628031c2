// SPDX-License-Identifier: GPL-3.0-or-later

// What the browser does to files: save, delete, export and import.

#include <map>

#include "browser/ContentBrowser.h"
#include "core/BasePlugin.h"

namespace quilvane
{

void ContentBrowser::textEditorReturnKeyPressed (juce::TextEditor&)
{
    // Keys are told late, and may come after the close.
    if (mode == Mode::saveAs)
        save();
}

void ContentBrowser::textEditorEscapeKeyPressed (juce::TextEditor&)
{
    if (mode == Mode::saveAs)
        close (false);
}

void ContentBrowser::save()
{
    auto* source = content.currentSource;
    const auto name = nameEditor.getText().trim();

    if (source == nullptr || ! source->canSave() || name.isEmpty())
        return;

    // A file counts, too, that came since the folder was read.
    if (! source->containsItem (name) && ! source->getItemFile (name).existsAsFile())
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

    performDelete();
}

void ContentBrowser::performDelete()
{
    const auto selected = results.getList().getSelectedItems();
    std::map<ContentSource*, std::vector<ContentItem*>> bySource;

    for (auto* item : selected)
        bySource[item->source].push_back (item);

    releaseItems();
    int numKept = 0;

    for (const auto& [source, items] : bySource)
        numKept += source->removeItems (items);

    if (numKept > 0)
        listener.browserMessage (juce::String (numKept) + " of the files couldn't be deleted");

    rebuild (Reading::nothing);

    if (isShowing())
        results.grabKeyboardFocus();
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
    const auto folder = exportDirectory.isDirectory()
                            ? exportDirectory
                            : juce::File::getSpecialLocation (juce::File::userDesktopDirectory);

    FileChooserWindow::ask (chooser, *this, "Export items", FileChooserWindow::Mode::save, extension,
                            folder.getChildFile (getProposedExportName()),
                            [this] (const juce::File& file) { exportTo (file); });
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
    FileChooserWindow::ask (chooser, *this, "Import package", FileChooserWindow::Mode::open, extension, importDirectory,
                            [this] (const juce::File& file) { importFile (file); });
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

void ContentBrowser::itemImported (ContentItem& item, bool isNew)
{
    if (isNew)
        content.insert (item);

    imported.push_back (BrowserContent::keyOf (&item));
}

void ContentBrowser::importProgressed (int numDone, int numEntries)
{
    setTitle (browserTitle + " - Importing " + juce::String (numDone) + " of " + juce::String (numEntries));
}

void ContentBrowser::importFinished (int numImported)
{
    setTitle (browserTitle);
    content.currentSource->rebuildTags();
    rebuild (Reading::nothing);
    results.flush();
    results.selectKeys (imported);
    listener.browserMessage (numImported == 1 ? juce::String ("1 preset imported")
                                              : juce::String (numImported) + " presets imported");
}

} // namespace quilvane
