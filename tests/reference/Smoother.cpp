// SPDX-License-Identifier: GPL-3.0-or-later

#include "Smoother.h"

namespace reference
{
Smoother::Smoother (const RateConstants& constants) :
    rateConstants (&constants),
    base (constants.smoothingStepF),
    step (base * constants.rateScaleF)
{
}

void Smoother::updateStep()
{
    step = base * rateConstants->rateScaleF;
}

void Smoother::advance()
{
    for (int i = 0; i < 4; ++i)
        current[i] = current[i] - (current[i] - target[i]) * step;
}

void Smoother::jump()
{
    for (int i = 0; i < 4; ++i)
        current[i] = target[i];
}
} // namespace reference
