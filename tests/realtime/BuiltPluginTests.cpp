// SPDX-License-Identifier: GPL-3.0-or-later

// The built plug-in in a process whose memory is watched, and runs out.

#include <thread>

#include <gtest/gtest.h>

#include "AudioThreadProbe.h"
#include "abi/RawHost.h"

using rawhost::Instance;
using rawhost::Library;

namespace
{

constexpr int numParameters = 18;

/** A state with the first parameters at the first controllers. */
std::vector<char> withControllers (const std::vector<char>& chunk, int numControllers, Instance& instance)
{
    std::string xml (chunk.begin() + 8, chunk.end() - 1), assigns;

    for (int i = 0; i < numControllers; ++i)
        assigns +=
            "<assign CC=\"" + std::to_string (i) + "\" param=\"" + instance.text (rawhost::effGetParamName, i) + "\"/>";

    const auto map = xml.find ("<MidiControlMap");
    xml.replace (map, xml.find ("/>", map) + 2 - map,
                 "<MidiControlMap name=\"Quilvane 2\">" + assigns + "</MidiControlMap>");

    std::vector<char> result { 'V', 'C', '2', '!' };

    for (int shift = 0; shift < 32; shift += 8)
        result.push_back (static_cast<char> (xml.size() >> shift));

    result.insert (result.end(), xml.begin(), xml.end());
    result.push_back (0);
    return result;
}

} // namespace

TEST (BuiltPlugin, AllocatesNothingInItsFirstBlocksWithManyControllers)
{
    constexpr int numBlocks = 100, numEvents = 64, blockSize = 256;

    Library library (QUILVANE_PLUGIN_FILE);
    Instance instance (library, 48000.0, blockSize);
    instance.setChunk (withControllers (instance.getChunk(), numParameters, instance));
    instance.keepsAutomations = false;

    std::vector<rawhost::MidiEvent> events (numEvents);
    std::vector<intptr_t> list { numEvents, 0 };

    for (auto& event : events)
        list.push_back (reinterpret_cast<intptr_t> (&event));

    std::vector<float> left (blockSize, 0.1f), right (blockSize, 0.1f);
    std::vector<int> allocations (numBlocks);
    int allocationsOfFlag = 0;

    std::thread audio (
        [&]
        {
            // JUCE's client has a flag for each thread that hears of a parameter; the first use of each allocates it.
            probe::Watch control ({});
            instance.set (0, 1.0f);
            allocationsOfFlag = control.stop().allocations;

            for (int block = 0; block < numBlocks; ++block)
            {
                for (int i = 0; i < numEvents; ++i)
                {
                    auto& event = events[static_cast<size_t> (i)];
                    event.deltaFrames = i * 4;
                    event.data[0] = 0xb0;
                    event.data[1] = static_cast<unsigned char> ((block + i) % numParameters);
                    event.data[2] = static_cast<unsigned char> ((block * 31 + i * 7) % 128);
                }

                probe::Watch watch ({});
                instance.dispatch (rawhost::effProcessEvents, 0, 0, list.data());
                instance.process (left, right);
                allocations[static_cast<size_t> (block)] = watch.stop().allocations;
            }
        });

    audio.join();
    EXPECT_EQ (allocations, std::vector<int> (numBlocks));
    EXPECT_EQ (allocationsOfFlag, 1);
}

TEST (BuiltPlugin, KeepsItsStateWholeAndItsExceptionsWhereMemoryRunsOut)
{
    Library library (QUILVANE_PLUGIN_FILE);
    Instance instance (library);
    instance.keepsAutomations = false;

    const auto first = instance.getChunk();

    for (int i = 0; i < numParameters; ++i)
        instance.set (i, 0.123f + 0.04f * static_cast<float> (i));

    auto second = instance.getChunk();
    ASSERT_NE (first, second);

    int numRestores = 0, numSaves = 0;

    for (int numLeft = 0;; numLeft += 1 + numLeft / 50)
    {
        instance.setChunk (first);
        probe::failAfter (numLeft);
        EXPECT_NO_THROW (
            instance.dispatch (rawhost::effSetChunk, 0, static_cast<intptr_t> (second.size()), second.data()));

        if (! probe::stopFailing())
            break;

        ++numRestores;
        const auto after = instance.getChunk();
        ASSERT_TRUE (after == first || after == second) << numLeft;
    }

    for (int numLeft = 0;; numLeft += 1 + numLeft / 50)
    {
        void* data = nullptr;
        intptr_t size = 0;
        probe::failAfter (numLeft);
        EXPECT_NO_THROW (size = instance.dispatch (rawhost::effGetChunk, 0, 0, &data));

        if (! probe::stopFailing())
            break;

        ++numSaves;
        ASSERT_TRUE (size == 0 || static_cast<size_t> (size) == second.size()) << numLeft;
    }

    EXPECT_GT (numRestores, 50);
    EXPECT_GT (numSaves, 50);
    EXPECT_EQ (instance.getChunk(), second);
}
