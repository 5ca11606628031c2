// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/ListenerArray.h"
#include "widgets/controls/FieldWatcher.h"

namespace K7R
{

/** Edits a value in place, over the control that shows it: from startEditing() until Return, Escape or the loss of the
    focus it lies on the editor, where nothing clips it; on no window of the host's, which deletes what it holds. For
    the message thread. */
class ModalTextEditor final : public juce::TextEditor, private juce::TextEditor::Listener
{
public:
    class ModalListener
    {
    public:
        virtual ~ModalListener() = default;

        /** The editing is over. */
        virtual void modalEditingFinished (ModalTextEditor&) {}

        /** After that: it left another text than it began with. */
        virtual void modalTextChanged (ModalTextEditor&, const juce::String& newText) = 0;
    };

    explicit ModalTextEditor (const juce::String& name = {});

    /** Does nothing without a parent, or while it edits already. */
    void startEditing();
    bool isEditing() const noexcept { return editing; }

    /** Ends the editing with the text as it is, as Return does; does nothing without one. */
    void finishEditing();

    /** Ends the editing with the text that stood there before, as Escape does. */
    void cancelEditing();

    void addModalListener (ModalListener* listener) { modalListeners.add (listener); }
    void removeModalListener (ModalListener* listener) { modalListeners.remove (listener); }

private:
    void textEditorReturnKeyPressed (juce::TextEditor&) override { finishEditing(); }
    void textEditorEscapeKeyPressed (juce::TextEditor&) override { cancelEditing(); }
    void textEditorFocusLost (juce::TextEditor&) override;

    FieldWatcher fieldWatcher { *this, [this] { finishEditing(); } };
    ListenerArray<ModalListener> modalListeners;
    bool editing = false;
    juce::String oldText;
    juce::Rectangle<int> oldBounds;
    juce::Component::SafePointer<juce::Component> oldParent;
};

} // namespace K7R
