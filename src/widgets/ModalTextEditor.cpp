// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ModalTextEditor.h"

namespace quilvane
{

ModalTextEditor::ModalTextEditor (const juce::String& editorName) : juce::TextEditor (editorName)
{
    addListener (this);
}

void ModalTextEditor::startEditing()
{
    auto* const parent = getParentComponent();

    if (editing || parent == nullptr)
        return;

    oldText = getText();
    oldBounds = getBounds();
    oldParent = parent;
    editing = true;

    auto* const top = getTopLevelComponent();
    const auto place = top->getLocalArea (parent, oldBounds);

    if (top != parent)
        top->addAndMakeVisible (this);

    setBounds (place);
    setVisible (true);
    toFront (false);
    selectAll();

    // A press on what takes no focus ends the editing, too.
    watched = top;
    top->addMouseListener (&pressWatcher, true);

    if (isShowing())
        grabKeyboardFocus();
}

void ModalTextEditor::textEditorEscapeKeyPressed (juce::TextEditor&)
{
    if (editing)
        setText (oldText, false);

    finishEditing();
}

void ModalTextEditor::textEditorFocusLost (juce::TextEditor&)
{
    // The loss may be told late, when the focus is back: to go to another parent is to lose it.
    if (! hasKeyboardFocus (true))
        finishEditing();
}

void ModalTextEditor::finishEditing()
{
    // Going back takes the focus away, which ends here again.
    if (! std::exchange (editing, false))
        return;

    if (watched != nullptr)
        watched->removeMouseListener (&pressWatcher);

    if (oldParent != nullptr && getParentComponent() != oldParent)
        oldParent->addAndMakeVisible (this);

    setBounds (oldBounds);

    const auto text = getText();
    const juce::Component::SafePointer<ModalTextEditor> safe (this);
    modalListeners.call ([this] (auto& listener) { listener.modalEditingFinished (*this); });

    if (safe != nullptr && text != oldText)
        modalListeners.call ([&] (auto& listener) { listener.modalTextChanged (*this, text); });
}

} // namespace quilvane
