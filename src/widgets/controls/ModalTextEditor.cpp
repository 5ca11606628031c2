// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ModalTextEditor.h"

namespace K7R
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

    if (auto* const desktop = ModalComponent::findDesktop (*parent); desktop != nullptr && desktop != parent)
    {
        const auto place = desktop->getLocalArea (parent, oldBounds);
        desktop->addAndMakeVisible (this);
        setBounds (place);
    }

    setVisible (true);
    toFront (false);
    selectAll();

    // A press on what takes no focus ends the editing, too.
    fieldWatcher.start();

    if (isShowing())
        grabKeyboardFocus();
}

void ModalTextEditor::cancelEditing()
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

    fieldWatcher.stop();

    if (oldParent != nullptr && getParentComponent() != oldParent)
        oldParent->addAndMakeVisible (this);

    setBounds (oldBounds);

    const auto text = getText();
    const juce::Component::SafePointer<ModalTextEditor> safe (this);
    modalListeners.call ([this] (auto& listener) { listener.modalEditingFinished (*this); });

    if (safe != nullptr && text != oldText)
        modalListeners.call ([&] (auto& listener) { listener.modalTextChanged (*this, text); });
}

} // namespace K7R
