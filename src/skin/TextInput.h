// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/PlacedComponent.h"

namespace quilvane
{

/** Shows a text, or its parameter's, at the left. It can't be edited yet, and knows no fonts and colours. */
class TextInput final : public PlacedComponent
{
public:
    using PlacedComponent::PlacedComponent;

    /** Reads further "name", the first text. A double click only resets the parameter if "paramReset" says so. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;

    void setText (const juce::String&);
    const juce::String& getText() const noexcept { return text; }

    void paint (juce::Graphics&) override;

private:
    juce::String text;
};

} // namespace quilvane
