// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Ticker.h"

#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "support/MessageLoop.h"

using namespace K7R;

namespace
{

struct Counter final : Ticker::Listener
{
    void tick() override
    {
        ++ticks;

        if (onTick != nullptr)
            onTick();
    }

    int ticks = 0;
    std::function<void()> onTick;
};

} // namespace

TEST (Ticker, ListenersComeAndGoDuringTicks)
{
    juce::SharedResourcePointer<Ticker> ticker;
    Counter first, second, third, added;

    // Each walk starts with the third one.
    third.onTick = [&]
    {
        ticker->remove (third);
        ticker->remove (first);
        ticker->add (added);
    };

    for (auto* counter : { &first, &second, &third })
        ticker->add (*counter);

    EXPECT_TRUE (runMessageLoopUntil ([&] { return second.ticks >= 3 && added.ticks >= 2; }));
    EXPECT_EQ (third.ticks, 1);
    EXPECT_EQ (first.ticks, 0);

    // The last one stops the timer, and the next one starts it again.
    ticker->remove (second);
    ticker->remove (added);
    const auto ticks = second.ticks + added.ticks;
    runMessageLoopFor (4 * Ticker::intervalMs);
    EXPECT_EQ (second.ticks + added.ticks, ticks);

    ticker->add (first);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return first.ticks > 0; }));
    ticker->remove (first);
}

TEST (Ticker, TheLastHolderMayGoInATick)
{
    auto ticker = std::make_unique<juce::SharedResourcePointer<Ticker>>();
    Counter counter;
    counter.onTick = [&]
    {
        (*ticker)->remove (counter);
        ticker.reset();
    };

    (*ticker)->add (counter);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return counter.ticks > 0; }));
    runMessageLoopFor (2 * Ticker::intervalMs);
    EXPECT_EQ (counter.ticks, 1);
}
