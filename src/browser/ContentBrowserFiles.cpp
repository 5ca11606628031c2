// SPDX-License-Identifier: GPL-3.0-or-later

// The browser's questions before it saves, deletes, exports and imports.

#include "browser/ContentBrowser.h"
#include "core/BasePlugin.h"

namespace K7R
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

juce::String ContentBrowser::getTypedName() const
{
    const auto text = nameEditor.getText();

    // A name from the list is that one, blanks and all.
    return content.currentSource->containsItem (text) ? text : text.trim();
}

void ContentBrowser::save()
{
    using Kind = ContentPlacement::Kind;

    const auto* source = content.currentSource;

    if (source == nullptr || ! source->canSave() || nameEditor.getText().trim().isEmpty())
        return;

    const auto name = getTypedName();
    const auto target = source->place (name);

    if (target.kind == Kind::free)
        return performSave (name);

    if (target.kind == Kind::sameItem)
    {
        question = Question::overwrite;
        itemInQuestion = target.name;
        alert = AlertWindow::open (static_cast<AlertWindow::Caller*> (this), "Overwrite confirmation",
                                   BrowserTexts::askToOverwrite (target.name), AlertWindow::yesOrNo, this);
        return;
    }

    // Nothing is saved to a file that isn't the name's own: another name is proposed.
    question = Question::otherName;
    alert = std::make_unique<InputTextWindow> (
        static_cast<AlertWindow::Caller*> (this), "Save under another name",
        BrowserTexts::refuseName (name, target) + "\nPlease enter another name:", source->uniqueItemName (name));
    alert->show (*this);
}

void ContentBrowser::performSave (const juce::String& name)
{
    auto& source = *content.currentSource;
    const auto tags = tagEditor != nullptr ? tagEditor->getTags().withoutEmptyCategories() : TagSet();

    results.releaseItems();
    const auto* item = source.saveItem (name, tags);

    if (item == nullptr)
    {
        // The typed name and the ticked tags stay for another try.
        results.show (content.getItems());
        listener.browserMessage ("'" + name + "' couldn't be saved");

        if (isShowing())
            nameEditor.grabKeyboardFocus();

        return;
    }

    const auto saved = BrowserContent::keyOf (item);
    source.loadItem (saved.name);
    content.showSource (source);
    close (true);

    // The ticks stay unless they hide it.
    if (const auto* shown = content.find (saved); shown != nullptr && shown->hidden)
    {
        rebuild (Reading::nothing, Ticks::discarded);
        results.flush();
    }

    results.selectItem (content.find (saved), false);

    if (saved.name != name)
        listener.browserMessage ("'" + name + "' is saved as '" + saved.name + "'");
}

void ContentBrowser::deleteSelected()
{
    question = Question::deletion;
    alert = AlertWindow::open (static_cast<AlertWindow::Caller*> (this), "Delete confirmation",
                               BrowserTexts::askToDelete (results.getList().getSelectedItems()), AlertWindow::yesOrNo,
                               this);
}

void ContentBrowser::alertClosed (AlertWindow*, int result)
{
    const auto answered = std::move (alert);

    if (result == AlertWindow::ok && question == Question::otherName)
    {
        nameEditor.setText (static_cast<const InputTextWindow&> (*answered).getInput());
        nameEditor.grabKeyboardFocus();
        return save();
    }

    if (result != AlertWindow::yes)
    {
        if (question != Question::deletion && isShowing())
            nameEditor.grabKeyboardFocus();

        return;
    }

    if (question == Question::deletion)
        return performDelete();

    // Only what was named in the question is overwritten.
    const auto name = getTypedName();
    const auto isAsAsked = content.currentSource->place (name).name == itemInQuestion;
    isAsAsked ? performSave (name) : save();
}

//==============================================================================
juce::String ContentBrowser::getProposedExportName() const
{
    auto name = plugin.getProductName() + " - " + browserTitle;

    if (! plugin.isRelease())
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

void ContentBrowser::chooseImport()
{
    FileChooserWindow::ask (chooser, *this, "Import package", FileChooserWindow::Mode::open, extension, importDirectory,
                            [this] (const juce::File& file) { importFile (file); });
}

} // namespace K7R
