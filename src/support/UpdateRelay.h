// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <functional>

#include <juce_events/juce_events.h>

#include "support/Ticker.h"

namespace K7R
{

/** The way from any thread to the message thread that costs the caller no system call.

    A posted message wakes the message thread through a pipe and may grow a queue, which the audio
    thread must not do. A thread that isn't the message thread therefore leaves a flag at the thing
    that changed and calls requestPoll(); the ticker, on the message thread, then makes it call the
    poll function, at most an interval later, or two after start().

    Owned by the ParameterManager.
*/
class UpdateRelay final : private Ticker::Listener
{
public:
    /** @param poll called on the message thread when a poll was requested since the last call */
    explicit UpdateRelay (std::function<void()> poll);
    ~UpdateRelay() override;

    /** From here on requests are served. Needs a juce::MessageManager. */
    void start();

    /** True if the calling thread is known to be the message thread, which may post for itself.
        Any thread, wait-free. Which thread is the message thread can change under some hosts: a
        wrong answer is possible for one interval. It costs that delay, or a post. */
    bool isMessageThread() const noexcept;

    /** Asks for a poll. Any thread, wait-free. */
    void requestPoll() noexcept { pollRequested.store (true, std::memory_order_release); }

private:
    void tick() override;

    juce::SharedResourcePointer<Ticker> ticker;
    std::function<void()> poll;
    std::atomic<juce::Thread::ThreadID> messageThread { nullptr };
    std::atomic<bool> pollRequested { false };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (UpdateRelay)
};

} // namespace K7R
