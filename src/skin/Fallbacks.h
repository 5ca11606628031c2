// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/FilmStrip.h"

namespace K7R
{

/** What controls without an image paint in its place; an aid for people who make skins. */
struct Fallbacks
{
    /** The face of a button. */
    static juce::Colour faceOf (bool isPressed)
    {
        const auto grey = static_cast<juce::uint8> (isPressed ? 102 : 230);
        return juce::Colour (grey, grey, grey);
    }

    /** Around a whole control, or a field. */
    static void drawFrame (juce::Graphics& g, juce::Rectangle<int> area)
    {
        g.setColour (juce::Colour (0xffb3b3b3));
        g.drawRect (area, 1);
    }

    /** A framed square in the middle with the present state and their number: "2/7". */
    static void paintState (juce::Graphics& g, juce::Rectangle<int> area, juce::Colour face, int state, int numStates)
    {
        constexpr int side = 16;
        const auto square = area.withSizeKeepingCentre (side, side);

        g.setColour (face);
        g.fillRect (square);
        g.setColour (juce::Colours::black);
        g.drawRect (square, 1);
        g.setFont (9.0f);
        g.drawText (juce::String (state) + "/" + juce::String (numStates), square, juce::Justification::centred, false);
    }

    /** A cell of white with black text, or of black alone. */
    static void paintCell (juce::Graphics& g, juce::Rectangle<int> cell, bool isDark, const juce::String& text)
    {
        g.setColour (isDark ? juce::Colours::black : juce::Colours::white);
        g.fillRect (cell);

        if (isDark)
            return;

        g.setColour (juce::Colours::black);
        g.setFont (static_cast<float> (cell.getHeight()) * 0.75f);
        g.drawText (text, cell, juce::Justification::centred, false);
    }

    /** A cell by its strip, whose first frame is the dark one, or without one as above. */
    static void paintCell (juce::Graphics& g, const FilmStrip& strip, juce::Rectangle<int> cell, bool isDark, int frame,
                           const juce::String& text)
    {
        if (strip.isValid())
            strip.draw (g, isDark ? 0 : frame, cell.getPosition());
        else
            paintCell (g, cell, isDark, text);
    }

    /** A white field in a grey frame with black text. */
    static void paintItem (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& text)
    {
        constexpr int margin = 4;

        g.setColour (juce::Colours::white);
        g.fillRect (area);
        drawFrame (g, area);
        g.setColour (juce::Colours::black);
        g.setFont (textHeight);
        g.drawFittedText (text, area.reduced (margin, 0), juce::Justification::centredLeft, 1);
    }

    /** The same with an arrow that points down. */
    static void paintComboBox (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& text)
    {
        constexpr float arrowWidth = 8.0f, arrowHeight = 5.0f;
        constexpr int arrowRoom = 20;

        paintItem (g, area, text);

        const auto place = area.removeFromRight (arrowRoom).toFloat();
        const auto arrow = place.withSizeKeepingCentre (arrowWidth, arrowHeight);
        juce::Path path;
        path.addTriangle (arrow.getTopLeft(), arrow.getTopRight(), { arrow.getCentreX(), arrow.getBottom() });
        g.fillPath (path);
    }

    static constexpr float textHeight = 13.0f;
};

} // namespace K7R
