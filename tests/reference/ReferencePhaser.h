// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "LFO.h"
#include "Oversampler.h"
#include "RateConstants.h"
#include "Smoother.h"
#include "Stage.h"

#include <cstdint>

namespace reference
{
/** A stage within the oversampler of the same factor. */
struct OversampledStage
{
    /** @param factor  8 or 16 */
    OversampledStage (const RateConstants& constants, int factor);

    /** Replaces one base-rate sample by the network's output, times the oversampler's gain. */
    void process (double& sample);

    Stage stage;
    Oversampler oversampler;
};

/** The plain statement of the phaser's network; what the product is held against.

    It says each operation once, in the order and with the types that the sound is defined by, and does nothing for
    speed. It allocates nothing in process and takes no locks: one thread drives it. Denormal handling is the caller's:
    to compare two runs, both need the same mode of the processor. All state is open, so that a test can look at it.
*/
class ReferencePhaser
{
public:
    /** Builds everything at 44100 Hz, as the plug-in's core is. */
    ReferencePhaser();

    ReferencePhaser (const ReferencePhaser&) = delete;
    ReferencePhaser& operator= (const ReferencePhaser&) = delete;

    /** A parameter's value in the forms that the network reads. */
    struct Value
    {
        float plain;
        float normalised;
        int index;
        bool on;
    };

    /** Takes one parameter by its id 0 to 18; other ids do nothing. */
    void parameterChanged (int id, const Value& value);

    /** Recomputes the rate constants if the rate in Hz differs from the present one, and restarts the network if it
        did or if this is the first call. Otherwise does nothing. */
    void prepare (double sampleRate);

    void tempoChanged (double bpm);
    void songPositionChanged (double ppq);

    /** Outputs may be the inputs, and both inputs may be one buffer. */
    void processStereo (const float* inLeft, const float* inRight, float* outLeft, float* outRight, int numSamples,
                        bool bypassed);

    float getLFO1Value() const { return lfo1Value; }
    float getLFO2Value() const { return lfo2Value; }
    float getLeftMeter() const { return leftMeter; }
    float getRightMeter() const { return rightMeter; }

    RateConstants rateConstants;
    bool prepared = false;

    float leftMeter = 0.0f;
    float rightMeter = 0.0f;
    double meterTable[400];

    std::int32_t quality = 0; // 0 normal, 1 high

    bool leftActive = false;
    bool rightActive = false;
    double leftEnvelope = 0.0;
    double rightEnvelope = 0.0;
    double silenceDecayPerUnit = 0.0004;
    double silenceDecay;
    double silenceHoldTime = 0.0; // seconds
    double silenceTimer = 0.0;    // seconds

    Smoother modulation; // [0] centre note, [1] LFO 1 depth, [2] LFO 2 depth, [3] output gain
    Smoother stereo;     // [0] stereo phase

    OversampledStage normalLeft, normalRight;
    OversampledStage highLeft, highRight;

    LFO lfo1Left, lfo1Right;
    LFO lfo2Left, lfo2Right;

    double tempo = 0.0; // beats per minute

    float leftMeterLevel = 0.0f;
    float rightMeterLevel = 0.0f;
    float leftMeterHold = 0.0f;
    float rightMeterHold = 0.0f;

    float lfo1Value = 0.0f;
    float lfo2Value = 0.0f;

    /** The output of each side at the last sample that wasn't bypassed, after the oversampler's gain and before the
        rounding to float and the output gain; 0 if the side was inactive. */
    double lastLeftNetworkOutput = 0.0;
    double lastRightNetworkOutput = 0.0;

private:
    void lfoParameterChanged (LFO& left, LFO& right, int parameter, const Value& value);
    void restart();
    void updateGate (double xLeft, double xRight);
    float processSide (double x, float lfo1, float lfo2, OversampledStage& normal, OversampledStage& high,
                       double& networkOutput);
    void updateMeter (float output, float& level, float& hold);
};
} // namespace reference
