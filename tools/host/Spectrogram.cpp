// SPDX-License-Identifier: GPL-3.0-or-later

#include "Spectrogram.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include <juce_dsp/juce_dsp.h>

#include "AudioFiles.h"

namespace K7R::host
{

namespace
{

// The two windows in seconds, and the frequencies in Hz between which the shorter takes over.
constexpr double longWindow = 0.186;
constexpr double shortWindow = 0.093;
constexpr double fadeFrom = 250.0;
constexpr double fadeTo = 1000.0;

/** Frames of one column, spread over the time around it: fewer would leave noise speckled. */
constexpr int minFrames = 3;
constexpr int maxFrames = 12;

/** Cells that may be louder than the peak, as a part of all. */
constexpr double loudest = 0.0005;

/** The power of a cell's power that is its weight in a smoothed ratio. */
constexpr float ratioWeight = 0.2f;

/** A file of any content gives a picture: what is no number counts as silence. */
constexpr float highestSample = 1.0e6f;

//==============================================================================
/** Takes the mean power spectrum of a sound around one time. */
class Analyser
{
public:
    Analyser (AudioInput& inputToUse, Channel channelToUse, double windowSeconds) :
        input (inputToUse),
        channel (channelToUse),
        order (juce::roundToInt (std::log2 (windowSeconds * input.getFileRate()))),
        fft (order),
        window (static_cast<size_t> (fft.getSize())),
        frame (static_cast<size_t> (fft.getSize()) * 2),
        power (static_cast<size_t> (fft.getSize() / 2 + 1)),
        audio (2, fft.getSize()),
        binWidth (input.getFileRate() / fft.getSize())
    {
        for (size_t i = 0; i < window.size(); ++i)
        {
            const auto phase = juce::MathConstants<double>::twoPi * static_cast<double> (i);
            window[i] = static_cast<float> (0.5 - 0.5 * std::cos (phase / static_cast<double> (window.size())));
        }
    }

    /** @param centre the time in samples
        @param span the samples over which frames are spread */
    void measure (double centre, double span)
    {
        const auto size = fft.getSize();
        const auto numFrames = juce::jlimit (minFrames, maxFrames, static_cast<int> (std::ceil (4.0 * span / size)));
        const auto spread = juce::jmax (span, 0.5 * size);

        std::fill (power.begin(), power.end(), 0.0f);

        for (int i = 0; i < numFrames; ++i)
        {
            const auto offset = spread * ((i + 0.5) / numFrames - 0.5);
            addFrame (static_cast<juce::int64> (std::floor (centre + offset)) - size / 2);
        }

        // A sine at full scale has the power 1.
        const auto scale = 16.0f / (static_cast<float> (size) * static_cast<float> (size));

        for (auto& bin : power)
            bin *= scale / static_cast<float> (numFrames);
    }

    /** The mean power from one frequency to another, in Hz. */
    float getPower (double from, double to) const
    {
        const auto first = from / binWidth;
        const auto numSteps = juce::jmax (1, static_cast<int> (std::ceil ((to - from) / binWidth)));
        auto sum = 0.0f;

        for (int i = 0; i < numSteps; ++i)
            sum += getPowerAtBin (first + (to - from) / binWidth * (i + 0.5) / numSteps);

        return sum / static_cast<float> (numSteps);
    }

private:
    float getPowerAtBin (double bin) const
    {
        const auto index = static_cast<size_t> (bin);

        if (index + 1 >= power.size())
            return 0.0f;

        const auto fraction = static_cast<float> (bin - std::floor (bin));
        return power[index] + (power[index + 1] - power[index]) * fraction;
    }

    float getSample (int index) const
    {
        const auto left = audio.getSample (0, index);
        const auto right = audio.getSample (1, index);
        const auto sample = channel == Channel::left ? left : channel == Channel::right ? right : (left + right) * 0.5f;

        return std::isfinite (sample) ? juce::jlimit (-highestSample, highestSample, sample) : 0.0f;
    }

    void addFrame (juce::int64 start)
    {
        input.readAt (start, audio);
        std::fill (frame.begin(), frame.end(), 0.0f);

        for (size_t i = 0; i < window.size(); ++i)
            frame[i] = getSample (static_cast<int> (i)) * window[i];

        fft.performRealOnlyForwardTransform (frame.data(), true);

        for (size_t bin = 0; bin < power.size(); ++bin)
            power[bin] += std::norm (std::complex<float> (frame[2 * bin], frame[2 * bin + 1]));
    }

