// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/FastOscillators.h"
#include "dsp/GlassRailEffectCore.h"
#include "dsp/QuilvaneOTA.h"
#include "dsp/SmoothedValues.h"

namespace quilvane
{

/** The complete stereo phaser.

    Each side's all-pass cut-off is 13.75 Hz * 2^((note - 9) / 12), with
    note = centre + depth1 * lfo1 + depth2 * lfo2. The oscillators are taken unipolar (0 to 1), so that
    they only ever sweep upward from the centre, each by up to 63 semitones; the stereo phase shifts
    those of the right side. All control values are applied per sample.

    A side whose input has been silent for 0.5 to 0.6 s is not run and gives exact silence.
*/
class QuilvaneCore final : public GlassRailEffectCore
{
public:
    explicit QuilvaneCore (const SampleRateConstants&);

    void prepare (bool sampleRateChanged) override;
    void parameterChanged (const Parameter&) override;
    void tempoChanged (double bpm) override;
    void songPositionChanged (double ppq) override;
    void processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight, int numSamples,
                        bool bypassed) override;

    /** The left oscillators' outputs at the end of the last call, 0 to 1; 0 while bypassed. Any thread. */
    float getLFO1Value() const noexcept { return lfo1Value.load (std::memory_order_relaxed); }
    float getLFO2Value() const noexcept { return lfo2Value.load (std::memory_order_relaxed); }

private:
    static constexpr int maximumRun = Kernels::maximumSamples;

    template <typename Value>
    using Run = std::array<Value, maximumRun>;

    /** One side of the phaser: its oscillators, its networks of both qualities and its gate. */
    struct Side
    {
        explicit Side (const SampleRateConstants&);

        QuilvaneOTA_Normal normal;
        QuilvaneOTA_High high;
        QuilvaneLFO lfo1, lfo2;
        bool active = false;
        double envelope = 0.0; // activity, 1 at the last sample above the threshold
        float meterHold = 0.0f;
    };

    enum ModulationIndex : size_t
    {
        centreNote,
        depth1, // semitones
        depth2, // semitones
        outputGain,
        numModulations
    };

    /** What moves during some samples, side by side for left and right. */
    struct Controls
    {
        std::array<Run<float>, numModulations> modulation;
        std::array<Run<float>, 1> stereoPhase;
        FastOscillators::Pairs<float> lfo1, lfo2; // unipolar
    };

    template <typename Function>
    void forEachNetwork (Function&&);

    template <typename Function>
    void forEachLFO (Function&&);

    void lfoParameterChanged (const Parameter&, QuilvaneLFO Side::*lfo, int firstId);

    /** Some samples of a block, at most maximumRun. */
    void processRun (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                     int numSamples) noexcept;
    void runControls (Controls&, int numSamples) noexcept;

    /** Which samples of a side are to be run.
        @returns whether all of them are, or none */
    bool runGate (Side&, const float* input, Run<bool>& isActive, int numSamples) const noexcept;

    /** Samples from start to end, during which the same sides are active, in place.
        @param firstSide 0 for the left one */
    template <size_t NumSides>
    void processSides (const std::array<Side*, NumSides>&, size_t firstSide, const Controls&,
                       const std::array<float*, NumSides>& samples, int start, int end) noexcept;

    void runMeters (const float* outputLeft, const float* outputRight, int numSamples) noexcept;

    const Kernels& kernels = Kernels::get();
    int quality = 0; // 0 normal, 1 high
    double silenceDecay;
    SmoothedValues<numModulations> modulation;
    SmoothedValues<1> stereoPhase;
    Side left, right;
    double tempo = 0.0;
    std::atomic<float> lfo1Value { 0.0f };
    std::atomic<float> lfo2Value { 0.0f };
};

} // namespace quilvane
