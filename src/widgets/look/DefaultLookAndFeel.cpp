// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/look/DefaultLookAndFeel.h"

#include <utility>

#include "FrameworkResources.h"
#include "widgets/look/SlantedTypeface.h"

namespace K7R
{

namespace
{

using ColourEntry = std::pair<int, juce::uint32>;

/** The greys and the orange of all windows. Ids without a name belong to windows that read them by number. */
constexpr ColourEntry theme[] = {
    { DefaultLookAndFeel::accentId, 0xffeb6e2a },
    { DefaultLookAndFeel::accentBrightId, 0xffffa35f },
    { DefaultLookAndFeel::accentHotId, 0xffff6c00 },
    { juce::TextEditor::highlightColourId, 0xffeb6e2a },
    { juce::TextButton::buttonColourId, 0xff5d5d5d },
    { juce::TextButton::textColourOffId, 0xffe0e0e0 },
    { juce::TextButton::buttonOnColourId, 0xffb84a00 },
    { juce::TextButton::textColourOnId, 0xffe0e0e0 },
    { DefaultLookAndFeel::browserHeaderId, 0xffbbbbbb },
    { DefaultLookAndFeel::categoryHeaderId, 0xffa2a2a2 },
    { DefaultLookAndFeel::categoryLineId, 0xff828282 },
    { DefaultLookAndFeel::itemBackgroundId, 0xffe6e6e6 },
    { DefaultLookAndFeel::itemMixedId, 0xff4a6171 },
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
    { DefaultLookAndFeel::resultTextId, 0xff000000 },
    { DefaultLookAndFeel::categoryTextId, 0xff5d5d5d },
    { DefaultLookAndFeel::itemTextId, 0xff282828 },
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
    { juce::TextEditor::focusedOutlineColourId, 0xffeb6e2a },
    { juce::CaretComponent::caretColourId, 0xff282828 },
    { juce::Label::textColourId, 0xff282828 },
    { juce::ListBox::backgroundColourId, 0xfff0f0f0 },
    { juce::ListBox::outlineColourId, 0xff828282 },
    { juce::ComboBox::backgroundColourId, 0xfff0f0f0 },
    { juce::ComboBox::outlineColourId, 0xff828282 },
    { juce::ComboBox::textColourId, 0xff282828 },
    { juce::PopupMenu::backgroundColourId, 0xfff0f0f0 },
    { juce::PopupMenu::textColourId, 0xff282828 },
    { juce::PopupMenu::highlightedTextColourId, 0xffffffff },
    { juce::PopupMenu::highlightedBackgroundColourId, 0xffeb6e2a },
    { juce::DirectoryContentsDisplayComponent::highlightColourId, 0xffeb6e2a },
    { juce::DirectoryContentsDisplayComponent::highlightedTextColourId, 0xffffffff },
    { juce::DirectoryContentsDisplayComponent::textColourId, 0xff282828 },
    { juce::FileBrowserComponent::currentPathBoxBackgroundColourId, 0xfff0f0f0 },
    { juce::FileBrowserComponent::currentPathBoxTextColourId, 0xff282828 },
    { juce::FileBrowserComponent::currentPathBoxArrowColourId, 0xff444444 },
    { juce::FileBrowserComponent::filenameBoxBackgroundColourId, 0xfff0f0f0 },
    { juce::FileBrowserComponent::filenameBoxTextColourId, 0xff282828 },
};

constexpr juce::uint32 iconColour = 0xff5d5d5d; // on the light ground of windows
constexpr juce::uint32 outlineColour = 0xff282828;
constexpr int outerFrame = 1;
constexpr int menuIconRoom = 20;

constexpr float tooltipFontHeight = 13.0f;
constexpr float tooltipMaximumWidth = 320.0f;
constexpr int tooltipMargin = 6;

void drawIcon (juce::Graphics& g, const juce::Drawable& icon, juce::Rectangle<int> area)
{
    constexpr int margin = 3;
    icon.drawWithin (g, area.reduced (margin).toFloat(), juce::RectanglePlacement::centred, 1.0f);
}

} // namespace

DefaultLookAndFeel::DefaultLookAndFeel()
{
    for (const auto& [id, argb] : theme)
        setColour (id, juce::Colour (argb));
}

DefaultLookAndFeel::~DefaultLookAndFeel() = default;

const juce::Drawable& DefaultLookAndFeel::LazyIcon::operator*() const
{
    if (drawable == nullptr)
        drawable = Icons::create (name, juce::Colour (iconColour));

    return *drawable;
}

juce::Typeface::Ptr DefaultLookAndFeel::getEmbeddedTypeface (bool isBold, bool isItalic)
{
    using juce::Typeface;
    static const auto regular = Typeface::createSystemTypefaceFor (FrameworkResources::DejaVuSansCondensed_ttf,
                                                                   FrameworkResources::DejaVuSansCondensed_ttfSize);

    // Most instances show no window that needs the others.
    if (! isBold && ! isItalic)
        return regular;

    static const auto bold = Typeface::createSystemTypefaceFor (FrameworkResources::DejaVuSansCondensedBold_ttf,
                                                                FrameworkResources::DejaVuSansCondensedBold_ttfSize);

    if (! isItalic)
        return bold;

    static const Typeface::Ptr italic = new SlantedTypeface (regular), boldItalic = new SlantedTypeface (bold);
    return isBold ? boldItalic : italic;
}

juce::Typeface::Ptr DefaultLookAndFeel::getTypefaceForFont (const juce::Font& font)
{
    static const auto installed = juce::Font::findAllTypefaceNames();
    const auto name = font.getTypefaceName();

    // A font that the machine lacks gives our own rather than another of the machine's. JUCE's generic names, such as
    // "<Monospaced>", stand in brackets and are no fonts to look for.
    const auto isOurs =
        name == juce::Font::getDefaultSansSerifFontName() || ! (name.startsWithChar ('<') || installed.contains (name));
    return isOurs ? getEmbeddedTypeface (font.isBold(), font.isItalic()) : DefaultSliderLAF::getTypefaceForFont (font);
}

//==============================================================================
void DefaultLookAndFeel::drawWindowBackground (juce::Graphics& g, WindowComponent&)
{
    g.fillAll (findColour (windowBackgroundId));
}

void DefaultLookAndFeel::drawWindowFrame (juce::Graphics& g, WindowComponent& window)
{
    const auto area = window.getLocalBounds();
    constexpr int frame = 3;

    g.setColour (findColour (windowFrameId));
    g.drawRect (area, frame);

    if (const auto title = window.getTitleArea(); ! title.isEmpty())
    {
        g.setColour (findColour (windowTitleId));
        g.fillRect (title);
        g.setColour (findColour (accentId));
        g.fillRect (title.withTop (title.getBottom() - 2));

        g.setColour (findColour (windowTitleTextId));
        g.setFont (window.getTitleFont());
        g.drawText (window.getTitle(), window.getTitleTextArea().withTrimmedLeft (frame),
                    juce::Justification::centredLeft);
    }

    g.setColour (juce::Colour (outlineColour));
    g.drawRect (area, outerFrame);
}

juce::Font DefaultLookAndFeel::getWindowTitleFont (const WindowComponent&)
{
    return getFont (titleHeight);
}

void DefaultLookAndFeel::drawPanelBackground (juce::Graphics& g, PanelComponent& panel)
{
    g.fillAll (panel.findColour (panelBackgroundId, true));
    g.setColour (panel.findColour (panelLineId, true));
    g.drawRect (panel.getLocalBounds(), outerFrame);
}

void DefaultLookAndFeel::drawHardLabel (juce::Graphics& g, HardLabel& label)
{
    g.setFont (getLabelFont (label));
    g.setColour (label.findColour (hardLabelTextId, true).withMultipliedAlpha (label.isEnabled() ? 1.0f : 0.5f));
    g.drawFittedText (label.getText(), label.getBorderSize().subtractedFrom (label.getLocalBounds()),
                      label.getJustificationType(), 1);
}

juce::Font DefaultLookAndFeel::getResultFont (bool isReadOnly) const
{
    constexpr float narrow = 0.94f, wide = 0.02f;
    const auto font = getFont (textHeight);
    return isReadOnly ? font.withHorizontalScale (narrow) : font.withExtraKerningFactor (wide);
}

void DefaultLookAndFeel::drawFocusRing (juce::Graphics& g, juce::Rectangle<int> area) const
{
    constexpr int thickness = 2;
    g.setColour (findColour (accentBrightId));
    g.drawRect (area, thickness);
}

//==============================================================================
void DefaultLookAndFeel::drawMenuBackground (juce::Graphics& g, juce::Rectangle<int> area)
{
    g.setColour (findColour (juce::PopupMenu::backgroundColourId));
    g.fillRect (area);
    g.setColour (juce::Colour (outlineColour));
    g.drawRect (area, outerFrame);
}

void DefaultLookAndFeel::drawMenuItem (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& text,
                                       ItemState state)
{
    const auto isLit = state.isHighlighted && state.isEnabled;
    const auto colour = findColour (isLit ? juce::PopupMenu::highlightedTextColourId : juce::PopupMenu::textColourId)
                            .withMultipliedAlpha (state.isEnabled ? 1.0f : 0.5f);

    if (isLit)
    {
        g.setColour (findColour (juce::PopupMenu::highlightedBackgroundColourId));
        g.fillRect (area);
    }

    const auto front = area.removeFromLeft (menuIconRoom), back = area.removeFromRight (menuIconRoom);

    if (state.isTicked)
        drawIcon (g, *tickIcon, front);

    if (state.hasSubMenu)
        drawIcon (g, *subMenuIcon, back);

    g.setColour (colour);
    g.setFont (getMenuFont());
    g.drawText (text, area, juce::Justification::centredLeft);
}

void DefaultLookAndFeel::drawMenuTitle (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& text)
{
    g.setColour (findColour (windowTitleId));
    g.fillRect (area);
    g.setColour (findColour (windowTitleTextId));
    g.setFont (getMenuFont());
    g.drawText (text, area, juce::Justification::centred);
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

} // namespace K7R
