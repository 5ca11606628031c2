// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/FilmStrip.h"
#include "skin/GUIController.h"

namespace K7R
{

/** A control with a film strip, a size and a place in its panel. */
class BaseGFXController : public GUIController
{
public:
    /** Reads what GUIController does, and the children "gfx", "size" and "pos". The strip decides the size; only
        without one the element does. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes a strip, and its frame's size if it's valid. */
    void setStrip (const FilmStrip&);

    const FilmStrip& getStrip() const noexcept { return strip; }
    int getFramesNum() const noexcept { return framesNum; }
    int getFrameWidth() const noexcept { return frameWidth; }
    int getFrameHeight() const noexcept { return frameHeight; }

protected:
    // For controls that follow their size and place at once.
    virtual void sizeChanged() {}
    virtual void positionChanged() {}

    /** The steps of readFromXml() by themselves, for controls with frame counts of their own. */
    void readGeometry (const juce::XmlElement&);

    juce::Rectangle<int> getPlace() const noexcept { return { left, top, frameWidth, frameHeight }; }

    /** Gives a control's component its place. */
    void place (juce::Component&) const;

    /** Frames in the strip, or as the skin says where there is none. */
    int framesNum = 1;

private:
    FilmStrip strip;
    int frameWidth = 0, frameHeight = 0;
    int left = 0, top = 0;
};

} // namespace K7R
