// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/DefaultLookAndFeel.h"

#include <utility>

#include "EmbeddedResources.h"

namespace quilvane
{

namespace
{

using ColourEntry = std::pair<int, juce::uint32>;

/** The greys and the orange of all windows. Ids without a name belong to windows that read them by number. */
constexpr ColourEntry theme[] = {
    { 0x1000540, 0xffeb6e2a },
    { DefaultLookAndFeel::accentBrightId, 0xffffa35f },
    { DefaultLookAndFeel::accentHotId, 0xffff6c00 },
    { juce::TextEditor::highlightColourId, 0xffeb6e2a },
    { juce::TextButton::buttonColourId, 0xff5d5d5d },
    { juce::TextButton::textColourOffId, 0xffe0e0e0 },
    { juce::TextButton::buttonOnColourId, 0xffb84a00 },
    { juce::TextButton::textColourOnId, 0xffe0e0e0 },
    { 0xf007000, 0xffbbbbbb },
    { 0xf007003, 0xffa2a2a2 },
    { 0xf007009, 0xff828282 },
    { 0xf007006, 0xffe6e6e6 },
    { 0xf00700a, 0xff4a6171 },
    { juce::DrawableButton::backgroundColourId, 0xfff0f0f0 },
    { juce::DrawableButton::backgroundOnColourId, 0xfff0f0f0 },
    { juce::TooltipWindow::outlineColourId, 0xff444444 },
    { DefaultLookAndFeel::windowFrameId, 0xffc5c5c5 },
    { DefaultLookAndFeel::hardLabelLineId, 0xff7c7c7c },
    { juce::ScrollBar::thumbColourId, 0xff6e6e6e },
    { juce::ScrollBar::trackColourId, 0xffcccccc },
    { 0xf002200, 0xffd0d0d0 },
    { 0xf002202, 0xffd0d0d0 },
    { DefaultLookAndFeel::panelBackgroundId, 0xffc5c5c5 },
    { DefaultLookAndFeel::panelLineId, 0xff5b5b5b },
    { DefaultLookAndFeel::statusBarBackgroundId, 0xff444444 },
    { DefaultLookAndFeel::windowBackgroundId, 0xffe3e3e3 },
    { 0x1005003, 0xffffa35f },
    { 0x1005004, 0xffff6c00 },

    // The same greys and oranges in their further roles.
    { 0x1000541, 0xffb84a00 },
    { DefaultLookAndFeel::accentDarkId, 0xffb84a00 },
    { DefaultLookAndFeel::accentDeepId, 0xff662900 },
    { DefaultLookAndFeel::hardLabelBackgroundId, 0xffd0d0d0 },
    { DefaultLookAndFeel::hardLabelTextId, 0xff282828 },
    { juce::TextEditor::backgroundColourId, 0xfff0f0f0 },
    { juce::TextEditor::outlineColourId, 0xff828282 },
    { juce::TextEditor::highlightedTextColourId, 0xffffffff },
    { 0xf007001, 0xff282828 },
    { 0xf007005, 0xff5d5d5d },
    { 0xf007007, 0xff282828 },
    { juce::DrawableButton::textColourId, 0xff444444 },
    { juce::TooltipWindow::textColourId, 0xff282828 },
    { DefaultLookAndFeel::windowTitleId, 0xff444444 },
    { DefaultLookAndFeel::windowTitleTextId, 0xffe6e6e6 },
    { 0xf002201, 0xff828282 },
    { DefaultLookAndFeel::panelTextId, 0xff282828 },
    { DefaultLookAndFeel::statusBarTextId, 0xffe0e0e0 },
    { 0, 0xffe3e3e3 },
    { 1, 0xff282828 },
    { 2, 0xffeb6e2a },

    { juce::TooltipWindow::backgroundColourId, 0xffe3e3e3 },
    { juce::TextEditor::textColourId, 0xff282828 },
};

constexpr float tooltipFontHeight = 13.0f;
constexpr float tooltipMaximumWidth = 320.0f;
constexpr int tooltipMargin = 6;

} // namespace

DefaultLookAndFeel::DefaultLookAndFeel()
{
    for (const auto& [id, argb] : theme)
        setColour (id, juce::Colour (argb));
}

DefaultLookAndFeel::~DefaultLookAndFeel() = default;

juce::Typeface::Ptr DefaultLookAndFeel::getEmbeddedTypeface()
{
    static const auto typeface = juce::Typeface::createSystemTypefaceFor (
        EmbeddedResources::DejaVuSansCondensed_ttf, EmbeddedResources::DejaVuSansCondensed_ttfSize);
    return typeface;
}

juce::Typeface::Ptr DefaultLookAndFeel::getTypefaceForFont (const juce::Font& font)
{
    static const auto installed = juce::Font::findAllTypefaceNames();
    const auto name = font.getTypefaceName();

    // A font that the machine lacks gives our own rather than another of the machine's. JUCE's generic names, such as
    // "<Monospaced>", stand in brackets and are no fonts to look for.
    const auto isOurs =
        name == juce::Font::getDefaultSansSerifFontName() || ! (name.startsWithChar ('<') || installed.contains (name));
    return isOurs ? getEmbeddedTypeface() : DefaultSliderLAF::getTypefaceForFont (font);
}

//==============================================================================
void DefaultLookAndFeel::drawWindowBackground (juce::Graphics& g, juce::Rectangle<int> area)
{
    g.setColour (findColour (windowBackgroundId));
    g.fillRect (area);
}

void DefaultLookAndFeel::drawWindowFrame (juce::Graphics& g, juce::Rectangle<int> area)
{
    g.setColour (findColour (windowFrameId));
    g.drawRect (area, 1);
}

void DefaultLookAndFeel::drawPanelBackground (juce::Graphics& g, juce::Rectangle<int> area)
{
    g.setColour (findColour (panelBackgroundId));
    g.fillRect (area);
}

void DefaultLookAndFeel::drawHardLabel (juce::Graphics& g, HardLabel& label)
{
    g.setFont (getFont (label.getFont().getHeight()));
    g.setColour (findColour (hardLabelTextId).withMultipliedAlpha (label.isEnabled() ? 1.0f : 0.5f));
    g.drawFittedText (label.getText(), label.getLocalBounds(), label.getJustificationType(), 1);
}

//==============================================================================
juce::TextLayout DefaultLookAndFeel::layOutTooltip (const juce::String& text) const
{
    juce::AttributedString string;
    string.setJustification (juce::Justification::centred);
    string.append (text, getFont (tooltipFontHeight), findColour (juce::TooltipWindow::textColourId));

    juce::TextLayout layout;
    layout.createLayout (string, tooltipMaximumWidth);
    return layout;
}

juce::Rectangle<int> DefaultLookAndFeel::getTooltipBounds (const juce::String& text, juce::Point<int> position,
                                                           juce::Rectangle<int> parentArea)
{
    const auto layout = layOutTooltip (text);
    const auto width = juce::roundToInt (std::ceil (layout.getWidth())) + 2 * tooltipMargin;
    const auto height = juce::roundToInt (std::ceil (layout.getHeight())) + 2 * tooltipMargin;
    constexpr int distance = 12; // from the mouse

    const auto x = position.x > parentArea.getCentreX() ? position.x - width - distance : position.x + 2 * distance;
    const auto y =
        position.y > parentArea.getCentreY() ? position.y - height - distance / 2 : position.y + distance / 2;
    return juce::Rectangle<int> (x, y, width, height).constrainedWithin (parentArea);
}

void DefaultLookAndFeel::drawTooltip (juce::Graphics& g, const juce::String& text, int width, int height)
{
    const juce::Rectangle<int> area (width, height);
    g.fillAll (findColour (juce::TooltipWindow::backgroundColourId));
    g.setColour (findColour (juce::TooltipWindow::outlineColourId));
    g.drawRect (area, 1);
    layOutTooltip (text).draw (g, area.reduced (tooltipMargin).toFloat());
}

} // namespace quilvane
