// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/FileChooserWindow.h"

#include <map>

namespace K7R
{

namespace
{

constexpr int contentWidth = 520, contentHeight = 320, roomBeside = 40;
constexpr int buttonWidth = 84, buttonHeight = 22, spacing = 6, roomAboveButtons = 10;

int flagsOf (FileChooserWindow::Mode mode)
{
    using Browser = juce::FileBrowserComponent;

    switch (mode)
    {
        case FileChooserWindow::Mode::open: return Browser::openMode | Browser::canSelectFiles;
        case FileChooserWindow::Mode::save: return Browser::saveMode | Browser::canSelectFiles;
        case FileChooserWindow::Mode::openFolder: break;
    }

    return Browser::openMode | Browser::canSelectDirectories;
}

/** Where questions ended, by their titles. */
std::map<juce::String, juce::File>& lastFolders()
{
    static std::map<juce::String, juce::File> folders;
    return folders;
}

/** A file or folder in a place that is there. */
juce::File startOf (const juce::String& question, const juce::File& wanted, FileChooserWindow::Mode mode)
{
    if (wanted.existsAsFile())
        return wanted;

    const auto isFile = ! wanted.isDirectory() && mode == FileChooserWindow::Mode::save;
    const auto& last = lastFolders()[question];
    const auto folder = isFile ? wanted.getParentDirectory() : wanted;
    const auto present = last.isDirectory()     ? last
                         : folder.isDirectory() ? folder
                                                : juce::File::getSpecialLocation (juce::File::userHomeDirectory);
    return isFile ? present.getChildFile (wanted.getFileName()) : present;
}

} // namespace

FileChooserWindow::FileChooserWindow (const juce::String& windowTitle, Mode wantedMode,
                                      const juce::String& fileExtension, const juce::File& start, Callback toCall) :
    WindowComponent (windowTitle),
    mode (wantedMode),
    extension (fileExtension),
    callback (std::move (toCall)),
    filter (extension.isEmpty() ? "*" : "*" + extension, "*", {}),
    browser (flagsOf (mode), startOf (windowTitle, start, mode), &filter, nullptr),
    okButton (mode == Mode::save ? "Save" : "Open")
{
    browser.addListener (this);
    browser.setTitle (windowTitle);
    addAndMakeVisible (browser);

    for (auto* button : { &okButton, &cancelButton, &newFolderButton })
    {
        button->setSize (buttonWidth, buttonHeight);
        button->addListener (this);
        addAndMakeVisible (button);
    }

    newFolderButton.setVisible (mode != Mode::open);

    updateButton();
}

FileChooserWindow::~FileChooserWindow()
{
    browser.removeListener (this);
}

void FileChooserWindow::show (juce::Component& parent)
{
    const auto* top = findDesktop (parent);

    if (top == nullptr)
        return;

    setContentSize (juce::jmin (contentWidth, top->getWidth() - 2 * roomBeside),
                    juce::jmin (contentHeight, top->getHeight() - 3 * roomBeside));
    parent.addChildComponent (this);
    open();

    // The keyboard begins at the name; the field keeps Escape to itself.
    if (auto* field = findNameField())
    {
        field->onEscapeKey = [this] { dismiss(); };

        if (isShowing())
            field->grabKeyboardFocus();
    }
}

void FileChooserWindow::ask (std::unique_ptr<FileChooserWindow>& place, juce::Component& parent,
                             const juce::String& title, Mode mode, const juce::String& extension,
                             const juce::File& start, Callback onChoice)
{
    const auto answer = [&place, toCall = std::move (onChoice)] (const juce::File& file)
    {
        const auto finished = std::move (place);

        if (file != juce::File())
            toCall (file);
    };

    place = std::make_unique<FileChooserWindow> (title, mode, extension, start, answer);
    place->show (parent);
}

juce::TextEditor* FileChooserWindow::findNameField() const
{
    for (auto* child : browser.getChildren())
        if (auto* field = dynamic_cast<juce::TextEditor*> (child))
            return field;

    return nullptr;
}

void FileChooserWindow::resized()
{
    WindowComponent::resized();

    auto area = getContentArea();
    auto row = area.removeFromBottom (buttonHeight);
    area.removeFromBottom (roomAboveButtons);
    cancelButton.setBounds (row.removeFromRight (buttonWidth));
    row.removeFromRight (spacing);
    okButton.setBounds (row.removeFromRight (buttonWidth));
    newFolderButton.setBounds (row.removeFromLeft (buttonWidth));
    browser.setBounds (area);
}

//==============================================================================
juce::File FileChooserWindow::getChosen() const
{
    auto file = browser.getSelectedFile (0);

    // The folder that is shown, if none in it is chosen.
    if (mode == Mode::openFolder && ! file.isDirectory())
        file = browser.getRoot();

    // A name of one's own gets the extension; a folder that stands there isn't a name.
    if (mode == Mode::save && file != juce::File() && ! file.isDirectory() && extension.isNotEmpty())
    {
        const auto name = file.getFileName();
        file = file.getSiblingFile (
            (name.endsWithIgnoreCase (extension) ? name.dropLastCharacters (extension.length()) : name) + extension);
    }

    return file;
}

void FileChooserWindow::updateButton()
{
    const auto file = getChosen();
    const auto isUsable = mode == Mode::open         ? file.existsAsFile()
                          : mode == Mode::openFolder ? file.isDirectory()
                                                     : file != juce::File() && ! file.isDirectory();
    okButton.setEnabled (isUsable);
}

void FileChooserWindow::selectionChanged()
{
    updateButton();
}

void FileChooserWindow::browserRootChanged (const juce::File&)
{
    updateButton();
}

void FileChooserWindow::fileDoubleClicked (const juce::File& file)
{
    if (! file.isDirectory())
        accept();
}

void FileChooserWindow::accept()
{
    updateButton();

    if (! okButton.isEnabled())
        return;

    const auto file = getChosen();

    if (mode != Mode::save || ! file.exists())
        return finish (file);

    question = AlertWindow::open (this, "Overwrite confirmation",
                                  "'" + AlertWindow::shorten (file.getFileName())
                                      + "' already exists.\nDo you want to overwrite it?",
                                  AlertWindow::yesOrNo, this);
}

void FileChooserWindow::askForFolder()
{
    folderQuestion = std::make_unique<InputTextWindow> (static_cast<AlertWindow::Caller*> (this), "New folder",
                                                        "Please enter its name", "New Folder");
    folderQuestion->show (*this);
}

void FileChooserWindow::makeFolder (const juce::String& name)
{
    const auto legal = juce::File::createLegalFileName (name.trim());
    const auto folder = browser.getRoot().getChildFile (legal);

    if (legal.isNotEmpty() && ! legal.containsOnly (".") && folder.createDirectory().wasOk())
    {
        browser.setRoot (folder);

        if (auto* field = findNameField(); field != nullptr && field->isShowing())
            field->grabKeyboardFocus();

        return;
    }

    question = AlertWindow::open (this, "New folder", "'" + AlertWindow::shorten (name) + "' couldn't be made here.",
                                  AlertWindow::okOnly, this);
}

void FileChooserWindow::alertClosed (AlertWindow* alert, int result)
{
    if (alert == folderQuestion.get())
    {
        const auto answered = std::move (folderQuestion);

        if (result == AlertWindow::ok)
            makeFolder (answered->getInput());

        return;
    }

    question.reset();

    if (result == AlertWindow::yes)
        finish (getChosen());
}

void FileChooserWindow::finish (const juce::File& file)
{
    lastFolders()[getTitle()] = browser.getRoot();
    hideModal();

    // The owner may delete this, and the callback with it.
    if (const auto toCall = std::exchange (callback, nullptr))
        toCall (file);
}

void FileChooserWindow::dismiss()
{
    question.reset();
    folderQuestion.reset();
    finish ({});
}

void FileChooserWindow::buttonClicked (juce::Button* button)
{
    if (button == &okButton)
        accept();
    else if (button == &newFolderButton)
        askForFolder();
    else
        dismiss();
}

bool FileChooserWindow::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress::returnKey)
    {
        accept();
        return true;
    }

    return WindowComponent::keyPressed (key);
}

} // namespace K7R
