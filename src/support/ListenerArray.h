// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R
{

/** Listeners in the order of their addition, walked from the last to the first.

    A walk keeps no state in the list, so that several threads may walk it at once, which
    juce::ListenerList doesn't allow. A listener may be removed during a walk, from within a
    callback: where the list shrank below the place of the walk, it goes on from the new last one.

    There is no lock: additions and removals belong to the message thread, and a list that the
    audio thread walks is filled before audio starts. The list owns nothing.
*/
template <typename Listener>
class ListenerArray
{
public:
    /** Adds a listener unless it is there already. */
    void add (Listener* listener)
    {
        jassert (listener != nullptr);
        listeners.addIfNotAlreadyThere (listener);
    }

    void remove (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

    bool isEmpty() const noexcept { return listeners.isEmpty(); }

    /** Calls `callback (Listener&)` for each. */
    template <typename Callback>
    void call (Callback&& callback) const
    {
        for (int i = listeners.size() - 1; i >= 0; --i)
        {
            i = juce::jmin (i, listeners.size() - 1);

            if (i >= 0)
                callback (*listeners.getUnchecked (i));
        }
    }

private:
    juce::Array<Listener*> listeners;
};

} // namespace K7R
