// SPDX-License-Identifier: GPL-3.0-or-later

#include "ReferencePhaser.h"

#include <cmath>
#include <initializer_list>

namespace reference
{
namespace
{
constexpr double builtAtRate = 44100.0;
constexpr double pi = 3.141592653589793;
constexpr float highestFrequency = 12543.854f; // Hz, of MIDI note 127

RateConstants constantsAt (double rate)
{
    RateConstants constants;
    constants.update (rate);
    return constants;
}

float unipolar (float bipolar)
{
    return (bipolar + 1.0f) * 0.5f;
}

float limitedToUnit (float value)
{
    if (value < 0.0f)
        return 0.0f;

    return value > 1.0f ? 1.0f : value;
}

float frequencyOfNote (float note)
{
    const float e = (note - 9.0f) * 0.083333336f;
    float hz = float (std::pow (2.0, double (e)) * 13.75);

    if (hz < 0.0f)
        hz = 0.0f;

    if (hz > highestFrequency)
        hz = highestFrequency;

    return hz;
}

/** The limits stand before the truncation, so that NaN ends at 0 and no large value is out of the integer's range. */
int meterIndex (float output)
{
    const float position = output * 100.0f + 200.0f;

    if (! (position >= 0.0f))
        return 0;

    if (position >= 399.0f)
        return 399;

    return int (position);
}

double meterLevelAt (int i)
{
    const double x = std::fabs (double (i - 200) * 0.01);
    const double v = (x > 0.0 ? std::log10 (x) * 0.6666666666666666 : -10.666666666666666) + 0.8;

    if (v < 0.0)
        return 0.0;

    return v > 1.0 ? 1.0 : v;
}
} // namespace

OversampledStage::OversampledStage (const RateConstants& constants, int factor) :
    stage (constants, double (factor)),
    oversampler (factor)
{
}

void OversampledStage::process (double& sample)
{
    oversampler.process (sample, [this] (double& s) { stage.process (s); });
    sample = sample * oversampler.gain;
}

ReferencePhaser::ReferencePhaser() :
    rateConstants (constantsAt (builtAtRate)),
    silenceDecay (1.0 - double (rateConstants.rateScaleF) * silenceDecayPerUnit),
    modulation (rateConstants),
    stereo (rateConstants),
    normalLeft (rateConstants, 8),
    normalRight (rateConstants, 8),
    highLeft (rateConstants, 16),
    highRight (rateConstants, 16),
    lfo1Left (rateConstants),
    lfo1Right (rateConstants),
    lfo2Left (rateConstants),
    lfo2Right (rateConstants)
{
    for (int i = 0; i < 400; ++i)
        meterTable[i] = meterLevelAt (i);

    for (auto* lfo : { &lfo1Left, &lfo1Right, &lfo2Left, &lfo2Right })
    {
        lfo->hyperExponent = 1.5f;
        lfo->lagCoefficient = rateConstants.lagScale * 0.01;
    }
}

void ReferencePhaser::parameterChanged (int id, const Value& value)
{
    const float n = value.normalised;

    if (id >= 0 && id <= 4)
        lfoParameterChanged (lfo1Left, lfo1Right, id, value);

    if (id >= 5 && id <= 9)
        lfoParameterChanged (lfo2Left, lfo2Right, id - 5, value);

    if (id == 10)
        modulation.target[1] = n * 63.0f;

    if (id == 11)
        modulation.target[2] = n * 63.0f;

    if (id == 12)
        modulation.target[0] = n * 93.86314f + 31.349958f;

    if (id == 13)
        stereo.target[0] = n;

    for (auto* oversampled : { &normalLeft, &normalRight, &highLeft, &highRight })
    {
        Stage& stage = oversampled->stage;

        if (id == 14)
            stage.stageCount = 2 * value.index + 2;

        if (id == 15)
        {
            const float f = n * 0.95f;
            stage.feedbackTarget = double (f);
            stage.wetMixTarget = double (f) * 0.1631578952074051 + 0.5;
            stage.loopHighPassAmount = double (f) * 0.88888;
        }

        if (id == 16)
            stage.mixTarget = double (n);
    }

    if (id == 17)
        modulation.target[3] = n * n * 4.0f;

    if (id == 18)
        quality = value.index;
}

void ReferencePhaser::lfoParameterChanged (LFO& left, LFO& right, int parameter, const Value& value)
{
    for (auto* lfo : { &left, &right })
    {
        if (parameter == 0)
            lfo->setSync (value.on);

        if (parameter == 1)
            lfo->setRate (double (value.plain));

        if (parameter == 2)
            lfo->setNoteRate (value.index + 1);

        if (parameter == 3) // the parameter counts triplet, dotted, full; the note value counts the other way
            lfo->setNoteScale (2 - value.index);

        if (parameter == 4)
            lfo->waveform = LFO::waveformForIndex (value.index);
    }
}

void ReferencePhaser::prepare (double sampleRate)
{
    const bool rateChanged = rateConstants.update (sampleRate);

    if (rateChanged || ! prepared)
        restart();

    prepared = true;
}

void ReferencePhaser::restart()
{
    for (auto* lfo : { &lfo1Left, &lfo1Right, &lfo2Left, &lfo2Right })
        lfo->prepare();

    for (auto* oversampled : { &normalLeft, &normalRight, &highLeft, &highRight })
        oversampled->stage.reset();

    modulation.updateStep();
    stereo.updateStep();
    modulation.jump();
    stereo.jump();

    silenceDecay = 1.0 - double (rateConstants.rateScaleF) * silenceDecayPerUnit;
}

void ReferencePhaser::tempoChanged (double bpm)
{
    if (bpm == tempo)
        return;

    tempo = bpm;

    for (auto* lfo : { &lfo1Left, &lfo1Right, &lfo2Left, &lfo2Right })
        lfo->setTempo (bpm);
}

void ReferencePhaser::songPositionChanged (double ppq)
{
    for (auto* lfo : { &lfo1Left, &lfo1Right, &lfo2Left, &lfo2Right })
        lfo->setSongPosition (ppq);
}

void ReferencePhaser::processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight,
                                     int numSamples, bool bypassed)
{
    float a = 0.0f;
    float b = 0.0f;
    float c = 0.0f;
    float d = 0.0f;

    for (int i = 0; i < numSamples; ++i)
    {
        modulation.advance();
        stereo.advance();

        // Both inputs are read before an output is written, since the buffers may be the same.
        const float inL = inLeft[i];
        const float inR = inRight[i];

        if (bypassed)
        {
            outLeft[i] = inL;
            outRight[i] = inR;
            continue;
        }

        double xL = double (inL);
        double xR = double (inR);
        updateGate (xL, xR);

        lfo1Left.next (a);
        lfo2Left.next (b);
        a = unipolar (a);
        b = unipolar (b);

        lfo1Right.phaseOffset = double (stereo.current[0]) * pi;
        lfo2Right.phaseOffset = double (stereo.current[0]) * pi;

        lfo1Right.next (c);
        lfo2Right.next (d);
        c = unipolar (c);
        d = unipolar (d);

        lastLeftNetworkOutput = 0.0;
        lastRightNetworkOutput = 0.0;

        outLeft[i] = leftActive ? processSide (xL, a, b, normalLeft, highLeft, lastLeftNetworkOutput) : 0.0f;
        outRight[i] = rightActive ? processSide (xR, c, d, normalRight, highRight, lastRightNetworkOutput) : 0.0f;

        updateMeter (outLeft[i], leftMeterLevel, leftMeterHold);
        updateMeter (outRight[i], rightMeterLevel, rightMeterHold);
    }

    lfo1Value = a;
    lfo2Value = b;
    leftMeter = limitedToUnit (leftMeterHold);
    rightMeter = limitedToUnit (rightMeterHold);
}

