// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/windows/AlertWindow.h"

namespace K7R
{

/** Asks for a line of text. Return is "OK", and Escape is "Cancel". */
class InputTextWindow final : public AlertWindow, private juce::TextEditor::Listener
{
public:
    InputTextWindow (Caller*, const juce::String& title, const juce::String& message, const juce::String& initialText);

    /** What stands in the line; for alertClosed(). */
    juce::String getInput() const { return editor.getText(); }

    void resized() override;
    void lookAndFeelChanged() override;

private:
    std::vector<juce::Component*> getFocusOrder() override;
    int getExtraHeight() const override;
    int getLeastTextWidth() const override;
    void handleAsyncUpdate() override;
    void textEditorReturnKeyPressed (juce::TextEditor&) override { focusButton->triggerClick(); }
    void textEditorEscapeKeyPressed (juce::TextEditor&) override { escapeButton->triggerClick(); }

    juce::TextEditor editor;
};

} // namespace K7R
