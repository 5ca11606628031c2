// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace quilvane
{

/** How the windows inside the editor ask their look to be drawn. */
struct WindowLookAndFeelMethods
{
    virtual ~WindowLookAndFeelMethods() = default;

    virtual void drawWindowBackground (juce::Graphics&, juce::Rectangle<int> area) = 0;
    virtual void drawWindowFrame (juce::Graphics&, juce::Rectangle<int> area) = 0;
};

/** The same for the panels within them. */
struct PanelLookAndFeelMethods
{
    virtual ~PanelLookAndFeelMethods() = default;

    virtual void drawPanelBackground (juce::Graphics&, juce::Rectangle<int> area) = 0;
};

} // namespace quilvane
