// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/PathComponent.h"

namespace K7R
{

namespace
{

constexpr int buttonWidth = 32, spacing = 4, textMargin = 6;
constexpr float fontHeight = 12.0f;

} // namespace

PathComponent::PathComponent (const juce::String& chooserTitle, FileChooserWindow::Mode wantedMode,
                              const juce::String& fileExtension) :
    title (chooserTitle),
    extension (fileExtension),
    mode (wantedMode)
{
    button.setButtonText ("[...]");
    button.setTitle ("Browse");
    button.setTooltip (chooserTitle);
    button.onClick = [this] { browse(); };
    addAndMakeVisible (button);
}

void PathComponent::setFile (const juce::File& newFile)
{
    file = newFile;
    setDescription (file.getFullPathName());
    repaint();
}

void PathComponent::setTextWhenEmpty (const juce::String& text)
{
    textWhenEmpty = text;
    repaint();
}

void PathComponent::browse()
{
    const auto start = file != juce::File() ? file : juce::File::getSpecialLocation (juce::File::userHomeDirectory);

    FileChooserWindow::ask (chooser, *this, title, mode, extension, start,
                            [this] (const juce::File& chosen)
                            {
                                if (chosen == file)
                                    return;

                                setFile (chosen);
                                listeners.call ([this] (auto& listener) { listener.pathChanged (*this); });
                            });
}

void PathComponent::resized()
{
    button.setBounds (getLocalBounds().removeFromRight (buttonWidth));
}

void PathComponent::paint (juce::Graphics& g)
{
    const auto area = getLocalBounds().withTrimmedRight (buttonWidth + spacing);
    g.setColour (findColour (juce::TextEditor::backgroundColourId));
    g.fillRect (area);
    g.setColour (findColour (juce::TextEditor::outlineColourId));
    g.drawRect (area);

    const auto isEmpty = file == juce::File();
    g.setColour (
        findColour (juce::TextEditor::textColourId).withMultipliedAlpha (isEmpty || ! isEnabled() ? 0.6f : 1.0f));
    g.setFont (fontHeight);

    // The name is at the end of a path, so the beginning is what may go.
    auto text = isEmpty ? textWhenEmpty : file.getFullPathName();
    const auto room = area.getWidth() - 2 * textMargin;

    for (int cut = 1; cut < text.length() && g.getCurrentFont().getStringWidth (text) > room; ++cut)
        text = "..." + file.getFullPathName().substring (cut);

    g.drawText (text, area.reduced (textMargin, 0), juce::Justification::centredLeft);
}

} // namespace K7R
