// SPDX-License-Identifier: GPL-3.0-or-later

#include "LFO.h"

#include <cmath>

namespace reference
{
namespace
{
constexpr double pi = 3.141592653589793;
constexpr double twoPi = 6.283185307179586;
constexpr double threeHalvesPi = 4.71238898038469;
constexpr double quarterPi = 0.7853981633974483;
constexpr double twoOverPi = 0.6366197723675814;
constexpr double oneOverPi = 0.3183098861837907;

double lengthOfNote (int index)
{
    switch (index)
    {
        case 0: return 0.00390625;
        case 1: return 0.0078125;
        case 2: return 0.015625;
        case 3: return 0.03125;
        case 4: return 0.0625;
        case 5: return 0.125;
        case 6: return 0.25;
        case 7: return 0.5;
        case 8: return 1.0;
        case 9: return 2.0;
        case 10: return 4.0;
        case 11: return 8.0;
        case 12: return 16.0;
        default: return 0.0;
    }
}

double valueOfScale (int index)
{
    switch (index)
    {
        case 0: return 1.0;
        case 1: return 0.6666666666666666;
        case 2: return 1.5;
        default: return 0.0;
    }
}

float triangle (double r)
{
    if (r < pi)
        return float (r * twoOverPi - 1.0);

    return float ((threeHalvesPi - r) * twoOverPi);
}

float hyperTriangle (double r, float exponent)
{
    const float u = 0.5f - triangle (r) * 0.5f;
    return 1.0f - 2.0f * std::pow (u, exponent);
}

/** The same 32 bits, read as a signed number. */
std::int32_t asSigned (std::uint32_t bits)
{
    const auto wide = std::int64_t (bits);
    return std::int32_t (wide < 2147483648 ? wide : wide - 4294967296);
}
} // namespace

NoteValue::NoteValue() :
    noteLength (lengthOfNote (noteIndex)),
    scale (valueOfScale (scaleIndex)),
    value (noteLength * scale)
{
}

void NoteValue::setNoteIndex (int index)
{
    noteIndex = index;
    noteLength = lengthOfNote (index);
    value = noteLength * scale;
}

void NoteValue::setScaleIndex (int index)
{
    scaleIndex = index;
    scale = valueOfScale (index);
    value = noteLength * scale;
}

LFO::LFO (const RateConstants& constants) : rateConstants (&constants) {}

void LFO::updateRate()
{
    const double hz = synced ? noteValue.value * tempo * 0.016666666666666666 : rate;
    effectiveRate = hz;
    increment = hz * rateConstants->samplePeriod * twoPi;
}

void LFO::setSync (bool shouldBeSynced)
{
    if (shouldBeSynced == synced)
        return;

    synced = shouldBeSynced;
    updateRate();
}

void LFO::setRate (double hz)
{
    if (hz == rate)
        return;

    rate = hz;
    updateRate();
}

void LFO::setNoteRate (int noteIndex)
{
    noteValue.setNoteIndex (noteIndex);
    updateRate();
}

void LFO::setNoteScale (int scaleIndex)
{
    noteValue.setScaleIndex (scaleIndex);
    updateRate();
}

void LFO::setTempo (double bpm)
{
    tempo = bpm;
    updateRate();
}

void LFO::setSongPosition (double ppq)
{
    songPosition = ppq;

    if (synced)
    {
        const double t = noteValue.value * ppq;
        phase = (t - std::floor (t)) * twoPi;
    }
}

void LFO::prepare()
{
    drawRandom();
    phase = 0.0;
    updateRate();
}

void LFO::next (float& out)
{
    updateReadPhase();
    out = waveformAt (readPhase);

    if (inverted)
        out = -out;

    phase = phase + increment;

    lagged = lagged - (lagged - double (out)) * lagCoefficient;
    out = float (lagged);
}

void LFO::updateReadPhase()
{
    double r = phase + phaseOffset;

    if (r > twoPi)
    {
        if (holdAtWrap)
        {
            phase = phase - increment;
            r = phase + phaseOffset;
        }
        else
        {
            phase = phase - twoPi;
        }

        if (r > twoPi)
            r = r - twoPi;
    }

    if (! (r >= 0.0))
        r = r + twoPi;

    readPhase = r;
}

float LFO::waveformAt (double r)
{
    switch (waveform)
    {
        case 0: return triangle (r);
        case 1: return float (std::sin (r - quarterPi));
        case 2: return r < pi ? 1.0f : -1.0f;
        case 3: return float ((twoPi - r) * oneOverPi - 1.0);
        case 4: return float (r * oneOverPi - 1.0);
        case 5: return sampleAndHold (r);
        case 6: return hyperTriangle (r, hyperExponent);
        default: return 0.0f;
    }
}

float LFO::sampleAndHold (double r)
{
    wasFirstHalf = firstHalf;
    firstHalf = r < pi;

    if (firstHalf && ! wasFirstHalf)
        drawRandom();

    return held;
}

void LFO::drawRandom()
{
    const std::uint32_t v = randomB;
    randomA = randomA ^ v;
    randomB = randomA + v;
    held = float (asSigned (v)) * 4.656613e-10f;
}

int LFO::waveformForIndex (int parameterIndex)
{
    switch (parameterIndex)
    {
        case 0: return 1;
        case 1: return 0;
        case 2: return 6;
        case 3: return 4;
        case 4: return 3;
        case 5: return 2;
        case 6: return 5;
        default: return -1;
    }
}
} // namespace reference
