// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ModulationSlider.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr double step = 0.01;
constexpr int scaleHeight = 11, barHeight = 10;
constexpr float scaleFontHeight = 9.5f;

// In pixels; where there is less, the marks go before they run into each other.
constexpr int leastWidthForEnds = 76, leastWidthForAll = 128;

struct Mark
{
    const char* text;
    float place; // of the bar's width
    bool isEnd;
};

constexpr Mark marks[] {
    { "-1.0", 0.0f, true }, { "-0.5", 0.25f, false }, { "+0.5", 0.75f, false }, { "+1.0", 1.0f, true }
};

} // namespace

ModulationSlider::ModulationSlider() : juce::Slider (juce::Slider::LinearHorizontal, juce::Slider::NoTextBox)
{
    setLookAndFeel (&*look);
    setRange (-1.0, 1.0, step);
    setValue (0.0, juce::dontSendNotification);
    setDoubleClickReturnValue (true, 0.0);
    setScrollWheelEnabled (false); // the list around it is scrolled
    setWantsKeyboardFocus (true);
    setMouseClickGrabsKeyboardFocus (false);
}

ModulationSlider::~ModulationSlider()
{
    setLookAndFeel (nullptr);
}

juce::String ModulationSlider::getTextFromValue (double value)
{
    constexpr int digits = 2;
    const auto text = juce::String (std::abs (value), digits);
    return (std::abs (value) < step / 2.0 ? "" : value < 0.0 ? "-" : "+") + text;
}

void ModulationSlider::paint (juce::Graphics& g)
{
    juce::Slider::paint (g);

    if (! hasKeyboardFocus (false))
        return;

    if (const auto* around = getParentComponent())
        if (const auto* theme = dynamic_cast<const DefaultLookAndFeel*> (&around->getLookAndFeel()))
            theme->drawFocusRing (g, look->getSliderLayout (*this).sliderBounds.expanded (margin));
}

//==============================================================================
juce::Slider::SliderLayout ModulationSlider::OwnLookAndFeel::getSliderLayout (juce::Slider& slider)
{
    // The bar and its scale together stand in the middle.
    const auto area = slider.getLocalBounds().reduced (margin);
    const auto hasScale = area.getHeight() >= barHeight + scaleHeight;
    const auto whole = area.withSizeKeepingCentre (
        area.getWidth(), juce::jmin (area.getHeight(), barHeight + (hasScale ? scaleHeight : 0)));
    return { whole.withHeight (juce::jmin (barHeight, whole.getHeight())), {} };
}

void ModulationSlider::OwnLookAndFeel::drawLinearSlider (juce::Graphics& g, int x, int y, int width, int height,
                                                         float position, float, float, juce::Slider::SliderStyle,
                                                         juce::Slider& slider)
{
    constexpr juce::uint32 ground = 0xff9a9a9a, line = 0xff5b5b5b, fill = 0xffeb6e2a, handle = 0xff282828;
    constexpr float handleWidth = 3.0f, disabledAlpha = 0.5f;

    const juce::Rectangle<int> bar (x, y, width, height);
    const auto inside = bar.toFloat();
    const auto middle = inside.getCentreX();
    const auto alpha = slider.isEnabled() ? 1.0f : disabledAlpha;
    const auto colourOf = [=] (juce::uint32 argb) { return juce::Colour (argb).withMultipliedAlpha (alpha); };

    g.setColour (colourOf (ground));
    g.fillRect (bar);
    g.setColour (colourOf (fill));
    g.fillRect (juce::Rectangle<float>::leftTopRightBottom (juce::jmin (middle, position), inside.getY(),
                                                            juce::jmax (middle, position), inside.getBottom()));

    g.setColour (colourOf (line));

    for (const auto place : { 0.25f, 0.5f, 0.75f })
        g.fillRect (juce::roundToInt (inside.getX() + place * (inside.getWidth() - 1.0f)), y, 1, height);

    g.drawRect (bar, 1);
    g.setColour (colourOf (handle));
    g.fillRect (juce::Rectangle<float> (handleWidth, inside.getHeight())
                    .withCentre ({ juce::jlimit (inside.getX() + handleWidth / 2.0f,
                                                 inside.getRight() - handleWidth / 2.0f, position),
                                   inside.getCentreY() }));

    if (slider.getHeight() >= bar.getBottom() + scaleHeight)
        drawScale (g, bar.withY (bar.getBottom()).withHeight (scaleHeight), slider);
}

void ModulationSlider::OwnLookAndFeel::drawScale (juce::Graphics& g, juce::Rectangle<int> scale, juce::Slider& slider)
{
    constexpr juce::uint32 markColour = 0xff5b5b5b, amountColour = 0xffb84a00;
    constexpr float disabledAlpha = 0.5f;
    const juce::Font font ("Tahoma", scaleFontHeight, juce::Font::plain);
    const auto alpha = slider.isEnabled() ? 1.0f : disabledAlpha;

    const auto drawAt = [&] (const juce::String& text, float place, juce::uint32 colour)
    {
        // The ends stay within the bar.
        const auto width = juce::jmin (scale.getWidth(), juce::roundToInt (font.getStringWidthFloat (text)) + 2);
        const auto centre = scale.getX() + juce::roundToInt (place * static_cast<float> (scale.getWidth()));
        const auto x = juce::jlimit (scale.getX(), scale.getRight() - width, centre - width / 2);
        g.setColour (juce::Colour (colour).withMultipliedAlpha (alpha));
        g.drawText (text, scale.withX (x).withWidth (width), juce::Justification::centred, false);
    };

    g.setFont (font);

    for (const auto& mark : marks)
        if (scale.getWidth() >= (mark.isEnd ? leastWidthForEnds : leastWidthForAll))
            drawAt (mark.text, mark.place, markColour);

    drawAt (slider.getTextFromValue (slider.getValue()), 0.5f, amountColour);
}

} // namespace K7R
