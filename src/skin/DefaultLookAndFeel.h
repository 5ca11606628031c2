// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/DefaultSliderLAF.h"
#include "skin/HardLabel.h"
#include "skin/WindowLookAndFeel.h"

namespace quilvane
{

/** The one look of everything that a skin doesn't draw: a theme of greys with an orange accent, set in the font that
    the program carries, so that texts don't depend on the machine. */
class DefaultLookAndFeel : public DefaultSliderLAF,
                           public WindowLookAndFeelMethods,
                           public PanelLookAndFeelMethods,
                           public HardLabel::LookAndFeelMethods
{
public:
    DefaultLookAndFeel();
    ~DefaultLookAndFeel() override;

    // Colours that are the system's own.
    enum ColourIds : int
    {
        accentBrightId = 0xe000000,
        accentHotId = 0xe000001,
        accentDarkId = 0xe000002,
        accentDeepId = 0xe000003,
        windowBackgroundId = 0xf000000,
        windowFrameId = 0xf001000,
        windowTitleId = 0xf001001,
        windowTitleTextId = 0xf001002,
        panelBackgroundId = 0xf003000,
        panelTextId = 0xf003001,
        panelLineId = 0xf003002,
        statusBarBackgroundId = 0xf004001,
        statusBarTextId = 0xf004002,
        hardLabelLineId = 0xf005000,
        hardLabelBackgroundId = 0xf006000,
        hardLabelTextId = 0xf006001,
    };

    /** The program's own typeface, "DejaVu Sans Condensed". */
    static juce::Typeface::Ptr getEmbeddedTypeface();

    juce::Font getFont (float height) const { return juce::Font (getEmbeddedTypeface()).withHeight (height); }

    /** In pixels. */
    virtual int getStatusBarHeight() const { return 16; }
    virtual juce::Font getStatusBarFont() const { return getFont (13.0f); }

    juce::Typeface::Ptr getTypefaceForFont (const juce::Font&) override;

    void drawWindowBackground (juce::Graphics&, juce::Rectangle<int> area) override;
    void drawWindowFrame (juce::Graphics&, juce::Rectangle<int> area) override;
    void drawPanelBackground (juce::Graphics&, juce::Rectangle<int> area) override;
    void drawHardLabel (juce::Graphics&, HardLabel&) override;

    void drawTooltip (juce::Graphics&, const juce::String& text, int width, int height) override;
    juce::Rectangle<int> getTooltipBounds (const juce::String& text, juce::Point<int> screenPosition,
                                           juce::Rectangle<int> parentArea) override;

private:
    juce::TextLayout layOutTooltip (const juce::String& text) const;
};

} // namespace quilvane