void ReferencePhaser::updateGate (double xLeft, double xRight)
{
    if (std::fabs (float (xLeft)) > 1.52587e-5f)
    {
        leftActive = true;
        leftEnvelope = 1.0;
        silenceTimer = 0.0;
    }

    if (std::fabs (float (xRight)) > 1.52587e-5f)
    {
        rightActive = true;
        rightEnvelope = 1.0;
        silenceTimer = 0.0;
    }

    leftEnvelope = leftEnvelope * silenceDecay;
    rightEnvelope = rightEnvelope * silenceDecay;
    silenceTimer = silenceTimer + rateConstants.samplePeriod;

    if (silenceTimer >= silenceHoldTime)
    {
        if (leftEnvelope < 1.5258699932019226e-05)
            leftActive = false;

        if (rightEnvelope < 1.5258699932019226e-05)
            rightActive = false;
    }
}

float ReferencePhaser::processSide (double x, float lfo1, float lfo2, OversampledStage& normal, OversampledStage& high,
                                    double& networkOutput)
{
    const float note = lfo1 * modulation.current[1] + lfo2 * modulation.current[2] + modulation.current[0];
    const float hz = frequencyOfNote (note);

    OversampledStage* chosen = nullptr;

    if (quality == 0)
        chosen = &normal;
    else if (quality == 1)
        chosen = &high;

    if (chosen != nullptr)
    {
        chosen->stage.setFrequency (double (hz));
        chosen->stage.advanceSmoothing();
        chosen->process (x);
    }

    networkOutput = x;
    return float (x) * modulation.current[3];
}

void ReferencePhaser::updateMeter (float output, float& level, float& hold)
{
    level = float (meterTable[meterIndex (output)]);

    if (level > hold)
        hold = level;

    hold = hold * rateConstants.meterDecayF;
}
} // namespace reference
