// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** What a box that shows one of several items is to a screen reader: its item's text, and an action that opens it.
    @param getText called while the component lives, like open */
inline std::unique_ptr<juce::AccessibilityHandler> createChoiceAccessibility (juce::Component& component,
                                                                              std::function<juce::String()> getText,
                                                                              const std::function<void()>& open)
{
    class Value final : public juce::AccessibilityTextValueInterface
    {
    public:
        explicit Value (std::function<juce::String()> toCall) : getText (std::move (toCall)) {}

        bool isReadOnly() const override { return true; }
        juce::String getCurrentValueAsString() const override { return getText(); }
        void setValueAsString (const juce::String&) override {}

    private:
        const std::function<juce::String()> getText;
    };

    return std::make_unique<juce::AccessibilityHandler> (
        component, juce::AccessibilityRole::comboBox,
        juce::AccessibilityActions()
            .addAction (juce::AccessibilityActionType::press, open)
            .addAction (juce::AccessibilityActionType::showMenu, open),
        juce::AccessibilityHandler::Interfaces { std::make_unique<Value> (std::move (getText)) });
}

} // namespace K7R
