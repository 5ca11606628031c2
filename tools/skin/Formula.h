// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>

#include <juce_core/juce_core.h>

namespace K7R::skin
{

/** The variables of a formula, by name. */
using Variables = std::map<juce::String, double>;

/** The number that a formula of a skin's sources gives.

    A formula has numbers, variables, + - * / and brackets, and these functions; angles are in degrees,
    conditions are 1 or 0:

        sin (a)  cos (a)  sqrt (x)  pow (x, y)  log (x)  abs (x)  floor (x)  round (x)
        min (x, y)  max (x, y)  clamp (x, lowest, highest)  mix (from, to, amount)
        atLeast (x, y)  equal (x, y)

    Throws a Failure with the formula's text for one that can't be computed.
*/
double evaluate (const juce::String& formula, const Variables&);

} // namespace K7R::skin
