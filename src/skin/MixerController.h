// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "widgets/ParameterController.h"

namespace quilvane
{

class SkinFile;

/** The place of a mixer, with its background. It shows no channels yet. */
class MixerController final : public juce::Component, public ParameterController
{
public:
    explicit MixerController (const juce::String& controlName) : juce::Component (controlName) {}

    /** Reads "background", and the children "pos" and "size". */
    void readFromXml (const juce::XmlElement&, SkinFile&);

    void paint (juce::Graphics&) override;

protected:
    void updateFromParameter (Parameter&) override {}

private:
    juce::Image background;
};

} // namespace quilvane
