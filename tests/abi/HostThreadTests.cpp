// SPDX-License-Identifier: GPL-3.0-or-later

// Calls of hosts into the built plug-in from several threads. Each test runs in a process of its own, which an alarm
// ends where threads wait for each other for good.

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "RawHost.h"

using rawhost::Instance;
using rawhost::Library;

namespace
{

constexpr int numParameters = 18;
constexpr unsigned patience = 240; // s; sanitizers are slow
constexpr int allIsWell = 0, isWrong = 1;

class HostThreads : public testing::Test
{
protected:
    void SetUp() override { GTEST_FLAG_SET (death_test_style, "threadsafe"); }

    template <typename Story>
    static void play (Story&& story)
    {
        alarm (patience);
        std::_Exit (story() ? allIsWell : isWrong);
    }
};

/** A host that holds a lock while it saves, and takes the same lock when a parameter moves.
    @returns whether each state that it saved was a whole one */
bool saveAndRestoreUnderOneLock()
{
    const Library library (QUILVANE_PLUGIN_FILE);
    Instance instance (library);
    std::mutex lock;
    std::atomic<bool> ends { false }, isWhole { true };

    const auto first = instance.getChunk();

    for (int i = 0; i < numParameters; ++i)
        instance.set (i, 0.123f + 0.04f * static_cast<float> (i));

    const auto second = instance.getChunk();
    instance.hostLock = &lock;

    std::thread saver (
        [&]
        {
            while (! ends)
            {
                // Such a lock isn't fair: without a pause it would seldom be free for the other thread.
                std::this_thread::sleep_for (std::chrono::milliseconds (1));
                const std::lock_guard held (lock);

                // The other thread may take the bytes away at any time, so their number has to do.
                void* data = nullptr;
                const auto size = static_cast<size_t> (instance.dispatch (rawhost::effGetChunk, 0, 0, &data));

                if (size != first.size() && size != second.size())
                    isWhole = false;
            }
        });

    for (int i = 0; i < 500; ++i)
        instance.setChunk (i % 2 == 0 ? first : second);

    ends = true;
    saver.join();

    return isWhole && first.size() != second.size() && ! instance.getAutomations().empty();
}

/** Instances that several threads make at once, while another one serves the messages of all. */
bool makeInstancesAtOnce()
{
    constexpr int numThreads = 4, numEach = 4, numRounds = 8;
    const Library library (QUILVANE_PLUGIN_FILE);
    Instance served (library);
    std::atomic<bool> isRight { true };

    for (int round = 0; round < numRounds; ++round)
    {
        std::array<std::unique_ptr<Instance>, numThreads * numEach> instances;
        std::array<std::thread, numThreads> threads;
        std::atomic<int> numBusy { numThreads };

        for (size_t thread = 0; thread < numThreads; ++thread)
            threads[thread] = std::thread (
                [&, thread]
                {
                    for (size_t i = thread * numEach; i < (thread + 1) * numEach; ++i)
                    {
                        instances[i] = std::make_unique<Instance> (library);

                        if (! instances[i]->isOpen()
                            || instances[i]->text (rawhost::effGetParamName, 0) != "LFO 1 Sync")
                            isRight = false;
                    }

                    --numBusy;
                });

        while (numBusy > 0)
            served.dispatch (rawhost::effEditIdle);

        for (auto& thread : threads)
            thread.join();

        for (auto& instance : instances)
            instance.reset();
    }

    return isRight;
}

} // namespace

TEST_F (HostThreads, RestoreAndSaveWithoutWaitingForEachOther)
{
    EXPECT_EXIT (play (saveAndRestoreUnderOneLock), testing::ExitedWithCode (allIsWell), "");
}

TEST_F (HostThreads, MakeInstancesAtOnce)
{
    EXPECT_EXIT (play (makeInstancesAtOnce), testing::ExitedWithCode (allIsWell), "");
}
