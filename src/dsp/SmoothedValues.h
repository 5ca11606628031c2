// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <algorithm>
#include <array>

#include "dsp/SampleRateConstants.h"

namespace K7R
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

    /** Where the values are. */
    using State = std::array<float, Size>;

    const State& getState() const noexcept { return current; }
    void setState (const State& state) noexcept { current = state; }

    void setTarget (size_t index, float value) noexcept { target[index] = value; }

    /** One step of all values; once per sample. */
    void advance() noexcept
    {
        for (size_t i = 0; i < Size; ++i)
            current[i] -= (current[i] - target[i]) * step;
    }

    /** Some steps, and the values after each of them, by index and step.
        @param numSteps at least 1, and at most MaximumSteps */
    template <size_t MaximumSteps>
    void advance (std::array<std::array<float, MaximumSteps>, Size>& values, int numSteps) noexcept
    {
        const auto before = current;
        advance();

        if (current == before) // and so at every further step
        {
            for (size_t i = 0; i < Size; ++i)
                std::fill_n (values[i].begin(), numSteps, current[i]);

            return;
        }

        auto moving = current;

        for (size_t n = 0; n < static_cast<size_t> (numSteps); ++n)
        {
            for (size_t i = 0; i < Size; ++i)
            {
                values[i][n] = moving[i];
                current[i] = moving[i];
                moving[i] -= (moving[i] - target[i]) * step;
            }
        }
    }

    /** After a change of the sample rate: the new step, and all values at their targets. */
    void prepare() noexcept
    {
        step = base * rateConstants.rateScaleF;
        current = target;
    }

private:
    const SampleRateConstants& rateConstants;
    State current {};
    std::array<float, Size> target {};
    const float base; // the step at construction, which is at 44100 Hz
    float step;
};

} // namespace K7R
