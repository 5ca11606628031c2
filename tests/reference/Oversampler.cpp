// SPDX-License-Identifier: GPL-3.0-or-later

#include "Oversampler.h"

namespace reference
{
namespace
{
void shift (HalfBand::Branch& branch, double x, double y)
{
    branch.x[1] = branch.x[0];
    branch.x[0] = x;
    branch.y[1] = branch.y[0];
    branch.y[0] = y;
}
} // namespace

double HalfBand::step (double v)
{
    const double yA = coefficientA * (v - a.y[1]) + a.x[1];
    const double yB = coefficientB * (v - b.y[1]) + b.x[1];
    const double output = yA + b.y[0];

    shift (a, v, yA);
    shift (b, v, yB);
    return output;
}

Oversampler::Oversampler (int oversamplingFactor) :
    factor (oversamplingFactor),
    levels (oversamplingFactor == 16 ? 4 : 3),
    gain (1.0 / double (oversamplingFactor))
{
}
} // namespace reference
