// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "dsp/SampleRateConstants.h"

namespace quilvane
{

/** A group of values that follow their targets through one-pole smoothers of one step.

    The time constant is about 11.3 ms at 44100 Hz and nearly that at other rates.
*/
template <size_t Size>
class SmoothedValues
{
public:
    explicit SmoothedValues (const SampleRateConstants& constants) :
        rateConstants (constants),
        base (constants.smoothingStepF),
        step (base * constants.rateScaleF)
    {
    }

    void setTarget (size_t index, float value) noexcept { target[index] = value; }

    float operator[] (size_t index) const noexcept { return current[index]; }

    /** One step of all values; once per sample. */
    void advance() noexcept
    {
        for (size_t i = 0; i < Size; ++i)
            current[i] -= (current[i] - target[i]) * step;
    }

    /** After a change of the sample rate: the new step, and all values at their targets. */
    void prepare() noexcept
    {
        step = base * rateConstants.rateScaleF;
        current = target;
    }

private:
    const SampleRateConstants& rateConstants;
    std::array<float, Size> current {};
    std::array<float, Size> target {};
    const float base; // the step at construction, which is at 44100 Hz
    float step;
};

} // namespace quilvane
