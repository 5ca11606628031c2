// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "dsp/SmoothedValues.h"
#include "dsp/phaser/FastOscillators.h"
#include "dsp/phaser/Sides.h"

namespace K7R
{

class Parameter;

} // namespace K7R

namespace quilvane
{

/** What moves the phaser: the oscillators of both sides, the smoothed values, and the frequencies that they make.

    Each side's all-pass cut-off is 13.75 Hz * 2^((note - 9) / 12), with
    note = centre + depth1 * lfo1 + depth2 * lfo2. The oscillators are taken unipolar (0 to 1), so that
    they only ever sweep upward from the centre, each by up to 63 semitones; the stereo phase shifts
    those of the right side. All values are applied per sample.

    Where the calls ask for less than a run, several of them are worked out at once, ahead of the sound: in a run the
    samples' operations overlap, while one sample alone waits for each of its own. Whatever changes the course takes
    back first what hasn't been used, and moves again, at most a run, to where the sound is; so the values are the same
    to the bit as without (in threads of one floating-point mode).

    Driven by QuilvaneCore under its lock. Nothing here allocates, waits or throws.
*/
class Modulation
{
public:
    static constexpr int maximumRun = Kernels::maximumSamples;

    /** Some samples' values; they stay where they are until the next call. */
    struct Run
    {
        int numSamples;
        const float* hz; // of the sides that were asked for, left and right in turn; three more can be read
        const float* outputGain;
        float lfo1, lfo2; // the left oscillators' at the last sample, 0 to 1
    };

    explicit Modulation (const K7R::SampleRateConstants&);

    /** Before audio starts: oscillators of unusable states start anew; with a new rate, everything does. */
    void prepare (bool sampleRateChanged);

    /** Takes a parameter's value, if it's one of those that matter here.
        @returns whether it is */
    bool parameterChanged (const K7R::Parameter&);

    /** @param bpm beats (quarter notes) per minute */
    void setTempo (double bpm);

    /** @param ppq quarter notes from the start of the song; places the oscillators that are synced */
    void setSongPosition (double ppq);

    /** Goes on by some samples.
        @param sides those whose frequencies are wanted
        @param numSamples the length wanted, from 1 to maximumRun; the run may be shorter, but isn't empty */
    Run next (int numSamples, Sides sides) noexcept;

    /** Goes on by some samples, while the oscillators stand still. */
    void moveSmoothedValuesAlone (int numSamples) noexcept;

private:
    enum ValueIndex : size_t
    {
        centreNote,
        depth1, // semitones
        depth2, // semitones
        outputGain,
        numValues
    };

    /** All that has a state. */
    struct Movers
    {
        explicit Movers (const K7R::SampleRateConstants&);

        /** Hands each oscillator to a function: the first ones of both sides, the second ones. */
        template <typename Function>
        void forEachLFO (Function&& function)
        {
            for (auto* pair : { &lfo1, &lfo2 })
                for (auto& lfo : *pair)
                    function (lfo);
        }

        K7R::SmoothedValues<numValues> values;
        K7R::SmoothedValues<1> stereoPhase;
        std::array<QuilvaneLFO, 2> lfo1, lfo2; // left, right
    };

    struct States
    {
        K7R::SmoothedValues<numValues>::State values {};
        K7R::SmoothedValues<1>::State stereoPhase {};
        std::array<QuilvaneLFO::State, 4> lfos {};
    };

    /** A course of values, worked out at once. */
    struct Course
    {
        int size = 0, used = 0;
        Sides sides;
        States before; // if there are more samples than the first call wanted

        std::array<std::array<float, maximumRun>, numValues> values {};
        std::array<std::array<float, maximumRun>, 1> stereoPhase {};
        std::array<double, maximumRun> rightOffsets {}; // radians
        FastOscillators::Pairs<float> lfo1 {}, lfo2 {}; // unipolar
        alignas (32) std::array<float, std::tuple_size_v<FastOscillators::Pairs<float>> + 4> hz {};
    };

    /** Where anything that moves is changed: at the place that the calls of next() have come to, with nothing ahead. */
    Movers& change() noexcept;

    void lfoParameterChanged (const K7R::Parameter&, std::array<QuilvaneLFO, 2> Movers::*lfos, int firstId);

    States getStates() noexcept;
    void setStates (const States&) noexcept;

    void begin (int numSamples, Sides) noexcept;
    void moveAll (int numSamples) noexcept;
    void workOutFrequencies() noexcept;

    const Kernels& kernels = Kernels::get();
    Movers movers;
    Course course;
    double tempo = 0.0;
};

} // namespace quilvane
