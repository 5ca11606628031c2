// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>
#include <cstdint>

#include "dsp/Clock.h"
#include "dsp/SampleRateConstants.h"

namespace quilvane
{

/** The waveforms over a phase from 0 to 2 pi, in the precision that the sound has. */
namespace shapes
{

constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;
constexpr double oneOverPi = 0.3183098861837907;
constexpr double twoOverPi = 0.6366197723675814;
constexpr double threeHalvesPi = 4.71238898038469;
constexpr double quarterPi = 0.7853981633974483;
constexpr float hyperExponent = 1.5f;

/** -1 at phase 0, 1 at pi. */
inline float triangle (double phase) noexcept
{
    return static_cast<float> (phase < pi ? phase * twoOverPi - 1.0 : (threeHalvesPi - phase) * twoOverPi);
}

inline float square (double phase) noexcept
{
    return phase < pi ? 1.0f : -1.0f;
}

inline float rampDown (double phase) noexcept
{
    return static_cast<float> ((twoPi - phase) * oneOverPi - 1.0);
}

inline float rampUp (double phase) noexcept
{
    return static_cast<float> (phase * oneOverPi - 1.0);
}

inline float hyperTriangle (double phase) noexcept
{
    const auto u = 0.5f - triangle (phase) * 0.5f;
    return 1.0f - 2.0f * std::pow (u, hyperExponent);
}

} // namespace shapes

/** One low-frequency oscillator, free-running or synced to the host's tempo.

    Bipolar output, -1 to 1, through a one-pole lag that rounds the steps of the square, the ramps
    and the random steps. Driven by Modulation under the core's lock.
*/
class QuilvaneLFO
{
public:
    enum class Waveform
    {
        triangle = 0,
        sine = 1, // 45 degrees behind its zero crossing
        square = 2,
        rampDown = 3,
        rampUp = 4,
        sampleAndHold = 5, // bipolar steps, one per cycle
        hyperTriangle = 6, // with a curved edge at the top
    };

    explicit QuilvaneLFO (const K7R::SampleRateConstants&);

    /** After a change of the sample rate: phase 0, the next random step, and the new increment. */
    void prepare();

    /** Starts again at phase 0 if the phase or the lag is no number any more. */
    void recover() noexcept;

    void setWaveform (Waveform newWaveform) noexcept { waveform = newWaveform; }

    /** @param shouldSync whether the note value and tempo give the rate, else setRate() does */
    void setSync (bool shouldSync);
    void setRate (double hz);

    /** The index of NoteValue. */
    void setNoteRate (int noteIndex);
    void setNoteScale (K7R::NoteValue::Scale);

    /** @param bpm beats (quarter notes) per minute */
    void setTempo (double bpm);

    /** Places the phase of a synced oscillator on the song's grid; a free one only keeps it.
        @param ppq quarter notes from the start of the song */
    void setSongPosition (double ppq);

    /** What is added to the phase when the waveform is read, in radians. */
    void setPhaseOffset (double radians) noexcept { phaseOffset = radians; }

    /** The output for this sample; goes on to the next. */
    void next (float& out) noexcept;

    /** What next() moves. */
    struct State
    {
        double phase = 0.0; // radians
        double lagged = 0.0;

        // Two words of the random numbers; every oscillator starts from the same, so that oscillators of one rate and
        // phase draw the same sequence.
        uint32_t randomA = 1732584193;
        uint32_t randomB = 4023233417;
        float held = 0.0f;
        bool firstHalf = false;
    };

    const State& getState() const noexcept { return state; }
    void setState (const State& newState) noexcept { state = newState; }

    bool isSynced() const noexcept { return synced; }

    /** Hz */
    double getEffectiveRate() const noexcept { return effectiveRate; }

private:
    friend class FastOscillators;

    void updateIncrement();
    void drawRandomStep() noexcept;

    /** Where the waveform is read, from 0 to 2 pi; takes a turn off a phase that is past one. */
    static double readPhaseAndWrap (double& turning, double offset) noexcept
    {
        auto readPhase = turning + offset;

        if (readPhase > shapes::twoPi)
        {
            turning -= shapes::twoPi;
            readPhase -= shapes::twoPi;
        }

        return readPhase >= 0.0 ? readPhase : readPhase + shapes::twoPi;
    }

    float readWaveform (double readPhase) noexcept;
    float readRandomStep (double readPhase) noexcept;

    const K7R::SampleRateConstants& rateConstants;
    Waveform waveform = Waveform::triangle;
    State state;
    double phaseOffset = 0.0;    // radians
    double increment = 0.0;      // radians per sample
    const double lagCoefficient; // per sample, that of the rate at construction at any rate

    bool synced = false;
    double effectiveRate = 0.0; // Hz
    double rate = 0.0;          // Hz
    K7R::Clock clock;
};

} // namespace quilvane
