// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>
#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{

/** A list of what in a skin can't be shown, and where, for people who make skins.

    Given to a SkinFile, which adds to it while a panel is built: each place that falls back to something plain says
    why. The editor gives none and hears nothing.
*/
class SkinProblems
{
public:
    struct Problem
    {
        int line;           // of the document, from 1 on; 0 for the skin as a whole
        juce::String place; // the control, by tag and name, and the element within it: `Knob "Rate", gfx`
        juce::String text;  // what is wrong with it
    };

    /** Finds the lines and places of all elements. A juce::XmlElement doesn't know them, so this counts along.
        @param text what the elements were parsed from
        @param root has to stand as long as problems of its elements are added */
    void setDocument (const juce::String& text, const juce::XmlElement& root);

    /** Adds a problem.
        @param element where it is; null for the skin as a whole */
    void add (const juce::XmlElement* element, const juce::String& text);

    /** All problems, in the order of the lines. */
    std::vector<Problem> getProblems() const;

private:
    struct Place
    {
        int line = 0;
        juce::String owner; // the nearest element around that has a name
    };

    void findPlaces (const juce::XmlElement&, const juce::String& owner, const std::vector<int>& lines, size_t& index);

    std::map<const juce::XmlElement*, Place> places;
    std::vector<Problem> problems;
};

} // namespace K7R
