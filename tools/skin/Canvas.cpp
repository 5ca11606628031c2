// SPDX-License-Identifier: GPL-3.0-or-later

#include "Canvas.h"

#include <array>

namespace K7R::skin
{

namespace
{

constexpr int fineness = 4; // samples a pixel, in each direction
constexpr int numSamples = fineness * fineness;

constexpr int numChannels = 4; // premultiplied, one byte each

void averageRow (const juce::Image::BitmapData& source, const juce::Image::BitmapData& target, int sourceY, int width,
                 int targetX, int targetY)
{
    for (int x = 0; x < width; ++x)
    {
        std::array<int, numChannels> sums {};

        for (int i = 0; i < fineness; ++i)
        {
            const auto* samples = source.getPixelPointer (x * fineness, sourceY + i);

            for (int j = 0; j < fineness * numChannels; ++j)
                sums[static_cast<size_t> (j % numChannels)] += samples[j];
        }

        auto* pixel = target.getPixelPointer (targetX + x, targetY);

        for (size_t channel = 0; channel < numChannels; ++channel)
            pixel[channel] = static_cast<juce::uint8> ((sums[channel] + numSamples / 2) / numSamples);
    }
}

} // namespace

Canvas::Canvas (int w, int h) : width (w), height (h), fine (makeImage (w * fineness, h * fineness)) {}

void Canvas::clear()
{
    fine.clear (fine.getBounds());
}

void Canvas::fill (const juce::Path& path, juce::Colour top, juce::Colour bottom)
{
    juce::Graphics g (fine);
    auto finePath = path;
    finePath.applyTransform (juce::AffineTransform::scale (fineness));

    if (top == bottom)
    {
        g.setColour (top);
    }
    else
    {
        const auto bounds = finePath.getBounds();
        g.setGradientFill ({ top, bounds.getX(), bounds.getY(), bottom, bounds.getX(), bounds.getBottom(), false });
    }

    g.fillPath (finePath);
}

void Canvas::draw (const juce::Drawable& drawable, const juce::AffineTransform& transform)
{
    juce::Graphics g (fine);
    drawable.draw (g, 1.0f, transform.scaled (fineness));
}

void Canvas::copyTo (juce::Image& image, int left, int top) const
{
    const juce::Image::BitmapData source (fine, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData target (image, juce::Image::BitmapData::readWrite);

    for (int y = 0; y < height; ++y)
        averageRow (source, target, y * fineness, width, left, top + y);
}

juce::Image makeImage (int width, int height)
{
    return { juce::Image::ARGB, width, height, true, juce::SoftwareImageType() };
}

} // namespace K7R::skin
