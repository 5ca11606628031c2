// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "skin/FilmStrip.h"
#include "widgets/ParameterController.h"

namespace quilvane
{

class SkinFile;

/** Shows a parameter's item by a frame of a strip. It doesn't open its picker yet. */
class ImageComboBox final : public juce::Component, public ParameterController
{
public:
    explicit ImageComboBox (const juce::String& controlName) : juce::Component (controlName) {}

    /** Reads the children "pos", "size", "gfx" ("resource", "framesNum") and "param" ("name"). */
    void readFromXml (const juce::XmlElement&, SkinFile&);

    void paint (juce::Graphics&) override;

protected:
    void updateFromParameter (Parameter&) override;

private:
    FilmStrip strip;
    int currentIndex = 0;
};

} // namespace quilvane
