// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/CreditsText.h"

#include <cmath>

namespace K7R
{

namespace
{

constexpr const char* typeface = "Tahoma";
constexpr float fontHeight = 12.5f;
constexpr juce::uint32 headingColour = 0xffb84a00, textColour = 0xff282828;

} // namespace

CreditsText::CreditsText (const juce::String& productName, const juce::String& year)
{
    text.setWordWrap (juce::AttributedString::byWord);
    text.setLineSpacing (2.0f);

    add (productName, true);
    add ("Copyright " + year
             + " K7R Group and the authors of its source code.\n"
               "This program is free software: you can redistribute it and modify it under the terms of the GNU "
               "General Public License as published by the Free Software Foundation, version 3 or any later one. It "
               "comes without any warranty. The source code comes with the program.",
         false);
    add ("JUCE 7", true);
    add ("The framework under the plug-in and its windows. Copyright Raw Material Software Limited. Used under the "
         "GNU General Public License, version 3.",
         false);
    add ("DejaVu Sans Condensed", true);
    add ("The letters of these windows. Copyright Bitstream, Inc., and the DejaVu authors, under the free licence of "
         "the Bitstream Vera fonts.",
         false);
    add ("Inter and JetBrains Mono", true);
    add ("The letters of the panel. Copyright the Inter and JetBrains Mono project authors, under the SIL Open Font "
         "License 1.1.",
         false);
    add ("Libraries", true);
    add ("FLAC, Ogg and Vorbis by Xiph.Org; libpng, libjpeg, zlib and FreeType by their authors.", false);
    add ("VST is a trademark of Steinberg Media Technologies GmbH.", false);

    setTitle ("Credits");
    setDescription (text.getText());
}

void CreditsText::add (const juce::String& run, bool isHeading)
{
    const juce::Font font (typeface, fontHeight, isHeading ? juce::Font::bold : juce::Font::plain);
    text.append (run + (isHeading ? "\n" : "\n\n"), font, juce::Colour (isHeading ? headingColour : textColour));
}

void CreditsText::setWidth (int width)
{
    layout.createLayout (text, static_cast<float> (width));
    setSize (width, static_cast<int> (std::ceil (layout.getHeight())));
    repaint();
}

void CreditsText::paint (juce::Graphics& g)
{
    layout.draw (g, getLocalBounds().toFloat());
}

} // namespace K7R
