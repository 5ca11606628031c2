// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/InputTextWindow.h"

namespace K7R
{

namespace
{

constexpr int editorHeight = 22, editorWidth = 300, roomAbove = 6;
constexpr int longestInput = 200; // characters, of which names of files have room for

} // namespace

InputTextWindow::InputTextWindow (Caller* toTell, const juce::String& windowTitle, const juce::String& question,
                                  const juce::String& initialText) :
    AlertWindow (toTell, windowTitle, question)
{
    addButton (ok, false, true);
    addButton (cancel, true, false);

    editor.setTitle (question);
    editor.setInputRestrictions (longestInput);
    editor.setText (initialText, false);
    editor.addListener (this);
    addAndMakeVisible (editor);
    InputTextWindow::lookAndFeelChanged();
}

int InputTextWindow::getExtraHeight() const
{
    return editorHeight + roomAbove;
}

int InputTextWindow::getLeastTextWidth() const
{
    return editorWidth;
}

void InputTextWindow::resized()
{
    AlertWindow::resized();
    editor.setBounds (getExtraArea().removeFromBottom (editorHeight));
}

void InputTextWindow::lookAndFeelChanged()
{
    juce::Label like;
    editor.applyFontToAllText (getLookAndFeel().getLabelFont (like));
    AlertWindow::lookAndFeelChanged();
}

std::vector<juce::Component*> InputTextWindow::getFocusOrder()
{
    auto order = AlertWindow::getFocusOrder();
    order.insert (order.begin(), &editor);
    return order;
}

void InputTextWindow::handleAsyncUpdate()
{
    if (! isShowing())
        return;

    editor.grabKeyboardFocus();
    editor.selectAll();
}

} // namespace K7R
