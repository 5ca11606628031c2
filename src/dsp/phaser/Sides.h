// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstddef>

namespace quilvane
{

/** Which sides of the sound are meant. */
struct Sides
{
    bool left = false, right = false;

    size_t count() const noexcept { return static_cast<size_t> (left) + static_cast<size_t> (right); }

    bool operator== (Sides other) const noexcept { return left == other.left && right == other.right; }
    bool operator!= (Sides other) const noexcept { return ! (*this == other); }
};

} // namespace quilvane
