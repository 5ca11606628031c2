// SPDX-License-Identifier: GPL-3.0-or-later

#include "PlotPainter.h"

#include <array>
#include <cmath>

#include "Failure.h"
#include "Spectrogram.h"

namespace K7R::host
{

namespace
{

constexpr auto typeface = "DejaVu Sans";

// The layout in pixels.
constexpr int width = 1600;
constexpr int leftMargin = 92;
constexpr int rightMargin = 116;
constexpr int topMargin = 14;
constexpr int titleHeight = 58;
constexpr int plotHeight = 400;
constexpr int panelGap = 18;
constexpr int bottomMargin = 74;
constexpr int scaleGap = 24;
constexpr int scaleWidth = 14;
constexpr int labelGap = 12;
constexpr int labelHeight = 20;
constexpr int unitGap = 12;
constexpr int minTimeSpacing = 96;

constexpr float titleSize = 24.0f;
constexpr float labelSize = 16.0f;

const juce::Colour background (0xff14151a);
const juce::Colour noData (0xff0d0e12);
const juce::Colour titleColour (0xfff1eee9);
const juce::Colour labelColour (0xff9da1aa);
const juce::Colour accent (0xffff8a2b);
const juce::Colour grid = juce::Colours::white.withAlpha (0.08f);
const juce::Colour strongGrid = juce::Colours::white.withAlpha (0.17f);

//==============================================================================
/** A colour by its lightness and chroma in the Oklab space and its hue in degrees; out of the screen's
    gamut, the chroma gives way. */
juce::Colour oklch (double lightness, double chroma, double hue)
{
    const auto a = chroma * std::cos (juce::degreesToRadians (hue));
    const auto b = chroma * std::sin (juce::degreesToRadians (hue));

    const auto cubed = [] (double x) { return x * x * x; };
    const auto l = cubed (lightness + 0.3963377774 * a + 0.2158037573 * b);
    const auto m = cubed (lightness - 0.1055613458 * a - 0.0638541728 * b);
    const auto s = cubed (lightness - 0.0894841775 * a - 1.2914855480 * b);

    const std::array<double, 3> linear { 4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
                                         -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
                                         -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s };

    constexpr double rounding = 0.001;

    for (const auto component : linear)
        if ((component < -rounding || component > 1.0 + rounding) && chroma > rounding)
            return oklch (lightness, chroma * 0.96, hue);

    const auto encode = [] (double x)
    {
        const auto clipped = juce::jlimit (0.0, 1.0, x);
        const auto encoded = clipped <= 0.0031308 ? 12.92 * clipped : 1.055 * std::pow (clipped, 1.0 / 2.4) - 0.055;
        return static_cast<juce::uint8> (std::lround (encoded * 255.0));
    };

    return { encode (linear[0]), encode (linear[1]), encode (linear[2]) };
}

double mix (double from, double to, double amount)
{
    return from + (to - from) * amount;
}

juce::Font makeFont (float size, bool isBold)
{
    return { typeface, size, isBold ? juce::Font::bold : juce::Font::plain };
}

void drawLabel (juce::Graphics& g, const juce::String& text, juce::Rectangle<int> area, juce::Justification where)
{
    g.setColour (labelColour);
    g.setFont (makeFont (labelSize, false));
    g.drawText (text, area, where, false);
}

juce::String describeFrequency (int hz)
{
    return hz < 1000 ? juce::String (hz) : juce::String (hz / 1000) + "k";
}

juce::String describeTime (double time, double step)
{
    if (step < 1.0)
        return juce::String (time, step < 0.1 ? 2 : 1);

    const auto whole = juce::roundToInt (time);
    return step < 60.0 ? juce::String (whole)
                       : juce::String (whole / 60) + ":" + juce::String (whole % 60).paddedLeft ('0', 2);
}

/** The time between two labels in seconds, a round one that leaves them room. */
double chooseTimeStep (double seconds, int pixels)
{
    constexpr std::array<double, 15> steps { 0.01, 0.02, 0.05, 0.1,  0.2,  0.5,   1.0,  2.0,
                                             5.0,  10.0, 15.0, 30.0, 60.0, 120.0, 300.0 };

    for (const auto step : steps)
        if (step / seconds * pixels >= minTimeSpacing)
            return step;

    return 600.0;
}

} // namespace

//==============================================================================
ColourScale ColourScale::levels()
{
    const auto colourAt = [] (double db)
    {
        const auto t = juce::jlimit (0.0, 1.0, 1.0 + db / 80.0);
        return oklch (mix (0.16, 0.96, t),
                      0.015 + 0.19 * std::sin (juce::MathConstants<double>::pi * std::pow (t, 0.85)),
                      mix (275.0, 452.0, std::pow (t, 0.92)));
    };

    return { -80.0, 0.0, 20.0, colourAt };
}

ColourScale ColourScale::changes()
{
    const auto colourAt = [] (double db)
    {
        if (db < 0.0)
        {
            const auto t = juce::jmin (1.0, -db / 30.0);
            return oklch (mix (0.34, 0.93, t), mix (0.008, 0.13, std::sin (t * 2.4)), 228.0);
        }

        const auto t = juce::jmin (1.0, db / 12.0);
        return oklch (mix (0.34, 0.82, std::pow (t, 0.8)), mix (0.008, 0.18, std::pow (t, 0.6)), 58.0);
    };

    return { -30.0, 12.0, 6.0, colourAt };
}

//==============================================================================
PlotPainter::PlotPainter (int panels, double secondsToShow) :
    numPanels (panels),
    seconds (secondsToShow),
    image (juce::Image::RGB, width,
           topMargin + panels * (titleHeight + plotHeight) + (panels - 1) * panelGap + bottomMargin, true,
           juce::SoftwareImageType())
{
    if (! juce::Font::findAllTypefaceNames().contains (typeface))
        throw Failure (juce::String ("the system lacks the font ") + typeface + ", which the picture's texts need");

    juce::Graphics (image).fillAll (background);
}

juce::Rectangle<int> PlotPainter::getPlotSize()
{
    return { width - leftMargin - rightMargin, plotHeight };
}

juce::Rectangle<int> PlotPainter::getPlotArea (int panel) const
{
    return getPlotSize().withPosition (leftMargin,
                                       topMargin + titleHeight + panel * (titleHeight + plotHeight + panelGap));
}

void PlotPainter::addPanel (const juce::String& title, const juce::String& remark, const ColourScale& scale,
                            const LevelAt& levelAt)
{
    const auto area = getPlotArea (numPainted++);
    paintData (area, scale, levelAt);

    juce::Graphics g (image);
    paintTitle (g, area, title, remark);
    paintFrequencies (g, area);
    paintTimes (g, area, numPainted == numPanels);
    paintScale (g, area, scale);
}

void PlotPainter::paintData (juce::Rectangle<int> area, const ColourScale& scale, const LevelAt& levelAt)
{
    const juce::Image::BitmapData pixels (image, area.getX(), area.getY(), area.getWidth(), area.getHeight(),
                                          juce::Image::BitmapData::writeOnly);

    for (int y = 0; y < area.getHeight(); ++y)
        for (int x = 0; x < area.getWidth(); ++x)
        {
            const auto level = levelAt (x, y);
            pixels.setPixelColour (x, y, std::isnan (level) ? noData : scale.colourAt (level));
        }
}

void PlotPainter::paintTitle (juce::Graphics& g, juce::Rectangle<int> area, const juce::String& title,
                              const juce::String& remark)
{
    auto line = area.withBottom (area.getY() - unitGap).withTop (area.getY() - titleHeight + 14);

    drawLabel (g, remark, line.withTop (line.getBottom() - labelHeight), juce::Justification::centredRight);

    g.setColour (accent);
    g.fillRect (line.removeFromLeft (5).withTrimmedTop (4).withTrimmedBottom (2));
    line.removeFromLeft (13);

    g.setColour (titleColour);
    g.setFont (makeFont (titleSize, true));
    g.drawText (title, line.withTrimmedRight (area.getWidth() / 4), juce::Justification::bottomLeft, true);
}

void PlotPainter::paintFrequencies (juce::Graphics& g, juce::Rectangle<int> area)
{
    constexpr std::array<int, 8> labelled { 50, 100, 200, 500, 1000, 2000, 5000, 10000 };

    for (const auto hz : labelled)
    {
        const auto isDecade = hz == 100 || hz == 1000 || hz == 10000;
        const auto y = area.getBottom() - juce::roundToInt (frequencyToAxis (hz) * area.getHeight());

        g.setColour (isDecade ? strongGrid : grid);
        g.fillRect (area.getX(), y, area.getWidth(), 1);
        drawLabel (g, describeFrequency (hz), { 0, y - labelHeight / 2, leftMargin - labelGap, labelHeight },
                   juce::Justification::centredRight);
    }

    drawLabel (g, "Hz", { 0, area.getY() - unitGap - labelHeight, leftMargin - labelGap, labelHeight },
               juce::Justification::centredRight);
}

void PlotPainter::paintTimes (juce::Graphics& g, juce::Rectangle<int> area, bool hasLabels)
{
    const auto step = chooseTimeStep (seconds, area.getWidth());

    for (int i = 0; i * step <= seconds * 1.000001; ++i)
    {
        const auto x = area.getX() + juce::roundToInt (i * step / seconds * area.getWidth());

        if (i > 0 && x < area.getRight())
        {
            g.setColour (grid);
            g.fillRect (x, area.getY(), 1, area.getHeight());
        }

        g.setColour (labelColour.withAlpha (0.6f));
        g.fillRect (x, area.getBottom(), 1, 6);

        if (hasLabels)
            drawLabel (g, describeTime (i * step, step),
                       { x - minTimeSpacing / 2, area.getBottom() + labelGap, minTimeSpacing, labelHeight },
                       juce::Justification::centred);
    }

    if (hasLabels)
        drawLabel (g, step < 60.0 ? "seconds" : "minutes",
                   area.withTop (area.getBottom() + labelGap + labelHeight).withHeight (labelHeight + 6),
                   juce::Justification::centred);
}

void PlotPainter::paintScale (juce::Graphics& g, juce::Rectangle<int> area, const ColourScale& scale)
{
    const juce::Rectangle<int> bar (area.getRight() + scaleGap, area.getY(), scaleWidth, area.getHeight());
    const auto range = scale.highest - scale.lowest;

    for (int y = 0; y < bar.getHeight(); ++y)
    {
        g.setColour (scale.colourAt (scale.highest - range * (y + 0.5) / bar.getHeight()));
        g.fillRect (bar.getX(), bar.getY() + y, bar.getWidth(), 1);
    }

    const auto numTicks = juce::roundToInt (std::floor (range / scale.tickStep)) + 1;

    for (int tick = 0; tick < numTicks; ++tick)
    {
        const auto level = scale.lowest + scale.tickStep * tick;
        const auto y = bar.getBottom() - juce::roundToInt ((level - scale.lowest) / range * bar.getHeight());
        const auto text = (level > 0.0 ? "+" : "") + juce::String (juce::roundToInt (level));

        drawLabel (g, text.replaceCharacter ('-', 0x2212),
                   { bar.getRight() + labelGap - 2, y - labelHeight / 2, rightMargin, labelHeight },
                   juce::Justification::centredLeft);
    }

    drawLabel (g, "dB",
               bar.withBottom (bar.getY() - unitGap).withTop (bar.getY() - unitGap - labelHeight).expanded (12, 0),
               juce::Justification::centred);
}

} // namespace K7R::host
