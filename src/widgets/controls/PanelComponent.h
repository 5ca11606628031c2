// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A plain surface inside a window, or by itself as a popup, drawn by its look and feel. */
class PanelComponent : public juce::Component
{
public:
    using juce::Component::Component;

    struct LookAndFeelMethods
    {
        virtual ~LookAndFeelMethods() = default;

        virtual void drawPanelBackground (juce::Graphics&, PanelComponent&) = 0;
    };

    void paint (juce::Graphics& g) override
    {
        if (auto* look = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
            look->drawPanelBackground (g, *this);
    }
};

} // namespace K7R
