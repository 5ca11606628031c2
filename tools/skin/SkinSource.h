// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>
#include <memory>
#include <set>

#include <juce_gui_basics/juce_gui_basics.h>

#include "Lettering.h"

namespace K7R::skin
{

/** The texts that stand in for "{name}" in a macro or template. */
using Substitutes = std::map<juce::String, juce::String>;

/** One of the sizes that a skin can be drawn in. */
struct SkinSize
{
    juce::String name;
    double scale = 1.0; // pixels a design unit
    int leastCap = 1;   // pixels; capitals are never lower
};

/** The two colours of a fill, from its top to its bottom. */
struct Fill
{
    juce::Colour top;
    juce::Colour bottom;
};

/** The sources of a skin: "panel.xml" in a folder, and the documents that it includes.

    Holds the palette, the typefaces and the named pieces; what they mean stands at the head of panel.xml.
    Every function throws a Failure that names what is missing.
*/
class SkinSource
{
public:
    /** @param fonts where font files are looked for, in all folders below it */
    SkinSource (const juce::File& folder, const juce::File& fonts);

    SkinSize getSize (const juce::String& name) const;

    /** The element that describes the whole panel. */
    const juce::XmlElement& getPanel() const { return *panel; }

    /** A macro, template or bitmap font by its tag and name. */
    const juce::XmlElement& find (const juce::String& tag, const juce::String& name) const;

    const Lettering& getLettering (const juce::String& name) const;

    /** A vector picture of the folder. */
    const juce::Drawable& getDrawing (const juce::String& fileName) const;

    /** "grey", "grey@0.5" at half its opacity, or "light to dark". */
    Fill getFill (const juce::String& text) const;

private:
    void include (const juce::File&);
    void take (std::unique_ptr<juce::XmlElement>);
    juce::Colour getColour (const juce::String& text) const;

    juce::File folder;
    juce::File fontFolder;
    std::set<juce::String> included;
    std::map<juce::String, std::unique_ptr<juce::XmlElement>> pieces;
    std::map<juce::String, juce::Colour> palette;
    std::map<juce::String, SkinSize> sizes;
    std::map<juce::String, std::unique_ptr<Lettering>> letterings;
    mutable std::map<juce::String, std::unique_ptr<juce::Drawable>> drawings;
    std::unique_ptr<juce::XmlElement> panel;
};

/** A copy of an element in which "{name}" and "{name|otherwise}" are replaced in all attributes. */
std::unique_ptr<juce::XmlElement> substitute (const juce::XmlElement&, const Substitutes&);

/** An element's attributes as substitutes. */
Substitutes getSubstitutes (const juce::XmlElement&);

/** An attribute that has to be there. */
juce::String requireAttribute (const juce::XmlElement&, const char* name);

} // namespace K7R::skin
