// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/Ticker.h"

#include <limits>

namespace quilvane
{

void Ticker::add (Listener& listener)
{
    const juce::ScopedLock scope (lock);
    listeners.addIfNotAlreadyThere (&listener);

    if (! isTimerRunning())
        startTimer (intervalMs);
}

void Ticker::remove (Listener& listener)
{
    const juce::ScopedLock scope (lock);
    listeners.removeFirstMatchingValue (&listener);

    if (listeners.isEmpty())
        stopTimer();
}

void Ticker::timerCallback()
{
    const auto getFrom = [this] (int& place) -> Listener*
    {
        const juce::ScopedLock scope (lock);
        place = juce::jmin (place, listeners.size() - 1);
        return place >= 0 ? listeners.getUnchecked (place) : nullptr;
    };

    // From the last to the first, so that what is removed meanwhile moves none that is still to come.
    for (int place = std::numeric_limits<int>::max(); auto* listener = getFrom (place); --place)
        listener->tick();
}

} // namespace quilvane
