// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "widgets/windows/InputTextWindow.h"

namespace K7R
{

/** Lets the user choose a file or a folder, inside the editor.

    JUCE's own chooser is modal for everything that shares its library, which in a host means all other instances, and
    the system's is a window of its own that outlives a closed editor; so this is a window like our others around
    juce::FileBrowserComponent. Folders are listed by a thread of that component; only the end of the window waits for a
    listing that is under way.

    A later question with the same title begins in the folder where the one before ended, until the plug-in is unloaded.
    Folders can be made where one is asked for, or a file is saved.

    Made for one question. The owner deletes it in the callback, or when it likes. For the message thread.
*/
class FileChooserWindow final : public WindowComponent, private juce::FileBrowserListener, private AlertWindow::Caller
{
public:
    enum class Mode
    {
        open,       // a file that exists
        save,       // asks before it gives one that exists
        openFolder, // a folder that exists
    };

    /** @param file the chosen one; juce::File() if the user left without. The window is off the screen. */
    using Callback = std::function<void (const juce::File& file)>;

    /** @param extension with its point; files of no other are shown or given. Empty for all, and for folders.
        @param start a folder, or a file whose folder is shown and whose name is proposed: the user's home where the
                     folder isn't there, and where an earlier question ended unless the file exists */
    FileChooserWindow (const juce::String& title, Mode, const juce::String& extension, const juce::File& start,
                       Callback);
    ~FileChooserWindow() override;

    /** Shows the window on the parent's editor. */
    void show (juce::Component& parent);

    /** Asks one question: makes the window in its owner's place for it and shows it, and deletes it with the answer.
        @param onChoice told of the file; not called if the user leaves without one */
    static void ask (std::unique_ptr<FileChooserWindow>& place, juce::Component& parent, const juce::String& title,
                     Mode, const juce::String& extension, const juce::File& start, Callback onChoice);

    void dismiss() override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    void selectionChanged() override;
    void fileClicked (const juce::File&, const juce::MouseEvent&) override {}
    void fileDoubleClicked (const juce::File&) override;
    void browserRootChanged (const juce::File&) override;
    void buttonClicked (juce::Button*) override;
    void alertClosed (AlertWindow*, int result) override;
    void askForFolder();
    void makeFolder (const juce::String& name);

    juce::TextEditor* findNameField() const;
    juce::File getChosen() const;
    void updateButton();
    void accept();
    void finish (const juce::File&);

    const Mode mode;
    const juce::String extension;
    Callback callback;
    juce::WildcardFileFilter filter;
    juce::FileBrowserComponent browser;
    juce::TextButton okButton, cancelButton { "Cancel" }, newFolderButton { "New Folder" };
    std::unique_ptr<AlertWindow> question;
    std::unique_ptr<InputTextWindow> folderQuestion;
};

} // namespace K7R
