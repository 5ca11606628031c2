// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/controls/LinkedSlider.h"
#include "widgets/look/DefaultSliderLAF.h"

namespace K7R
{

/** A slider or a rotary switch with a strip. Of a linear one the thumb's size moves the ends of the travel: half
    the length of a segment makes each segment of a segmented switch its own target. Disabled, it shows its first
    frame. */
class GFXSwitch : public LinkedSlider
{
public:
    explicit GFXSwitch (const juce::String& controlName);
    ~GFXSwitch() override;

    /** Reads further "style" ("Rotary", "Horizontal", "Vertical") and "thumb", in pixels. A linear switch is only
        reset by a double click if "paramReset" says so. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

protected:
    int getFrame() const override;
    juce::String getOwnText() const override { return juce::String (getValue()); }
    void setThumb (int pixels);

private:
    class LF final : public DefaultSliderLAF
    {
    public:
        explicit LF (const GFXSwitch& control) : owner (control) {}

        /** At least one pixel of travel is left. */
        int getSliderThumbRadius (juce::Slider&) override
        {
            const auto length = owner.isHorizontal() ? owner.getWidth() : owner.getHeight();
            return juce::jlimit (0, juce::jmax (0, (length - 1) / 2), owner.thumb);
        }

    private:
        const GFXSwitch& owner;
    };

    LF lookAndFeel { *this };
    int thumb = 10;
};

} // namespace K7R
