// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/controls/ItemChooser.h"

namespace K7R
{

/** A flat box that shows the selected item and a small arrow, and opens the list of all. */
class ComboBoxEx final : public ItemChooserOf<ComboBoxEx>
{
public:
    using ItemChooserOf::ItemChooserOf;

    void paint (juce::Graphics&) override;

protected:
    juce::Font getFont() const override;
    juce::Rectangle<int> getTextArea() const override;

private:
    juce::Rectangle<int> getArrowArea() const;
};

} // namespace K7R
