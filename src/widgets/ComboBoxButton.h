// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/ListenerArray.h"
#include "widgets/ItemChooser.h"

namespace quilvane
{

/** A button that reads as the selected item, with an arrow, and opens the list of all. */
class ComboBoxButton final : public ItemChooser
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has chosen an item, maybe the one that was selected. */
        virtual void comboBoxButtonChosen (ComboBoxButton&) = 0;
    };

    ComboBoxButton();
    ~ComboBoxButton() override;

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

    void paint (juce::Graphics&) override;
    void colourChanged() override;
    void lookAndFeelChanged() override { colourChanged(); }
    void parentHierarchyChanged() override { colourChanged(); }

protected:
    void tellChoice() override;
    juce::Font getFont() const override;
    juce::Rectangle<int> getTextArea() const override;

private:
    juce::Rectangle<int> getArrowArea() const;

    ListenerArray<Listener> listeners;
    const std::unique_ptr<juce::Drawable> arrow;
    juce::Colour arrowColour;
};

} // namespace quilvane
