// SPDX-License-Identifier: GPL-3.0-or-later

#include <string>

#include <gtest/gtest.h>

#include "dsp/Clock.h"
#include "support/MessageLoop.h"

using namespace K7R;

namespace
{

struct CountingListener : Clock::Listener
{
    void clockReset() override { ++resets; }
    void clockTick() override { ++ticks; }

    int resets = 0;
    int ticks = 0;
};

/** A clock of one step per quarter note, at 100 samples a step. */
void setUp (Clock& clock)
{
    clock.setNoteIndex (8);
    clock.setSampleRate (100.0);
    clock.setTempo (60.0);
}

} // namespace

TEST (NoteValue, IsLengthTimesScale)
{
    NoteValue value;
    EXPECT_EQ (value.get(), 4.0);

    for (int index = 0; index <= 12; ++index)
    {
        value.setNoteIndex (index);
        EXPECT_EQ (value.get(), std::ldexp (1.0, index - 8)) << index;
    }

    EXPECT_FALSE (value.setNoteIndex (12));
    EXPECT_TRUE (value.setScaleIndex (1));
    EXPECT_NEAR (value.get(), 16.0 * 2.0 / 3.0, 1.0e-12);
    value.setScaleIndex (2);
    EXPECT_EQ (value.get(), 24.0);

    for (int nonsense : { -1, 3 })
    {
        value.setScaleIndex (nonsense);
        EXPECT_EQ (value.get(), 0.0);
    }

    value.setScaleIndex (0);
    value.setNoteIndex (13);
    EXPECT_EQ (value.get(), 0.0);
}

TEST (Clock, FiresAnEdgeAtEachHalfOfAStep)
{
    Clock clock;
    setUp (clock);
    EXPECT_FALSE (clock.tick()); // not started
    clock.start();

    std::vector<int> ons, offs;

    for (int i = 0; i < 1000; ++i)
    {
        if (clock.tick())
            (clock.isOn() ? ons : offs).push_back (i);

        EXPECT_EQ (clock.wasFirstEdge(), offs.size() == 1 && ons.empty());
    }

    // Ten steps of 100 samples; the clock settles within the first.
    ASSERT_GE (ons.size(), 8u);
    ASSERT_GE (offs.size(), 8u);

    // To a sample, which is how far the sum of many small steps can be off; it doesn't add up.
    for (const auto* edges : { &ons, &offs })
        for (size_t i = 3; i < edges->size(); ++i)
            EXPECT_NEAR ((*edges)[i] - (*edges)[2], 100 * static_cast<int> (i - 2), 1) << i;

    EXPECT_NEAR (std::abs (ons[3] - offs[3]) % 100, 50, 1);
}

TEST (Clock, WaitsForTheSongToBeginAndForATempo)
{
    Clock clock;
    setUp (clock);
    clock.start();
    clock.setPosition (-0.5);

    for (int i = 0; i < 50; ++i)
        EXPECT_FALSE (clock.tick()) << i;

    bool fired = false;

    for (int i = 0; i < 5; ++i)
        fired = clock.tick() || fired;

    EXPECT_TRUE (fired);

    clock.setTempo (0.0);

    for (int i = 0; i < 300; ++i)
        EXPECT_FALSE (clock.tick());
}

TEST (Clock, TellsItsListenersOnTheMessageThread)
{
    Clock clock;
    setUp (clock);
    CountingListener listener;
    clock.addListener (&listener);
    clock.start();

    for (int i = 0; i < 250; ++i)
        clock.tick();

    EXPECT_EQ (listener.ticks, 0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return listener.ticks == 1; }));

    clock.reset();
    clock.reset();
    EXPECT_TRUE (runMessageLoopUntil ([&] { return listener.resets == 1; }));
    EXPECT_EQ (clock.getPosition(), 0.0);
    EXPECT_FALSE (clock.isOn() || clock.isOff());
    EXPECT_FALSE (clock.tick());
}

TEST (Clock, KnowsWhichGridLineIsNearer)
{
    Clock clock;
    setUp (clock);

    for (const auto& [position, near] : { std::pair { 0.2, true }, std::pair { 0.5, false }, std::pair { 0.8, false },
                                          std::pair { 1.1, true }, std::pair { -0.7, true } })
    {
        clock.setPosition (position);
        EXPECT_EQ (clock.isNearPreviousLine(), near) << position;
    }
}
