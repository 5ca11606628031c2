// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

// What the readers of controls share: the child elements and attributes of a skin's document. Sizes and places are
// bounded, because a host's window and the buffers that are painted into grow with them.

namespace K7R
{

/** In pixels; no screen is as large. */
constexpr int maximumControlSize = 4096;

/** The longest text that a control shows, in characters; no control is as wide. Presets may hold longer ones. */
constexpr int longestShownText = 1024;

/** A child by its name with regard to case; null if there is none. */
inline const juce::XmlElement* findExactChild (const juce::XmlElement& parent, juce::StringRef tag)
{
    for (const auto* child : parent.getChildIterator())
        if (child->getTagName() == tag)
            return child;

    return nullptr;
}

/** A truth value as juce::var reads one: a number but 0, "true" or "yes". */
inline bool readBool (const juce::XmlElement& element, const char* attribute, bool fallback)
{
    return element.hasAttribute (attribute) ? static_cast<bool> (juce::var (element.getStringAttribute (attribute)))
                                            : fallback;
}

/** The child "size": attributes "width" and "height", 0 if they are missing. */
inline juce::Point<int> readSize (const juce::XmlElement& size)
{
    return { juce::jlimit (0, maximumControlSize, size.getIntAttribute ("width")),
             juce::jlimit (0, maximumControlSize, size.getIntAttribute ("height")) };
}

/** Two attributes that place something, 0 if they are missing. */
inline juce::Point<int> readPlace (const juce::XmlElement& element, const char* x, const char* y)
{
    return { juce::jlimit (-maximumControlSize, maximumControlSize, element.getIntAttribute (x)),
             juce::jlimit (-maximumControlSize, maximumControlSize, element.getIntAttribute (y)) };
}

/** The child "pos": attributes "left" and "top". */
inline juce::Point<int> readPosition (const juce::XmlElement& pos)
{
    return readPlace (pos, "left", "top");
}

// A component's size and place by such a child; null leaves what stands.
inline void applySize (juce::Component& component, const juce::XmlElement* size)
{
    if (size != nullptr)
        component.setSize (readSize (*size).x, readSize (*size).y);
}

inline void applyPosition (juce::Component& component, const juce::XmlElement* pos)
{
    if (pos != nullptr)
        component.setTopLeftPosition (readPosition (*pos));
}

/** What a list of controls adds to the places of all of them: attributes "ofsX" and "ofsY". */
inline juce::Point<int> readOffset (const juce::XmlElement& controls)
{
    return readPlace (controls, "ofsX", "ofsY");
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

} // namespace K7R
