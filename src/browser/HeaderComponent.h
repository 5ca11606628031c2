// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/look/HardLabel.h"

namespace K7R
{

/** The strip over a panel of the browser: its title, and up to two buttons, which aren't owned. As wide as its
    parent. */
class HeaderComponent final : public juce::Component
{
public:
    explicit HeaderComponent (const juce::String& title, juce::Button* leftButton = nullptr,
                              juce::Button* rightButton = nullptr);

    void parentSizeChanged() override;
    void resized() override;
    void paint (juce::Graphics&) override;

    static constexpr int height = 20;

private:
    HardLabel label;
    juce::Button* const leftButton;
    juce::Button* const rightButton;
};

} // namespace K7R
