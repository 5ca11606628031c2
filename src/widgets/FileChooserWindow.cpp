// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/FileChooserWindow.h"

namespace quilvane
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

/** A folder that is there, so that the list isn't empty for one that went. */
juce::File startOf (const juce::File& wanted)
{
    for (auto file = wanted; file != juce::File(); file = file.getParentDirectory())
    {
        if (file.isDirectory() || (file == wanted && file.getParentDirectory().isDirectory()))
            return file;

        if (file.isRoot())
            break;
    }

    return juce::File::getSpecialLocation (juce::File::userHomeDirectory);
}

} // namespace

FileChooserWindow::FileChooserWindow (const juce::String& windowTitle, Mode wantedMode,
                                      const juce::String& fileExtension, const juce::File& start, Callback toCall) :
    WindowComponent (windowTitle),
    mode (wantedMode),
    extension (fileExtension),
    callback (std::move (toCall)),
    filter (extension.isEmpty() ? "*" : "*" + extension, "*", {}),
    browser (flagsOf (mode), startOf (start), &filter, nullptr),
    okButton (mode == Mode::save ? "Save" : "Open")
{
    browser.addListener (this);
    browser.setTitle (windowTitle);
    addAndMakeVisible (browser);

    for (auto* button : { &okButton, &cancelButton })
    {
        button->setSize (buttonWidth, buttonHeight);
        button->addListener (this);
        addAndMakeVisible (button);
    }

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

    question = K7R::AlertWindow::open (this, "Overwrite confirmation",
                                       "'" + K7R::AlertWindow::shorten (file.getFileName())
                                           + "' already exists.\nDo you want to overwrite it?",
                                       K7R::AlertWindow::yesOrNo, this);
}

void FileChooserWindow::alertClosed (K7R::AlertWindow*, int result)
{
    question.reset();

    if (result == K7R::AlertWindow::yes)
        finish (getChosen());
}

void FileChooserWindow::finish (const juce::File& file)
{
    hideModal();

    // The owner may delete this, and the callback with it.
    if (const auto toCall = std::exchange (callback, nullptr))
        toCall (file);
}

void FileChooserWindow::dismiss()
{
    question.reset();
    finish ({});
}

void FileChooserWindow::buttonClicked (juce::Button* button)
{
    if (button == &okButton)
        accept();
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

} // namespace quilvane
