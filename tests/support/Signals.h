// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstring>
#include <vector>

/** Test signals and what is measured on them; the standard library only. */
namespace signals
{

inline constexpr double pi = 3.14159265358979323846;

/** White noise, the same for the same seed. */
inline std::vector<float> noise (size_t numSamples, uint32_t seed, float amplitude = 0.5f)
{
    std::vector<float> samples (numSamples);

    for (auto& sample : samples)
    {
        seed = seed * 1664525u + 1013904223u;
        sample = amplitude * (static_cast<float> (seed >> 8) / 8388608.0f - 1.0f);
    }

    return samples;
}

inline std::vector<float> sine (size_t numSamples, double hz, double sampleRate, double amplitude = 0.5)
{
    std::vector<float> samples (numSamples);

    for (size_t i = 0; i < numSamples; ++i)
        samples[i] = static_cast<float> (amplitude * std::sin (2.0 * pi * hz * static_cast<double> (i) / sampleRate));

    return samples;
}

/** The amplitude of one frequency in a range of samples, which should hold whole periods of it. */
inline double amplitudeAt (const std::vector<float>& samples, size_t first, size_t count, double hz, double sampleRate)
{
    std::complex<double> sum;

    for (size_t i = 0; i < count; ++i)
        sum += static_cast<double> (samples[first + i])
               * std::polar (1.0, -2.0 * pi * hz * static_cast<double> (i) / sampleRate);

    return 2.0 * std::abs (sum) / static_cast<double> (count);
}

inline double decibels (double gain)
{
    return 20.0 * std::log10 (gain);
}

inline double rms (const std::vector<float>& samples, size_t first, size_t count)
{
    double sum = 0.0;

    for (size_t i = first; i < first + count; ++i)
        sum += static_cast<double> (samples[i]) * static_cast<double> (samples[i]);

    return std::sqrt (sum / static_cast<double> (count));
}

/** RMS levels of consecutive windows. */
inline std::vector<double> envelope (const std::vector<float>& samples, size_t window)
{
    std::vector<double> levels;

    for (size_t start = 0; start + window <= samples.size(); start += window)
        levels.push_back (rms (samples, start, window));

    return levels;
}

/** The period of a repeating envelope, in windows: the first lag from `shortest` on at which it differs
    from itself about as little as at any. */
inline size_t findPeriod (const std::vector<double>& levels, size_t shortest, size_t longest)
{
    const auto differenceAt = [&] (size_t lag)
    {
        double difference = 0.0;

        for (size_t i = 0; i + longest < levels.size(); ++i)
            difference += (levels[i] - levels[i + lag]) * (levels[i] - levels[i + lag]);

        return difference;
    };

    double least = 1.0e300, mean = 0.0;

    for (size_t lag = shortest; lag <= longest; ++lag)
    {
        least = std::min (least, differenceAt (lag));
        mean += differenceAt (lag) / static_cast<double> (longest - shortest + 1);
    }

    const auto isInDip = [&] (size_t lag) { return differenceAt (lag) <= least + 0.1 * mean; };
    auto lag = shortest;

    while (lag < longest && ! isInDip (lag))
        ++lag;

    auto bottom = lag;

    for (; lag <= longest && isInDip (lag); ++lag)
        if (differenceAt (lag) < differenceAt (bottom))
            bottom = lag;

    return bottom;
}

/** How many representable floats lie between two; a large number if one isn't finite. */
inline int64_t ulpDistance (float a, float b)
{
    if (! std::isfinite (a) || ! std::isfinite (b))
        return std::memcmp (&a, &b, sizeof (a)) == 0 ? 0 : INT64_MAX;

    const auto ordered = [] (float x)
    {
        int32_t bits;
        std::memcpy (&bits, &x, sizeof (bits));
        return bits < 0 ? int64_t { INT32_MIN } - bits : int64_t { bits };
    };

    return std::abs (ordered (a) - ordered (b));
}

} // namespace signals
