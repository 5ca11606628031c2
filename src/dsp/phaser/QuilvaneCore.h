// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/phaser/FastNetwork.h"
#include "dsp/phaser/Modulation.h"
#include "effect/GlassRailEffectCore.h"

namespace quilvane
{

/** The complete stereo phaser.

    Modulation moves the cut-off of each side's network.

    A side whose input has been silent for 0.5 to 0.6 s is not run and gives exact silence. Input that isn't finite
    silences its side for one run; nothing that isn't finite is put out.
*/
class QuilvaneCore final : public K7R::GlassRailEffectCore
{
public:
    explicit QuilvaneCore (const K7R::SampleRateConstants&);

    void prepare (bool sampleRateChanged) override;
    void parameterChanged (const K7R::Parameter&) override;
    void tempoChanged (double bpm) override;
    void songPositionChanged (double ppq) override;
    void processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight, int numSamples,
                        bool bypassed) override;

    /** The left oscillators' outputs at the end of the last call, 0 to 1; 0 while bypassed. Any thread. */
    float getLFO1Value() const noexcept { return lfo1Value.load (std::memory_order_relaxed); }
    float getLFO2Value() const noexcept { return lfo2Value.load (std::memory_order_relaxed); }

private:
    static constexpr int maximumRun = Modulation::maximumRun;

    using IsActive = std::array<bool, maximumRun>;

    /** One side's gate and meter. */
    struct Side
    {
        bool active = false;
        double envelope = 0.0; // activity, 1 at the last sample above the threshold
        float meterHold = 0.0f;
    };

    /** Parts of the host's buffers, of left and right. Some may be the same. */
    struct Buffers
    {
        std::array<const float*, 2> in;
        std::array<float*, 2> out;

        Buffers from (int start) const noexcept
        {
            return { { in[0] + start, in[1] + start }, { out[0] + start, out[1] + start } };
        }
    };

    template <typename Function>
    void forEachNetwork (Function&&);

    /** Some samples of a block, at most maximumRun. */
    void processRun (const Buffers&, int numSamples) noexcept;

    /** Which samples of a side are to be run.
        @param isActive filled where it's not the same for all of them
        @returns whether it is: what the side then says of itself is true of all */
    bool runGate (Side&, const float* input, IsActive&, int numSamples) const noexcept;

    /** Samples during which the same sides are active. */
    void processSides (const Buffers&, Sides, const Modulation::Run&) noexcept;

    /** Replaces a run by zeros if not all of it is finite, and clears what keeps that side's network from sounding.
        @param side 0 for left, 1 for right */
    void recoverSide (size_t side, float* output, size_t numSamples) noexcept;

    void publishLFOs (float first, float second) noexcept
    {
        lfo1Value.store (first, std::memory_order_relaxed);
        lfo2Value.store (second, std::memory_order_relaxed);
    }

    void runMeters (const float* outputLeft, const float* outputRight, int numSamples) noexcept;

    int quality = 0; // 0 normal, 1 high
    double silenceDecay;
    Modulation modulation;
    FastNetwork<QuilvaneOTA_Normal> normal;
    FastNetwork<QuilvaneOTA_High> high;
    Side left, right;
    std::atomic<float> lfo1Value { 0.0f };
    std::atomic<float> lfo2Value { 0.0f };
};

} // namespace quilvane
