// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quilvane
{

/** The strip under the skin's panel: one message at a time, of which the more important and the later stands. */
class StatusBar final : public juce::Component, private juce::Timer
{
public:
    StatusBar();

    /** Shows a message, unless it stands already or one of a higher priority does.
        @param timeoutMs until it goes by itself; below 1 it stays */
    void showMessage (const juce::String& text, int priority, int timeoutMs);

    void clearMessage();

    const juce::String& getMessage() const noexcept { return message; }

    void lookAndFeelChanged() override;
    void paint (juce::Graphics&) override;

private:
    void timerCallback() override { clearMessage(); }

    juce::Font font;
    juce::String message;
    int priority = 0;
};

} // namespace quilvane
