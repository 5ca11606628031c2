// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_events/juce_events.h>

namespace K7R
{

/** One timer for all instances. Each timer of their own would wake its thread and the message thread at times of its own:
    80 times a second for each instance.

    Held by juce::SharedResourcePointer and nothing else. Listeners are added and removed like a juce::Timer is started
    and stopped: from any thread, and to be safe against a tick under way, from the message thread. The first tick comes
    one to two intervals after add().
*/
class Ticker final : private juce::Timer
{
public:
    static constexpr int intervalMs = 25;

    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** Message thread. Any listener may be added or removed from within, and the last holder may go. Where another
            one is removed, this one may be called again in the same tick. */
        virtual void tick() = 0;
    };

    Ticker() = default;

    ~Ticker() override;

    /** Needs a juce::MessageManager. A listener that is there already stays where it is. */
    void add (Listener&);

    /** Nothing, if it isn't there. */
    void remove (Listener&);

private:
    struct Entry
    {
        Listener* listener;
        bool isNew; // and waits for the next tick
    };

    void timerCallback() override;
    Listener* getFrom (int& place);

    juce::CriticalSection lock; // of the list
    juce::Array<Entry> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Ticker)
};

} // namespace K7R
