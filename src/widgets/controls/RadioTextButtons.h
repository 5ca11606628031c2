// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/ListenerArray.h"
#include "widgets/controls/ParameterController.h"

namespace K7R
{

class EnumParameter;

/** A column of buttons, of which one is on: one for each item of a parameter's list. It takes the keyboard's focus as a
    whole; the arrow keys select. */
class RadioTextButtons final : public juce::Component, public ParameterController, private juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void radioButtonSelected (RadioTextButtons&, int index) = 0;
    };

    /** @param parameter null for no buttons */
    explicit RadioTextButtons (EnumParameter* parameter, juce::BorderSize<int> margins = {});
    ~RadioTextButtons() override;

    /** Turns one on, tells the parameter and the listeners; nothing if it's on already. An index that no button
        has turns all of them off. */
    void select (int index);

    /** The one that is on, or -1. */
    int getSelected() const;

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

    void resized() override;
    void paint (juce::Graphics&) override;
    void paintOverChildren (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

    static constexpr int rowHeight = 20;

protected:
    void updateFromParameter (Parameter&) override;

private:
    void buttonClicked (juce::Button*) override;

    /** @returns whether another one is on now */
    bool show (int index);
    void tellSelection();

    const juce::BorderSize<int> margins;
    juce::OwnedArray<juce::TextButton> buttons;
    ListenerArray<Listener> listeners;
};

} // namespace K7R
