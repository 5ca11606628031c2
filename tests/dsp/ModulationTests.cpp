// SPDX-License-Identifier: GPL-3.0-or-later

// What is worked out ahead of the sound, against the same without anything ahead.

#include <random>

#include <gtest/gtest.h>

#include "dsp/phaser/Modulation.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "support/PluginInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace quilvane::parameterIds;

namespace
{

/** Two modulations that get the same of everything; one of them never works ahead. */
struct Twins
{
    Twins()
    {
        for (int id = 0; id <= processingQuality; ++id)
            forEach ([&] (Modulation& m) { m.parameterChanged (plugin.parameter (id)); });

        forEach ([] (Modulation& m) { m.prepare (true); });
    }

    template <typename Function>
    void forEach (Function&& function)
    {
        function (ahead);
        function (plain);
    }

    void set (int id, float normalised)
    {
        plugin.set (id, normalised);
        forEach ([&] (Modulation& m) { m.parameterChanged (plugin.parameter (id)); });
    }

    /** Goes on by some samples. */
    void expectSameOver (int numSamples, Sides sides)
    {
        for (int rest = numSamples; rest > 0;)
        {
            const auto run = ahead.next (rest, sides);
            ASSERT_GE (run.numSamples, 1);
            ASSERT_LE (run.numSamples, rest);
            mostPieces = std::max (mostPieces, ++numPieces);

            plain.prepare (false); // throws away what is ahead
            const auto expected = plain.next (run.numSamples, sides);
            ASSERT_EQ (expected.numSamples, run.numSamples);

            const auto size = static_cast<size_t> (run.numSamples);
            const auto isSame = [] (const float* a, const float* b, size_t count)
            { return std::equal (a, a + count, b); };
            ASSERT_TRUE (isSame (run.hz, expected.hz, size * sides.count()));
            ASSERT_TRUE (isSame (run.outputGain, expected.outputGain, size));
            ASSERT_EQ (run.lfo1, expected.lfo1);
            ASSERT_EQ (run.lfo2, expected.lfo2);
            rest -= run.numSamples;
            lowest = std::min (lowest, run.lfo1);
            highest = std::max (highest, run.lfo1);
        }

        numPieces = 0;
    }

    PluginInTest plugin { 48000.0, 64 };
    SampleRateConstants constants = []
    {
        SampleRateConstants made;
        made.update (48000.0);
        return made;
    }();
    Modulation ahead { constants }, plain { constants };
    int numPieces = 0, mostPieces = 0;
    float lowest = 1.0f, highest = 0.0f;
};

} // namespace

TEST (ModulationAhead, IsTheSameToTheBitWhateverHappensBetweenBlocks)
{
    Twins twins;
    std::mt19937 random { 3 };
    const auto upTo = [&] (int last) { return std::uniform_int_distribution<int> (0, last) (random); };
    const auto uniform = [&] { return std::uniform_real_distribution<float> (0.0f, 1.0f) (random); };

    // Fast enough for many turns and random steps.
    for (int id : { lfo1Rate, lfo2Rate, lfo1Depth, lfo2Depth })
        twins.set (id, 0.9f);

    auto size = 1;
    Sides sides { true, true };

    for (int block = 0; block < 20000; ++block)
    {
        // Hosts keep to a size for a while; most blocks are like the last one.
        if (upTo (30) == 0)
            size = upTo (2) == 0 ? 1 + upTo (63) : 1 + upTo (3);

        switch (upTo (60))
        {
            case 0: twins.set (upTo (numPresetParameters - 1), uniform()); break;
            case 1: twins.forEach ([bpm = 60.0 + upTo (100)] (Modulation& m) { m.setTempo (bpm); }); break;
            case 2: twins.forEach ([ppq = 0.37 * upTo (300)] (Modulation& m) { m.setSongPosition (ppq); }); break;
            case 3: twins.forEach ([n = 1 + upTo (63)] (Modulation& m) { m.moveSmoothedValuesAlone (n); }); break;
            case 4: sides = { upTo (3) != 0, upTo (3) != 0 }; break;
            case 5:
                twins.constants.update (upTo (1) == 0 ? 48000.0 : 96000.0);
                twins.forEach ([] (Modulation& m) { m.prepare (true); });
                break;
            default: break;
        }

        ASSERT_NO_FATAL_FAILURE (twins.expectSameOver (size, sides)) << "block " << block;
    }

    EXPECT_GT (twins.highest - twins.lowest, 0.9f);
    EXPECT_GT (twins.mostPieces, 1) << "no block met the end of what was ahead";
}
