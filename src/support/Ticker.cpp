// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Ticker.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace K7R
{

Ticker::~Ticker()
{
    jassert (listeners.isEmpty());
    stopTimer();
}

void Ticker::add (Listener& listener)
{
    const juce::ScopedLock scope (lock);
    const auto isThis = [&] (const Entry& entry) { return entry.listener == &listener; };

    if (std::none_of (listeners.begin(), listeners.end(), isThis))
        listeners.add ({ &listener, true });

    if (! isTimerRunning())
        startTimer (intervalMs);
}

void Ticker::remove (Listener& listener)
{
    const juce::ScopedLock scope (lock);
    listeners.removeIf ([&] (const Entry& entry) { return entry.listener == &listener; });

    if (listeners.isEmpty())
        stopTimer();
}

/** The next one to be called from a place down, to which the place is moved; null if there is none. */
Ticker::Listener* Ticker::getFrom (int& place)
{
    const juce::ScopedLock scope (lock);

    for (place = juce::jmin (place, listeners.size() - 1); place >= 0; --place)
        if (auto& entry = listeners.getReference (place); ! std::exchange (entry.isNew, false))
            return entry.listener;

    return nullptr;
}

void Ticker::timerCallback()
{
    const juce::SharedResourcePointer<Ticker> keptAlive;

    // From the last to the first, so that a removal leaves none out that stays.
    for (int place = std::numeric_limits<int>::max(); auto* listener = getFrom (place); --place)
        listener->tick();
}

} // namespace K7R
