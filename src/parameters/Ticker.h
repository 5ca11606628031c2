// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_events/juce_events.h>

namespace quilvane
{

/** One timer for all instances of the process. Each timer of their own would wake its thread and the message thread at
    times of its own: 80 times a second for each instance.

    Held by juce::SharedResourcePointer. Listeners are added and removed like a juce::Timer is started and stopped: from
    any thread, and to be safe against a tick under way, from the message thread.
*/
class Ticker final : private juce::Timer
{
public:
    static constexpr int intervalMs = 25;

    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** Message thread. Any listener may be added or removed from within. */
        virtual void tick() = 0;
    };

    Ticker() = default;

    ~Ticker() override { stopTimer(); }

    /** Needs a juce::MessageManager. A listener that is there already stays where it is. */
    void add (Listener&);

    /** Nothing, if it isn't there. */
    void remove (Listener&);

private:
    void timerCallback() override;

    juce::CriticalSection lock; // of the list
    juce::Array<Listener*> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Ticker)
};

} // namespace quilvane
