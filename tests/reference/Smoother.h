// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "RateConstants.h"

namespace reference
{
/** Four float values that share one step and follow their targets with one pole, once per base-rate sample.

    The step's base is taken when the object is built; only its scale follows the sample rate.
*/
struct Smoother
{
    explicit Smoother (const RateConstants& constants);

    /** Recomputes `step` for the present sample rate. */
    void updateStep();

    /** Moves each value one sample towards its target. */
    void advance();

    /** Puts each value on its target. */
    void jump();

    const RateConstants* rateConstants;
    float current[4] = {};
    float target[4] = {};
    float base;
    float step;
};
} // namespace reference