    AudioInput& input;
    const Channel channel;
    const int order;
    juce::dsp::FFT fft;
    std::vector<float> window, frame, power;
    juce::AudioBuffer<float> audio;
    const double binWidth; // Hz
};

/** How much of the shorter window counts at a frequency. */
float getShortPart (double hz)
{
    const auto x = juce::jlimit (0.0, 1.0, std::log (hz / fadeFrom) / std::log (fadeTo / fadeFrom));
    return static_cast<float> (x * x * (3.0 - 2.0 * x));
}

/** The running mean of a line of cells, which stand a stride apart. */
void smoothLine (float* line, int length, size_t stride, int radius, std::vector<float>& scratch)
{
    scratch.resize (static_cast<size_t> (length));

    for (int i = 0; i < length; ++i)
    {
        const auto first = juce::jmax (0, i - radius);
        const auto last = juce::jmin (length - 1, i + radius);
        auto sum = 0.0;

        for (int j = first; j <= last; ++j)
            sum += static_cast<double> (line[static_cast<size_t> (j) * stride]);

        scratch[static_cast<size_t> (i)] = static_cast<float> (sum / (last - first + 1));
    }

    for (int i = 0; i < length; ++i)
        line[static_cast<size_t> (i) * stride] = scratch[static_cast<size_t> (i)];
}

} // namespace

//==============================================================================
double axisToFrequency (double place)
{
    return lowestFrequency * std::pow (highestFrequency / lowestFrequency, place);
}

double frequencyToAxis (double hz)
{
    return std::log (hz / lowestFrequency) / std::log (highestFrequency / lowestFrequency);
}

Spectrogram::Spectrogram (AudioInput& input, Channel channel, juce::Rectangle<int> size, double seconds) :
    columns (size.getWidth()),
    rows (size.getHeight()),
    cells (static_cast<size_t> (columns) * static_cast<size_t> (rows))
{
    Analyser lower (input, channel, longWindow);
    Analyser upper (input, channel, shortWindow);
    const auto step = seconds * input.getFileRate() / columns;

    for (int column = 0; column < columns; ++column)
    {
        const auto centre = (column + 0.5) * step;
        lower.measure (centre, step);
        upper.measure (centre, step);

        for (int row = 0; row < rows; ++row)
        {
            const auto top = axisToFrequency (1.0 - static_cast<double> (row) / rows);
            const auto bottom = axisToFrequency (1.0 - static_cast<double> (row + 1) / rows);
            const auto part = getShortPart (std::sqrt (top * bottom));

            cells[indexOf (column, row)] =
                (1.0f - part) * lower.getPower (bottom, top) + part * upper.getPower (bottom, top);
        }
    }
}

float Spectrogram::getPeak() const
{
    auto sorted = cells;
    const auto place = static_cast<size_t> (static_cast<double> (sorted.size() - 1) * (1.0 - loudest));
    const auto nth = sorted.begin() + static_cast<std::ptrdiff_t> (place);
    std::nth_element (sorted.begin(), nth, sorted.end());
    return *nth;
}

Spectrogram Spectrogram::over (const Spectrogram& other, int columnRadius, int rowRadius) const
{
    auto ratio = *this;
    auto weights = other;

    for (size_t i = 0; i < cells.size(); ++i)
    {
        const auto reference = other.cells[i];
        weights.cells[i] = reference > 0.0f ? std::pow (reference, ratioWeight) : 0.0f;
        ratio.cells[i] = reference > 0.0f ? cells[i] / reference * weights.cells[i] : 0.0f;
    }

    ratio.smooth (columnRadius, rowRadius);
    weights.smooth (columnRadius, rowRadius);

    for (size_t i = 0; i < cells.size(); ++i)
        ratio.cells[i] = weights.cells[i] > 0.0f ? ratio.cells[i] / weights.cells[i] : 0.0f;

    return ratio;
}

void Spectrogram::smooth (int columnRadius, int rowRadius)
{
    std::vector<float> scratch;

    for (int row = 0; row < rows; ++row)
        smoothLine (&cells[indexOf (0, row)], columns, static_cast<size_t> (rows), columnRadius, scratch);

    for (int column = 0; column < columns; ++column)
        smoothLine (&cells[indexOf (column, 0)], rows, 1, rowRadius, scratch);
}

} // namespace K7R::host
