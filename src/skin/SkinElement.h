// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

// What the readers of controls share: the child elements and attributes of a skin's document. Sizes and places are
// bounded, because a host's window and the buffers that are painted into grow with them.

namespace quilvane
{

/** In pixels; no screen is as large. */
constexpr int maximumControlSize = 4096;

/** The child "size": attributes "width" and "height", 0 if they are missing. */
inline juce::Point<int> readSize (const juce::XmlElement& size)
{
    return { juce::jlimit (0, maximumControlSize, size.getIntAttribute ("width")),
             juce::jlimit (0, maximumControlSize, size.getIntAttribute ("height")) };
}

/** The child "pos": attributes "left" and "top", 0 if they are missing. */
inline juce::Point<int> readPosition (const juce::XmlElement& pos)
{
    return { juce::jlimit (-maximumControlSize, maximumControlSize, pos.getIntAttribute ("left")),
             juce::jlimit (-maximumControlSize, maximumControlSize, pos.getIntAttribute ("top")) };
}

/** What a list of controls adds to the places of all of them: attributes "ofsX" and "ofsY". */
inline juce::Point<int> readOffset (const juce::XmlElement& controls)
{
    return { juce::jlimit (-maximumControlSize, maximumControlSize, controls.getIntAttribute ("ofsX")),
             juce::jlimit (-maximumControlSize, maximumControlSize, controls.getIntAttribute ("ofsY")) };
}

/** A colour as hexadecimal ARGB digits. */
inline juce::Colour readColour (const juce::XmlElement& element, const char* attribute, const char* fallback = "0")
{
    return juce::Colour (static_cast<juce::uint32> (element.getStringAttribute (attribute, fallback).getHexValue32()));
}

/** Sets a component's colour if the element has the attribute. */
inline void readColourInto (juce::Component& component, int colourId, const juce::XmlElement& element,
                            const char* attribute)
{
    if (element.hasAttribute (attribute))
        component.setColour (colourId, readColour (element, attribute));
}

/** The attribute "clickEvent", "onPress" or "onRelease"; any other text changes nothing. */
inline void readClickEvent (juce::Button& button, const juce::XmlElement& element)
{
    const auto& text = element.getStringAttribute ("clickEvent");

    if (text == "onPress" || text == "onRelease")
        button.setTriggeredOnMouseDown (text == "onPress");
}

} // namespace quilvane
