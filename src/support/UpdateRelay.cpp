// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/UpdateRelay.h"

namespace K7R
{

UpdateRelay::UpdateRelay (std::function<void()> pollFunction) : poll (std::move (pollFunction)) {}

UpdateRelay::~UpdateRelay()
{
    ticker->remove (*this);
}

void UpdateRelay::start()
{
    // Else it would be known from the first tick on.
    if (juce::MessageManager::getInstance()->isThisTheMessageThread())
        messageThread.store (juce::Thread::getCurrentThreadId(), std::memory_order_relaxed);

    ticker->add (*this);
}

bool UpdateRelay::isMessageThread() const noexcept
{
    return messageThread.load (std::memory_order_relaxed) == juce::Thread::getCurrentThreadId();
}

void UpdateRelay::tick()
{
    messageThread.store (juce::Thread::getCurrentThreadId(), std::memory_order_relaxed);

    if (pollRequested.exchange (false, std::memory_order_acquire))
        poll();
}

} // namespace K7R
