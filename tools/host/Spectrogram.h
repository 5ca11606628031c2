// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_graphics/juce_graphics.h>

namespace K7R::host
{

class AudioInput;

/** What of a stereo stream is looked at. */
enum class Channel
{
    mixed,
    left,
    right,
};

// The frequency axis in Hz, logarithmic from row to row.
constexpr double lowestFrequency = 40.0;
constexpr double highestFrequency = 18000.0;

/** The frequency at a place of the axis, 0 at its lowest and 1 at its highest end; and back. */
double axisToFrequency (double place);
double frequencyToAxis (double hz);

/** The power of a sound over time and frequency, in the columns and rows of a picture.

    Row 0 is the highest frequency. Two lengths of window share the axis: a long one tells low notes
    apart, and a shorter one keeps the time of what sounds above them.
*/
class Spectrogram
{
public:
    /** Looks at the first seconds of a file, or as many as it has: silence follows. */
    Spectrogram (AudioInput&, Channel, juce::Rectangle<int> size, double seconds);

    /** The power of one cell, 1 for a sine at full scale. */
    float getPower (int column, int row) const noexcept { return cells[indexOf (column, row)]; }

    /** The power that all but a few of the loudest cells stay under. */
    float getPeak() const;

    /** The power of this sound over that of another one, cell by cell, smoothed over those around it, up to so
        many columns and rows away. A loud cell counts more there than a soft one, but by far less than its
        power. Where the other sound is silent, the ratio is 0. */
    Spectrogram over (const Spectrogram& other, int columnRadius, int rowRadius) const;

    /** Each cell becomes the mean of those around it, up to so many columns and rows away. */
    void smooth (int columnRadius, int rowRadius);

private:
    size_t indexOf (int column, int row) const noexcept
    {
        return static_cast<size_t> (column) * static_cast<size_t> (rows) + static_cast<size_t> (row);
    }

    int columns, rows;
    std::vector<float> cells;
};

} // namespace K7R::host
