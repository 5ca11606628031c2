// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/controls/ItemChooser.h"

namespace K7R
{

/** A button that reads as the selected item, with an arrow, and opens the list of all. */
class ComboBoxButton final : public ItemChooserOf<ComboBoxButton>
{
public:
    ComboBoxButton();
    ~ComboBoxButton() override;

    void paint (juce::Graphics&) override;
    void colourChanged() override;
    void lookAndFeelChanged() override { colourChanged(); }
    void parentHierarchyChanged() override { colourChanged(); }

protected:
    juce::Font getFont() const override;
    juce::Rectangle<int> getTextArea() const override;

private:
    juce::Rectangle<int> getArrowArea() const;

    const std::unique_ptr<juce::Drawable> arrow;
    juce::Colour arrowColour;
};

} // namespace K7R
