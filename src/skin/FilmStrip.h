// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

/** An image of frames of one size, stacked from the top down; invalid until it's given one. */
class FilmStrip
{
public:
    FilmStrip() = default;

    /** Rows that are left over below the last frame aren't used. Without room for the frames, with none, or with
        frames that are larger than a control may be, the strip is invalid. */
    FilmStrip (const juce::Image& stripImage, int numFrames)
    {
        if (stripImage.isValid() && numFrames >= 1 && numFrames <= stripImage.getHeight()
            && stripImage.getHeight() / numFrames <= maximumControlSize && stripImage.getWidth() <= maximumControlSize)
        {
            image = stripImage;
            frames = numFrames;
            height = stripImage.getHeight() / numFrames;
        }
    }

    bool isValid() const noexcept { return image.isValid(); }
    int getNumFrames() const noexcept { return frames; } // 1 of an invalid one
    const juce::Image& getImage() const noexcept { return image; }
    int getFrameWidth() const noexcept { return image.getWidth(); }
    int getFrameHeight() const noexcept { return height; }

    /** Draws a frame at its own size, unscaled; nothing for a number that the strip hasn't. */
    void draw (juce::Graphics& g, int frame, juce::Point<int> position = {}) const
    {
        if (! juce::isPositiveAndBelow (frame, frames))
            return;

        g.setOpacity (1.0f); // which images take from the colour that was set last
        g.drawImageAt (image.getClippedImage ({ 0, frame * height, image.getWidth(), height }), position.x, position.y);
    }

    /** The frame that stands for a value from 0 to 1: floor (value (numFrames - 1) + 1/2), the sum in single
        precision. Values beyond, and what is no number, give the first or the last frame. */
    static int frameFor (float value, int numFrames) noexcept
    {
        const auto position = value * static_cast<float> (numFrames - 1) + 0.5f;

        if (! (position > 0.0f))
            return 0;

        return static_cast<int> (std::floor (juce::jmin (static_cast<double> (position), numFrames - 1.0)));
    }

private:
    juce::Image image;
    int frames = 1;
    int height = 0;
};

/** The strip that an element names by one of its attributes, of a fixed number of frames. */
inline FilmStrip readStrip (const juce::XmlElement& element, const char* nameAttribute, int numFrames, SkinFile& skin)
{
    const auto image = skin.readImage (element, nameAttribute);
    FilmStrip strip (image, numFrames);

    if (image.isValid() && ! strip.isValid())
        skin.report (&element, "an image of " + juce::String (image.getWidth()) + " x "
                                   + juce::String (image.getHeight()) + " pixels has no " + juce::String (numFrames)
                                   + " frames of 1 to " + juce::String (maximumControlSize) + " pixels");

    return strip;
}

/** The strip that an element names by two of its attributes; one frame where the number is missing. */
inline FilmStrip readStrip (const juce::XmlElement& element, const char* nameAttribute, const char* framesAttribute,
                            SkinFile& skin)
{
    return readStrip (element, nameAttribute, element.getIntAttribute (framesAttribute, 1), skin);
}

} // namespace K7R
