// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "widgets/controls/PanelComponent.h"
#include "widgets/look/DefaultSliderLAF.h"
#include "widgets/look/HardLabel.h"
#include "widgets/look/Icons.h"
#include "widgets/windows/PopupMenuEx.h"
#include "widgets/windows/WindowComponent.h"

namespace K7R
{

/** The one look of everything that a skin doesn't draw: a theme of greys with an orange accent, set in the font that
    the program carries, so that texts don't depend on the machine. */
class DefaultLookAndFeel : public DefaultSliderLAF,
                           public WindowComponent::LookAndFeelMethods,
                           public PanelComponent::LookAndFeelMethods,
                           public HardLabel::LookAndFeelMethods,
                           public PopupMenuEx::LookAndFeelMethods
{
public:
    DefaultLookAndFeel();
    ~DefaultLookAndFeel() override;

    // Colours that are the system's own.
    enum ColourIds : int
    {
        accentId = 0x1000540,
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
        browserHeaderId = 0xf007000,
        resultTextId = 0xf007001,
        categoryHeaderId = 0xf007003,
        categoryTextId = 0xf007005,
        itemBackgroundId = 0xf007006,
        itemTextId = 0xf007007,
        categoryLineId = 0xf007009,
        itemMixedId = 0xf00700a,
    };

    /** The program's own typeface, "DejaVu Sans Condensed": the regular and the bold face, and both slanted. */
    static juce::Typeface::Ptr getEmbeddedTypeface (bool isBold = false, bool isItalic = false);

    juce::Font getFont (float height) const { return juce::Font (getEmbeddedTypeface()).withHeight (height); }

    /** In pixels. */
    virtual int getStatusBarHeight() const { return 16; }
    virtual juce::Font getStatusBarFont() const { return getFont (13.0f); }

    juce::Typeface::Ptr getTypefaceForFont (const juce::Font&) override;

    //==============================================================================
    void drawWindowBackground (juce::Graphics&, WindowComponent&) override;
    void drawWindowFrame (juce::Graphics&, WindowComponent&) override;
    juce::Font getWindowTitleFont (const WindowComponent&) override;
    void drawPanelBackground (juce::Graphics&, PanelComponent&) override;
    void drawHardLabel (juce::Graphics&, HardLabel&) override;

    void drawMenuBackground (juce::Graphics&, juce::Rectangle<int> area) override;
    void drawMenuItem (juce::Graphics&, juce::Rectangle<int> area, const juce::String& text, ItemState) override;
    void drawMenuTitle (juce::Graphics&, juce::Rectangle<int> area, const juce::String& text) override;
    juce::Font getMenuFont() override { return getFont (textHeight); }

    /** Of the browser's results; those that can't be changed have another one. */
    juce::Font getResultFont (bool isReadOnly) const;

    /** Around the part that has the keyboard's focus. */
    void drawFocusRing (juce::Graphics&, juce::Rectangle<int> area) const;

    struct FaceState
    {
        bool isEnabled, isOver, isDown;
    };

    /** The face of a button.
        @param connectedEdges flags of juce::Button, for buttons that share their edges */
    void drawButtonFace (juce::Graphics&, juce::Rectangle<int> face, juce::Colour ground, FaceState,
                         int connectedEdges = 0) const;

    /** The ground, the arrow and the outline of a box that opens a list, in its colours of juce::ComboBox. */
    void drawDropDown (juce::Graphics&, const juce::Component& box, juce::Rectangle<int> arrow, bool hasFocus,
                       bool isOver) const;

    /** Of texts in windows, in pixels. */
    static constexpr float textHeight = 13.0f;
    static constexpr float titleHeight = 15.0f;

    //==============================================================================
    // The same hand for what JUCE brings.
    void drawButtonBackground (juce::Graphics&, juce::Button&, const juce::Colour& ground, bool isOver,
                               bool isDown) override;
    void drawButtonText (juce::Graphics&, juce::TextButton&, bool isOver, bool isDown) override;
    juce::Font getTextButtonFont (juce::TextButton&, int buttonHeight) override;
    int getTextButtonWidthToFitText (juce::TextButton&, int buttonHeight) override;

    juce::Font getLabelFont (juce::Label&) override;

    void fillTextEditorBackground (juce::Graphics&, int width, int height, juce::TextEditor&) override;
    void drawTextEditorOutline (juce::Graphics&, int width, int height, juce::TextEditor&) override;

    void drawScrollbar (juce::Graphics&, juce::ScrollBar&, int x, int y, int width, int height, bool isVertical,
                        int thumbStart, int thumbSize, bool isOver, bool isDown) override;
    int getDefaultScrollbarWidth() override { return 10; }

    void drawComboBox (juce::Graphics&, int width, int height, bool isDown, int buttonX, int buttonY, int buttonWidth,
                       int buttonHeight, juce::ComboBox&) override;
    juce::Font getComboBoxFont (juce::ComboBox&) override { return getFont (textHeight); }
    juce::Component* getParentComponentForMenuOptions (const juce::PopupMenu::Options&) override;

    void layoutFileBrowserComponent (juce::FileBrowserComponent&, juce::DirectoryContentsDisplayComponent*,
                                     juce::FilePreviewComponent*, juce::ComboBox* path, juce::TextEditor* name,
                                     juce::Button* goUp) override;
    void drawFileBrowserRow (juce::Graphics&, int width, int height, const juce::File&, const juce::String& name,
                             juce::Image*, const juce::String& size, const juce::String& time, bool isDirectory,
                             bool isSelected, int row, juce::DirectoryContentsDisplayComponent&) override;
    juce::Button* createFileBrowserGoUpButton() override;

    //==============================================================================
    void drawTooltip (juce::Graphics&, const juce::String& text, int width, int height) override;
    juce::Rectangle<int> getTooltipBounds (const juce::String& text, juce::Point<int> screenPosition,
                                           juce::Rectangle<int> parentArea) override;

private:
    juce::TextLayout layOutTooltip (const juce::String& text) const;

    /** An icon on the light ground of windows, which is made when it's first drawn: a look is made with the first
        instance, and most instances open no window. */
    class LazyIcon
    {
    public:
        explicit LazyIcon (Icons::Name iconName) : name (iconName) {}

        const juce::Drawable& operator*() const;
        const juce::Drawable* operator->() const { return &**this; }

    private:
        const Icons::Name name;
        mutable std::unique_ptr<juce::Drawable> drawable;
    };

    const LazyIcon folderIcon { Icons::Name::folder }, fileIcon { Icons::Name::file }, tickIcon { Icons::Name::tick };
    const LazyIcon subMenuIcon { Icons::Name::arrowRight }, dropDownIcon { Icons::Name::arrowDown };
};

} // namespace K7R
