// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "RateConstants.h"

#include <cstdint>

namespace reference
{
/** A note length and its scale, whose product `value` is in cycles per quarter note. */
struct NoteValue
{
    NoteValue();

    /** 0 (a cycle of 64 whole notes) to 12 (a cycle of 1/64), each twice as fast; other indices give a length of 0. */
    void setNoteIndex (int index);

    /** 0 full, 1 dotted, 2 triplet; other indices give a scale of 0. */
    void setScaleIndex (int index);

    std::int32_t noteIndex = 10;
    std::int32_t scaleIndex = 0;
    double noteLength;
    double scale;
    double value;
};

/** One low-frequency oscillator, stepped once per base-rate sample; its output is bipolar and lagged. */
struct LFO
{
    explicit LFO (const RateConstants& constants);

    void setSync (bool shouldBeSynced);
    void setRate (double hz);
    void setNoteRate (int noteIndex);
    void setNoteScale (int scaleIndex);
    void setTempo (double bpm);
    /** Re-phases a synced oscillator to a position in quarter notes. */
    void setSongPosition (double ppq);

    /** Follows a new sample rate: back to phase 0, with one random value drawn. */
    void prepare();

    /** Gives the present value and moves on by one sample. */
    void next (float& out);

    /** The number that `waveform` holds for the parameter's index 0 to 6, in the order Sine, Triangle, Hyper Triangle,
        Ramp Up, Ramp Down, Square, Sample/Hold. Other indices give -1. */
    static int waveformForIndex (int parameterIndex);

    const RateConstants* rateConstants;
    std::int32_t waveform = 0; // 0 triangle, 1 sine, 2 square, 3 ramp down, 4 ramp up, 5 sample and hold, 6 hyper
    bool inverted = false;
    double phase = 0.0;       // radians
    double phaseOffset = 0.0; // radians
    double readPhase = 0.0;   // radians
    double increment = 0.0;   // radians per sample
    double lagCoefficient = 1.0;
    double lagged = 0.0;
    std::uint32_t randomA = 1732584193u;
    std::uint32_t randomB = 4023233417u;
    float held = 0.0f;
    bool firstHalf = false;
    bool wasFirstHalf = false;
    float hyperExponent = 2.0f;
    bool synced = false;
    bool holdAtWrap = false;
    double effectiveRate = 0.0; // Hz
    double rate = 0.0;          // Hz
    NoteValue noteValue;
    double tempo = 0.0;        // beats per minute
    double songPosition = 0.0; // quarter notes

private:
    void updateRate();
    void updateReadPhase();
    float waveformAt (double r);
    float sampleAndHold (double r);
    void drawRandom();
};
} // namespace reference
