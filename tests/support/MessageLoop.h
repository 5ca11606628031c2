// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_events/juce_events.h>

namespace juce
{
// The step of the Linux message loop that plug-in clients use; JUCE declares it where it is needed.
bool dispatchNextMessageOnSystemQueue (bool returnIfNoPendingMessages);
} // namespace juce

/** Runs the message loop of this thread until a condition holds.
    @returns whether it held within the time */
template <typename Condition>
bool runMessageLoopUntil (Condition&& condition, int milliseconds = 2000)
{
    const auto end = juce::Time::getMillisecondCounter() + static_cast<juce::uint32> (milliseconds);

    while (! condition())
    {
        if (juce::Time::getMillisecondCounter() > end)
            return false;

        if (! juce::dispatchNextMessageOnSystemQueue (true))
            juce::Thread::sleep (1);
    }

    return true;
}

/** Delivers what is posted and due now. */
inline void runMessageLoopFor (int milliseconds)
{
    runMessageLoopUntil ([] { return false; }, milliseconds);
}
