// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/windows/InputTextWindow.h"

namespace K7R
{

/** Asks what is to be done about a name that is taken. "Rename" asks for another one first, and ends with it; all other
    buttons end at once. Return is "Skip", which destroys nothing. */
class ReplaceAlertWindow final : public AlertWindow, public AlertWindow::Caller
{
public:
    /** @param name the one that is taken
        @param others what else "Replace All" would replace, like "3 more"; empty for nothing
        @param proposedName what the line for another name begins with */
    ReplaceAlertWindow (AlertWindow::Caller*, const juce::String& title, const juce::String& name,
                        const juce::String& others, const juce::String& proposedName);

    /** The new name after "Rename", for alertClosed(). */
    const juce::String& getNewName() const noexcept { return newName; }

    void dismiss() override;

private:
    void closeWithButton (int buttonIndex) override;
    void alertClosed (AlertWindow*, int result) override;

    juce::String newName;
    int renameIndex = -1;
    std::unique_ptr<InputTextWindow> input;
};

} // namespace K7R
