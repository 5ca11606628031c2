// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>

namespace K7R
{

/** Whether a filter's state can have come from sound: finite, and less than 180 dB above full scale.
    Anything else would ring on for seconds, or for ever. */
inline bool isUsableState (double state) noexcept
{
    return std::abs (state) < 1.0e9;
}

} // namespace K7R
