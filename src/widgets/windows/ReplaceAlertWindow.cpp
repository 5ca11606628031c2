// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/ReplaceAlertWindow.h"

namespace K7R
{

ReplaceAlertWindow::ReplaceAlertWindow (AlertWindow::Caller* toTell, const juce::String& windowTitle,
                                        const juce::String& name, const juce::String& others,
                                        const juce::String& proposedName) :
    AlertWindow (toTell, windowTitle,
                 "'" + shorten (name) + "'"
                     + (others.isEmpty() ? " already exists" : " and " + others + " already exist")
                     + ". Please choose an option:"),
    newName (proposedName)
{
    constexpr int codes[] = { replace, replaceAll, rename, skip, skipAll };

    for (int i = 0; i < static_cast<int> (std::size (codes)); ++i)
    {
        addButton (codes[i], false, codes[i] == skip);

        if (codes[i] == rename)
            renameIndex = i;
    }

    addButton (cancel, true, false);
}

void ReplaceAlertWindow::closeWithButton (int buttonIndex)
{
    if (buttonIndex != renameIndex)
        return AlertWindow::closeWithButton (buttonIndex);

    input = std::make_unique<InputTextWindow> (this, "Rename", "Please enter new name", newName);
    input->show (*this);
}

void ReplaceAlertWindow::dismiss()
{
    input.reset();
    AlertWindow::dismiss();
}

void ReplaceAlertWindow::alertClosed (AlertWindow*, int result)
{
    const auto answered = std::move (input);

    if (result != ok)
        return triggerAsyncUpdate(); // back to the options

    newName = answered->getInput();
    close (rename);
}

} // namespace K7R
