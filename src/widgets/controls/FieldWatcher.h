// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/windows/ModalComponent.h"

namespace K7R
{

/** Tells a field that is edited of what ends that: of presses beside it, also on what takes no focus, anywhere in the
    editor that it lies in; and of the focus that it lost. A member of the field. */
class FieldWatcher final : private juce::MouseListener
{
public:
    /** @param ended may be called when nothing is edited any more */
    FieldWatcher (juce::Component& watchedField, std::function<void()> ended) :
        field (watchedField),
        onEnd (std::move (ended))
    {
    }

    ~FieldWatcher() override { stop(); }

    void start()
    {
        stop();
        editor = ModalComponent::findDesktop (field);

        if (editor != nullptr)
            editor->addMouseListener (this, true);
    }

    void stop()
    {
        if (editor != nullptr)
            editor->removeMouseListener (this);

        editor = nullptr;
    }

    /** For the field's focusLost(). The end comes a little later: a window that closes takes the focus first, and then
        undoes the edit. */
    void fieldLostFocus()
    {
        juce::MessageManager::callAsync (
            [this, safe = juce::Component::SafePointer<juce::Component> (&field)]
            {
                if (safe != nullptr && ! safe->hasKeyboardFocus (true))
                    onEnd();
            });
    }

private:
    void mouseDown (const juce::MouseEvent& e) override
    {
        // A menu of the field's own lies beside it.
        if (e.originalComponent != &field && ! field.isParentOf (e.originalComponent)
            && juce::Component::getNumCurrentlyModalComponents() == 0)
            onEnd();
    }

    juce::Component& field;
    const std::function<void()> onEnd;
    juce::Component::SafePointer<juce::Component> editor; // while it's watched
};

} // namespace K7R
