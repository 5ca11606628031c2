// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/StatusBar.h"

#include "skin/DefaultLookAndFeel.h"

namespace quilvane
{

namespace
{

constexpr int defaultHeight = 16;
constexpr int textMargin = 5;

} // namespace

StatusBar::StatusBar()
{
    setSize (getWidth(), defaultHeight);
    setInterceptsMouseClicks (false, true);
}

void StatusBar::lookAndFeelChanged()
{
    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        font = look->getStatusBarFont();
        setSize (getWidth(), look->getStatusBarHeight());
    }
}

void StatusBar::showMessage (const juce::String& text, int newPriority, int timeoutMs)
{
    if (text == message || newPriority < priority)
        return;

    message = text;
    priority = newPriority;

    if (timeoutMs < 1)
        stopTimer();
    else
        startTimer (timeoutMs);

    repaint();
}

void StatusBar::clearMessage()
{
    stopTimer();
    message.clear();
    priority = 0;
    repaint();
}

void StatusBar::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::statusBarBackgroundId));
    g.setColour (findColour (DefaultLookAndFeel::statusBarTextId));
    g.setFont (font);
    g.drawText (message, getLocalBounds().withTrimmedLeft (textMargin), juce::Justification::centredLeft);
}

} // namespace quilvane
