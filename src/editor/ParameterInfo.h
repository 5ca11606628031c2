// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <memory>

#include "editor/FloatingPanel.h"
#include "parameters/MidiControlMap.h"
#include "parameters/Parameter.h"
#include "widgets/controls/TextButtonWithIcon.h"
#include "widgets/look/HardLabel.h"

namespace K7R
{

/** Tells of one parameter what it is and which MIDI controller moves it, and lets the user teach it another one. What
    happens to the controllers while it is open stands only after "OK". Owned by the editor; message thread. */
class ParameterInfo final : public FloatingPanel, private Parameter::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user is through with it. The listener may delete it.
            @param confirmed whether what was done to the controllers shall stand */
        virtual void parameterInfoClosed (ParameterInfo&, bool confirmed) = 0;

        /** The user wants the parameter's default. */
        virtual void parameterInfoReset (ParameterInfo&) = 0;
    };

    /** @param original a parameter with the default; null for none */
    ParameterInfo (Parameter&, MidiControlMap&, const Parameter* original, Listener&);
    ~ParameterInfo() override;

    Parameter& getParameter() const noexcept { return parameter; }

    /** The same as a press on "Learn". */
    void startLearning() { controllers.startLearning(); }

    /** Takes back what was done to the controllers since the opening. */
    void revert() { controllers.revert(); }

    void resized() override;
    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    /** The controllers' part. */
    class MidiCCComponent final : public juce::Component, private juce::Timer
    {
    public:
        MidiCCComponent (Parameter&, MidiControlMap&, ParameterInfo& parent);
        ~MidiCCComponent() override;

        void startLearning();
        void revert();
        void cancel();
        void confirm();
        juce::Component& getOkButton() { return okButton; }
        void resized() override;

    private:
        void clear();
        void endLearning();
        void updateLabels();
        void timerCallback() override;

        Parameter& parameter;
        MidiControlMap& map;
        ParameterInfo& info;
        const MidiControlMap::Snapshot before;
        const int controllerBefore;
        bool isLearning = false;

        HardLabel caption, number, name;
        TextButtonWithIcon learnButton;
        juce::TextButton clearButton { "Clear" }, okButton { "OK" }, cancelButton { "Cancel" };
    };

    juce::Component* getFirstFocus() override { return &controllers.getOkButton(); }
    void parameterChanged (Parameter&) override;
    void close (bool confirmed) { listener.parameterInfoClosed (*this, confirmed); }

    Parameter& parameter;
    Listener& listener;

    HardLabel title, value, range;
    juce::DrawableButton resetButton, closeButton;
    MidiCCComponent controllers;
};

} // namespace K7R
