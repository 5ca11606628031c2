// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <atomic>
#include <cstddef>

#include "dsp/SampleRateConstants.h"

namespace K7R
{

class Parameter;

/** The object that holds all signal processing of one effect.

    It is entered only by its GlassRailEffect, which owns it and holds its lock during every call
    here, whatever the thread: nothing inside needs a guard, nothing inside may allocate or wait.
    Meters are the exception: the editor reads them at any time.

    This base class processes nothing.
*/
class GlassRailEffectCore
{
public:
    explicit GlassRailEffectCore (const SampleRateConstants&);
    virtual ~GlassRailEffectCore() = default;

    GlassRailEffectCore (const GlassRailEffectCore&) = delete;
    GlassRailEffectCore& operator= (const GlassRailEffectCore&) = delete;

    /** Before audio starts.
        @param sampleRateChanged true the first time, and whenever the rate is a new one */
    virtual void prepare (bool sampleRateChanged);

    /** A parameter of the plug-in changed; told apart by its id. */
    virtual void parameterChanged (const Parameter&);

    /** @param bpm beats (quarter notes) per minute; at each block of a host that tells it */
    virtual void tempoChanged (double bpm);

    /** @param ppq quarter notes from the start of the song; at each block while the transport runs,
        and 0 when a preset was applied */
    virtual void songPositionChanged (double ppq);

    /** Processes a part of a block. Outputs may be the inputs' buffers; the inputs may be one buffer.
        @param bypassed the output has to equal the input */
    virtual void processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                                int numSamples, bool bypassed);

    /** The same for a mono effect, in place. */
    virtual void processMono (float* samples, int numSamples, bool bypassed);

    /** Levels of the output for the meters, 0 to 1, linear in decibels. Any thread. */
    float getLeftMeter() const noexcept { return leftMeter.load (std::memory_order_relaxed); }
    float getRightMeter() const noexcept { return rightMeter.load (std::memory_order_relaxed); }

protected:
    /** The meter's level of one sample: 0 up to -24 dB, 0.8 at full scale, 1 from +6 dB. */
    float getMeterLevel (float sample) const noexcept
    {
        // The limits come first, in an order that sends NaN to the bottom: not every float is an int.
        const auto position = sample * 100.0f + 200.0f;
        constexpr auto last = static_cast<int> (meterTableSize) - 1;
        const auto index =
            position >= static_cast<float> (last) ? last : (position > 0.0f ? static_cast<int> (position) : 0);

        return meterTable[static_cast<std::size_t> (index)];
    }

    void publishMeters (float left, float right) noexcept;

    const SampleRateConstants& rateConstants;

private:
    static constexpr std::size_t meterTableSize = 400;

    using MeterTable = std::array<float, meterTableSize>;

    /** Levels of the samples from -2 to 2, in steps of 0.01; the same for all. */
    static const MeterTable& getMeterTable();

    std::atomic<float> leftMeter { 0.0f };
    std::atomic<float> rightMeter { 0.0f };

    const MeterTable& meterTable = getMeterTable();
};

} // namespace K7R
