// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include <juce_graphics/juce_graphics.h>

namespace K7R::host
{

/** A scale of decibels and the colours that show them. */
struct ColourScale
{
    double lowest, highest; // dB
    double tickStep;        // dB between two labels
    std::function<juce::Colour (double)> colourAt;

    /** Levels below the loudest one, from dark to light: lightness rises evenly while the hue goes from
        indigo through red to cream. */
    static ColourScale levels();

    /** A change of level: blue for what is taken away, orange for what is added, grey for neither. */
    static ColourScale changes();
};

/** Paints a picture of panels that stand above each other and share a time axis.

    Created for a number of panels; each is then added from the top. Message thread.
*/
class PlotPainter
{
public:
    /** Throws a Failure if the system lacks the font. */
    PlotPainter (int numPanels, double seconds);

    /** The size in pixels of the area in a panel that shows data. */
    static juce::Rectangle<int> getPlotSize();

    /** The level in dB of a pixel of that area; what is no number shows the background. */
    using LevelAt = std::function<double (int x, int y)>;

    void addPanel (const juce::String& title, const juce::String& remark, const ColourScale&, const LevelAt&);

    const juce::Image& getImage() const noexcept { return image; }

private:
    juce::Rectangle<int> getPlotArea (int panel) const;
    void paintData (juce::Rectangle<int>, const ColourScale&, const LevelAt&);
    void paintTitle (juce::Graphics&, juce::Rectangle<int>, const juce::String& title, const juce::String& remark);
    void paintFrequencies (juce::Graphics&, juce::Rectangle<int>);
    void paintTimes (juce::Graphics&, juce::Rectangle<int>, bool hasLabels);
    void paintScale (juce::Graphics&, juce::Rectangle<int>, const ColourScale&);

    const int numPanels;
    const double seconds;
    int numPainted = 0;
    juce::Image image;
};

} // namespace K7R::host
