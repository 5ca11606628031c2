// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R::skin
{

/** A picture that is painted at several times its size in each direction, and averaged down to its pixels.

    All coordinates are pixels of the finished picture. */
class Canvas
{
public:
    Canvas (int width, int height);

    int getWidth() const noexcept { return width; }
    int getHeight() const noexcept { return height; }

    /** Makes everything transparent again. */
    void clear();

    /** Fills a path with one colour, or with a gradient from the path's top edge to its bottom edge. */
    void fill (const juce::Path&, juce::Colour top, juce::Colour bottom);

    void draw (const juce::Drawable&, const juce::AffineTransform&);

    /** Writes the picture into an image of premultiplied ARGB pixels, replacing what is there. */
    void copyTo (juce::Image&, int x, int y) const;

private:
    int width;
    int height;
    juce::Image fine;
};

/** An empty image that needs no window system. */
juce::Image makeImage (int width, int height);

} // namespace K7R::skin
