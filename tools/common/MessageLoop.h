// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

namespace K7R
{
inline namespace tools
{

/** Runs a function on a thread of its own, as hosts run their audio, while the calling message thread
    serves messages; returns or throws when the function does. Once in the program's life, since a
    message loop that was stopped stays stopped. */
void runBesideMessageLoop (const std::function<void()>&);

/** Runs a function on the message thread, from the thread beside it; returns or throws when it does. */
void runOnMessageThread (const std::function<void()>&);

} // namespace tools
} // namespace K7R
