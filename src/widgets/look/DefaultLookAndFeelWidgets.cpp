// SPDX-License-Identifier: GPL-3.0-or-later

// The look of the widgets that JUCE brings: buttons, fields, scroll bars and the list of files.

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"
#include "widgets/windows/ModalComponent.h"

namespace K7R
{

namespace
{

constexpr float corner = 3.0f;
constexpr float overBrightness = 0.15f, downDarkness = 0.2f;
constexpr float disabledAlpha = 0.5f;
constexpr int textMargin = 12; // on both sides of a button's text

} // namespace

void DefaultLookAndFeel::drawButtonFace (juce::Graphics& g, juce::Rectangle<int> face, juce::Colour ground,
                                         FaceState state, int connectedEdges) const
{
    auto colour = ground.withMultipliedAlpha (state.isEnabled ? 1.0f : disabledAlpha);

    if (state.isDown)
        colour = colour.darker (downDarkness);
    else if (state.isOver)
        colour = colour.brighter (overBrightness);

    // Buttons that stand together share their edges.
    const auto isFree = [=] (int edges) { return (connectedEdges & edges) == 0; };
    const auto area = face.toFloat();

    juce::Path shape;
    shape.addRoundedRectangle (area.getX(), area.getY(), area.getWidth(), area.getHeight(), corner, corner,
                               isFree (juce::Button::ConnectedOnLeft | juce::Button::ConnectedOnTop),
                               isFree (juce::Button::ConnectedOnRight | juce::Button::ConnectedOnTop),
                               isFree (juce::Button::ConnectedOnLeft | juce::Button::ConnectedOnBottom),
                               isFree (juce::Button::ConnectedOnRight | juce::Button::ConnectedOnBottom));
    g.setColour (colour);
    g.fillPath (shape);
}

void DefaultLookAndFeel::drawButtonBackground (juce::Graphics& g, juce::Button& button, const juce::Colour& ground,
                                               bool isOver, bool isDown)
{
    drawButtonFace (g, button.getLocalBounds(), ground, { button.isEnabled(), isOver, isDown },
                    button.getConnectedEdgeFlags());

    if (button.hasKeyboardFocus (false))
        drawFocusRing (g, button.getLocalBounds());
}

void DefaultLookAndFeel::drawButtonText (juce::Graphics& g, juce::TextButton& button, bool, bool)
{
    g.setFont (getTextButtonFont (button, button.getHeight()));
    g.setColour (
        button
            .findColour (button.getToggleState() ? juce::TextButton::textColourOnId : juce::TextButton::textColourOffId)
            .withMultipliedAlpha (button.isEnabled() ? 1.0f : disabledAlpha));
    g.drawFittedText (button.getButtonText(), button.getLocalBounds().reduced (4, 0), juce::Justification::centred, 1);
}

juce::Font DefaultLookAndFeel::getTextButtonFont (juce::TextButton&, int buttonHeight)
{
    return getFont (juce::jmin (textHeight, static_cast<float> (buttonHeight) * 0.8f));
}

int DefaultLookAndFeel::getTextButtonWidthToFitText (juce::TextButton& button, int buttonHeight)
{
    constexpr int leastWidth = 64;
    const auto text = getTextButtonFont (button, buttonHeight).getStringWidthFloat (button.getButtonText());
    return juce::jmax (leastWidth, static_cast<int> (std::ceil (text)) + 2 * textMargin);
}

juce::Font DefaultLookAndFeel::getLabelFont (juce::Label& label)
{
    // JUCE's own height means that nobody asked for one.
    const auto font = label.getFont();
    const auto height = font.getHeight() == 15.0f ? textHeight : font.getHeight();
    return juce::Font (getEmbeddedTypeface (font.isBold(), font.isItalic())).withHeight (height);
}

//==============================================================================
void DefaultLookAndFeel::fillTextEditorBackground (juce::Graphics& g, int width, int height, juce::TextEditor& editor)
{
    g.setColour (editor.findColour (juce::TextEditor::backgroundColourId));
    g.fillRect (0, 0, width, height);
}

void DefaultLookAndFeel::drawTextEditorOutline (juce::Graphics& g, int width, int height, juce::TextEditor& editor)
{
    const juce::Rectangle<int> area (width, height);

    if (editor.isEnabled() && editor.hasKeyboardFocus (true) && ! editor.isReadOnly())
        return drawFocusRing (g, area);

    g.setColour (editor.findColour (juce::TextEditor::outlineColourId));
    g.drawRect (area, 1);
}

void DefaultLookAndFeel::drawScrollbar (juce::Graphics& g, juce::ScrollBar& bar, int x, int y, int width, int height,
                                        bool isVertical, int thumbStart, int thumbSize, bool isOver, bool isDown)
{
    const juce::Rectangle<int> area (x, y, width, height);
    g.setColour (bar.findColour (juce::ScrollBar::trackColourId));
    g.fillRect (area);

    auto thumb =
        isVertical ? area.withY (thumbStart).withHeight (thumbSize) : area.withX (thumbStart).withWidth (thumbSize);
    const auto colour = bar.findColour (juce::ScrollBar::thumbColourId);
    g.setColour (isDown ? findColour (accentId) : isOver ? colour.darker (downDarkness) : colour);
    g.fillRect (thumb.reduced (isVertical ? 2 : 1, isVertical ? 1 : 2));
}

void DefaultLookAndFeel::drawDropDown (juce::Graphics& g, const juce::Component& box, juce::Rectangle<int> arrow,
                                       bool hasFocus, bool isOver) const
{
    constexpr int arrowMargin = 5;
    const auto area = box.getLocalBounds();
    const auto isLit = isOver && box.isEnabled();

    g.setColour (box.findColour (juce::ComboBox::backgroundColourId)
                     .withMultipliedAlpha (box.isEnabled() ? 1.0f : disabledAlpha));
    g.fillRect (area);
    dropDownIcon->drawWithin (g, arrow.reduced (arrowMargin).toFloat(), juce::RectanglePlacement::centred,
                              box.isEnabled() ? 1.0f : disabledAlpha);

    if (hasFocus)
        return drawFocusRing (g, area);

    g.setColour (isLit ? findColour (accentId) : box.findColour (juce::ComboBox::outlineColourId));
    g.drawRect (area, 1);
}

void DefaultLookAndFeel::drawComboBox (juce::Graphics& g, int, int, bool, int buttonX, int buttonY, int buttonWidth,
                                       int buttonHeight, juce::ComboBox& box)
{
    drawDropDown (g, box, { buttonX, buttonY, buttonWidth, buttonHeight }, box.hasKeyboardFocus (true), false);
}

juce::Component* DefaultLookAndFeel::getParentComponentForMenuOptions (const juce::PopupMenu::Options& options)
{
    // Inside the editor, as all of our windows. A text field's menu names no target.
    auto* const target = options.getTargetComponent() != nullptr ? options.getTargetComponent()
                                                                 : juce::Component::getCurrentlyFocusedComponent();
    auto* const editor = target != nullptr ? ModalComponent::findDesktop (*target) : nullptr;
    return editor != nullptr ? editor : options.getParentComponent();
}

//==============================================================================
void DefaultLookAndFeel::layoutFileBrowserComponent (juce::FileBrowserComponent& browser,
                                                     juce::DirectoryContentsDisplayComponent* list,
                                                     juce::FilePreviewComponent*, juce::ComboBox* path,
                                                     juce::TextEditor* name, juce::Button* goUp)
{
    constexpr int rowHeight = 22, spacing = 6, labelWidth = 52;

    auto area = browser.getLocalBounds();
    auto top = area.removeFromTop (rowHeight);
    goUp->setBounds (top.removeFromRight (rowHeight + 8));
    top.removeFromRight (spacing);
    path->setBounds (top);

    auto bottom = area.removeFromBottom (rowHeight);
    bottom.removeFromLeft (labelWidth); // JUCE puts its label there
    name->setBounds (bottom);

    if (auto* shown = dynamic_cast<juce::Component*> (list))
        shown->setBounds (area.reduced (0, spacing));
}

void DefaultLookAndFeel::drawFileBrowserRow (juce::Graphics& g, int width, int height, const juce::File&,
                                             const juce::String& name, juce::Image*, const juce::String& size,
                                             const juce::String& time, bool isDirectory, bool isSelected, int,
                                             juce::DirectoryContentsDisplayComponent& list)
{
    constexpr int sizeWidth = 70, timeWidth = 130, leastWidthForDetails = 380;

    juce::Rectangle<int> area (width, height);
    const auto& component = dynamic_cast<juce::Component&> (list);

    if (isSelected)
    {
        g.setColour (component.findColour (juce::DirectoryContentsDisplayComponent::highlightColourId));
        g.fillRect (area);
    }

    const auto& icon = isDirectory ? *folderIcon : *fileIcon;
    icon.drawWithin (g, area.removeFromLeft (height + 2).reduced (3).toFloat(), juce::RectanglePlacement::centred,
                     1.0f);

    g.setColour (component.findColour (isSelected ? juce::DirectoryContentsDisplayComponent::highlightedTextColourId
                                                  : juce::DirectoryContentsDisplayComponent::textColourId));
    g.setFont (getFont (textHeight));

    if (! isDirectory && width > leastWidthForDetails)
    {
        g.drawText (time, area.removeFromRight (timeWidth), juce::Justification::centredLeft);
        g.drawText (size, area.removeFromRight (sizeWidth).withTrimmedRight (textMargin),
                    juce::Justification::centredRight);
    }

    g.drawText (name, area, juce::Justification::centredLeft);
}

juce::Button* DefaultLookAndFeel::createFileBrowserGoUpButton()
{
    auto button = std::make_unique<juce::DrawableButton> ("Up", juce::DrawableButton::ImageOnButtonBackground);
    const auto up = Icons::create (Icons::Name::arrowUp);
    button->setImages (up.get());
    button->setColour (juce::TextButton::buttonColourId, findColour (juce::TextButton::buttonColourId));
    button->setTitle ("Parent folder");
    button->setTooltip ("Parent folder");
    return button.release();
}

} // namespace K7R
