// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/controls/GFXSwitch.h"

#include "skin/SkinElement.h"

namespace K7R
{

GFXSwitch::GFXSwitch (const juce::String& controlName) : LinkedSlider (controlName, 0.001)
{
    setLookAndFeel (&lookAndFeel);
}

GFXSwitch::~GFXSwitch()
{
    setLookAndFeel (nullptr);
}

void GFXSwitch::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    LinkedSlider::readFromXml (element, skin);

    const auto& style = element.getStringAttribute ("style");

    if (style.equalsIgnoreCase ("Rotary"))
        setSliderStyle (juce::Slider::RotaryVerticalDrag);
    else if (style.equalsIgnoreCase ("Horizontal"))
        setSliderStyle (juce::Slider::LinearHorizontal);
    else if (style.equalsIgnoreCase ("Vertical"))
        setSliderStyle (juce::Slider::LinearVertical);

    setThumb (juce::jlimit (0, maximumControlSize, element.getIntAttribute ("thumb", thumb)));

    if (! isRotary() && ! element.hasAttribute ("paramReset"))
        paramReset = false;
}

void GFXSwitch::setThumb (int pixels)
{
    thumb = pixels;
    resized(); // the ends of the travel
    repaint();
}

int GFXSwitch::getFrame() const
{
    return isEnabled() ? FilmStrip::frameFor (getShownValue(), getStrip().getNumFrames()) : 0;
}

} // namespace K7R
