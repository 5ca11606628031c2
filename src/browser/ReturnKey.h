// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <utility>

#include "widgets/controls/FocusableCheckBox.h"

namespace K7R
{

/** The Return key of a window whose "OK" it is wherever the focus is: buttons inside, which would be pressed by it, are
    pressed by Space alone. A member of the window. For the message thread. */
class ReturnKey final : private juce::FocusChangeListener, private juce::KeyListener
{
public:
    ReturnKey (juce::Component& owner, std::function<void()> toCall) : window (owner), onReturn (std::move (toCall))
    {
        juce::Desktop::getInstance().addFocusChangeListener (this);
    }

    ~ReturnKey() override
    {
        juce::Desktop::getInstance().removeFocusChangeListener (this);
        globalFocusChanged (nullptr);
    }

    ReturnKey (const ReturnKey&) = delete;
    ReturnKey& operator= (const ReturnKey&) = delete;

private:
    void globalFocusChanged (juce::Component* focused) override
    {
        const auto isButton =
            dynamic_cast<juce::Button*> (focused) != nullptr || dynamic_cast<FocusableCheckBox*> (focused) != nullptr;

        if (watched != nullptr)
            watched->removeKeyListener (this);

        watched = isButton && window.isParentOf (focused) ? focused : nullptr;

        if (watched != nullptr)
            watched->addKeyListener (this);
    }

    bool keyPressed (const juce::KeyPress& key, juce::Component*) override
    {
        if (key != juce::KeyPress::returnKey)
            return false;

        onReturn();
        return true;
    }

    juce::Component& window;
    const std::function<void()> onReturn;
    juce::Component::SafePointer<juce::Component> watched;
};

} // namespace K7R
