// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/ListenerArray.h"
#include "widgets/ItemChooser.h"

namespace quilvane
{

/** A flat box that shows the selected item and a small arrow, and opens the list of all. */
class ComboBoxEx final : public ItemChooser
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has chosen an item, maybe the one that was selected. */
        virtual void comboBoxChosen (ComboBoxEx&) = 0;
    };

    using ItemChooser::ItemChooser;

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

    void paint (juce::Graphics&) override;

protected:
    void tellChoice() override;
    juce::Font getFont() const override;
    juce::Rectangle<int> getTextArea() const override;

private:
    juce::Rectangle<int> getArrowArea() const;

    ListenerArray<Listener> listeners;
};

} // namespace quilvane
