// SPDX-License-Identifier: GPL-3.0-or-later

// What a host sees of the built plug-in, asked through its exported entry by raw numbers.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "RawHost.h"
#include "support/Signals.h"

using rawhost::Instance;
using rawhost::Library;

namespace
{

constexpr double sampleRate = 48000.0;
constexpr int numParameters = 18;

enum Parameter : int
{
    lfo1Sync = 0,
    lfo1NoteRate = 2,
    lfo1Waveform = 4,
    lfo1Depth = 10,
    centerFrequency = 12,
    stages = 14,
    feedback = 15,
    fx = 16,
};

struct ExpectedParameter
{
    const char* name;
    const char* text;   // of the default
    double normalised;  // of the default
    const char* lowest; // the text at 0
    const char* highest;
};

const std::array<ExpectedParameter, numParameters> expectedParameters { {
    { "LFO 1 Sync", "Off", 0.0, "Off", "On" },
    { "LFO 1 Rate", "0.20Hz", 0.37586, "0.01Hz", "20.00Hz" },
    { "LFO 1 Note Rate", "2", 0.4, "32", "1/32" },
    { "LFO 1 Note Scale", "Full", 1.0, "Triplet", "Full" },
    { "LFO 1 Waveform", "Hyper Triangle", 2.0 / 6.0, "Sine", "Sample/Hold" },
    { "LFO 2 Sync", "Off", 0.0, "Off", "On" },
    { "LFO 2 Rate", "0.20Hz", 0.37586, "0.01Hz", "20.00Hz" },
    { "LFO 2 Note Rate", "2", 0.4, "32", "1/32" },
    { "LFO 2 Note Scale", "Full", 1.0, "Triplet", "Full" },
    { "LFO 2 Waveform", "Hyper Triangle", 2.0 / 6.0, "Sine", "Sample/Hold" },
    { "LFO 1 Depth", "0%", 0.0, "0%", "100%" },
    { "LFO 2 Depth", "0%", 0.0, "0%", "100%" },
    { "Center Frequency", "320Hz", 0.33870, "50Hz", "12k" },
    { "Stereo Phase", "0\xc2\xb0", 0.0, "0\xc2\xb0", "180\xc2\xb0" },
    { "Stages Number", "4", 1.0 / 3.0, "2", "8" },
    { "Feedback", "0%", 0.0, "0%", "100%" },
    { "FX", "0/100% (Dry/Wet)", 1.0, "100/0% (Dry/Wet)", "0/100% (Dry/Wet)" },
    { "Output Volume", "0dB", 0.5, "-inf.", "+12.0dB" },
} };

class BinaryInterface : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE (library.isOpen()); }

    /** A deep, fast sweep, which changes any input audibly. */
    static void makeAudible (Instance& instance)
    {
        instance.set (lfo1Depth, 0.5f);
        instance.set (feedback, 0.6f);
        instance.set (stages, 1.0f);
    }

    static std::vector<float> input() { return signals::noise (16384, 1); }

    /** The left output of an instance for the test input on both sides. */
    static std::vector<float> render (Instance& instance, std::vector<float> left = input())
    {
        auto right = left;
        instance.process (left, right);
        return left;
    }

    /** A state chunk with the given qualities, made from one of the plug-in's own. */
    static std::vector<char> chunkWithQualities (Instance& instance, const char* realTime, const char* offline)
    {
        const auto chunk = instance.getChunk();
        std::string xml (chunk.begin() + 8, chunk.end() - 1);

        for (const auto& [name, value] : { std::pair { "Real-time", realTime }, std::pair { "Offline", offline } })
        {
            const auto key = std::string ("name=\"") + name + " Processing Quality\" value=\"";
            const auto start = xml.find (key);
            EXPECT_NE (start, std::string::npos);
            xml.replace (start + key.size(), 6, value);
        }

        return makeChunk (xml);
    }

    /** A chunk around any text. */
    static std::vector<char> makeChunk (const std::string& text)
    {
        std::vector<char> result { 'V', 'C', '2', '!' };

        for (int shift = 0; shift < 32; shift += 8)
            result.push_back (static_cast<char> (text.size() >> shift));

        result.insert (result.end(), text.begin(), text.end());
        result.push_back (0);
        return result;
    }

    static std::string repeat (const std::string& text, int times)
    {
        std::string result;

        while (--times >= 0)
            result += text;

        return result;
    }

    Library library { QUILVANE_PLUGIN_FILE };
};

} // namespace

TEST_F (BinaryInterface, TheLibraryExportsItsEntryAndNothingElse)
{
    const auto command = "nm -D --defined-only '" + std::string (QUILVANE_PLUGIN_FILE) + "' | awk '{ print $3 }'";
    auto* pipe = popen (command.c_str(), "r");
    ASSERT_NE (pipe, nullptr);

    std::string symbols;

    for (int c = fgetc (pipe); c != EOF; c = fgetc (pipe))
        symbols += static_cast<char> (c);

    EXPECT_EQ (pclose (pipe), 0);

    // Sanitizers add symbols of their own.
    if (QUILVANE_SANITIZED == 0)
    {
        EXPECT_EQ (symbols, "VSTPluginMain\n");
    }

    EXPECT_EQ (library.find ("main"), nullptr);
}

TEST_F (BinaryInterface, TheEntryAnswersNullToAHostWithoutAVersion)
{
    using Entry = void* (*) (intptr_t (*) (rawhost::Effect*, int32_t, int32_t, intptr_t, void*, float));
    const auto entry = reinterpret_cast<Entry> (library.find ("VSTPluginMain"));

    EXPECT_EQ (entry ([] (rawhost::Effect*, int32_t, int32_t, intptr_t, void*, float) { return intptr_t { 0 }; }),
               nullptr);
}

TEST_F (BinaryInterface, TheRecordDescribesAStereoEffectWithoutLatencyOrTail)
{
    Instance instance (library);
    ASSERT_TRUE (instance.isOpen());

    const auto& effect = instance.get();
    EXPECT_EQ (effect.magic, 0x56737450);
    EXPECT_EQ (effect.numPrograms, 1);
    EXPECT_EQ (effect.numParams, numParameters);
    EXPECT_EQ (effect.numInputs, 2);
    EXPECT_EQ (effect.numOutputs, 2);
    EXPECT_EQ (effect.initialDelay, 0);
    EXPECT_EQ (effect.uniqueId, 0x516c7632); // "Qlv2"
    EXPECT_EQ (effect.version, 0x20000);

    // An editor, replacing process, chunks, no sound when stopped; neither a synth nor double precision.
    EXPECT_EQ (effect.flags, (1 << 0) | (1 << 4) | (1 << 5) | (1 << 9));

    EXPECT_EQ (instance.text (rawhost::effGetEffectName), "Quilvane 2");
    EXPECT_EQ (instance.text (rawhost::effGetProductString), "Quilvane 2");
    EXPECT_EQ (instance.text (rawhost::effGetVendorString), "K7R Group");
    EXPECT_EQ (instance.dispatch (rawhost::effGetVstVersion), 2400);
    EXPECT_EQ (instance.dispatch (rawhost::effGetPlugCategory), 1);
    EXPECT_EQ (instance.dispatch (rawhost::effGetTailSize), 0);

    for (auto [ability, answer] :
         { std::pair { "bypass", 1 }, std::pair { "receiveVstMidiEvent", 1 }, std::pair { "sendVstMidiEvent", -1 } })
        EXPECT_EQ (instance.dispatch (rawhost::effCanDo, 0, 0, const_cast<char*> (ability)), answer) << ability;
}

TEST_F (BinaryInterface, EveryParameterHasItsNameTextDefaultAndRange)
{
    Instance instance (library);

    for (int i = 0; i < numParameters; ++i)
    {
        const auto& expected = expectedParameters[static_cast<size_t> (i)];
        SCOPED_TRACE (expected.name);

        EXPECT_EQ (instance.text (rawhost::effGetParamName, i), expected.name);
        EXPECT_EQ (instance.text (rawhost::effGetParamDisplay, i), expected.text);
        EXPECT_NEAR (static_cast<double> (instance.value (i)), expected.normalised, 2.0e-5);
        EXPECT_EQ (instance.dispatch (rawhost::effCanBeAutomated, i), 1);

        instance.set (i, 0.0f);
        EXPECT_EQ (instance.text (rawhost::effGetParamDisplay, i), expected.lowest);
        instance.set (i, 1.0f);
        EXPECT_EQ (instance.text (rawhost::effGetParamDisplay, i).rfind (expected.highest, 0), 0u)
            << instance.text (rawhost::effGetParamDisplay, i);
    }

    EXPECT_TRUE (instance.text (rawhost::effGetParamName, numParameters).empty());
}

TEST_F (BinaryInterface, AutomationIsTakenWithoutAnEchoAndHostileValuesDoNoHarm)
{
    Instance instance (library);
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<float>::infinity();

    for (int i = 0; i < numParameters; ++i)
    {
        SCOPED_TRACE (i);
        instance.set (i, -3.0f);
        EXPECT_EQ (instance.value (i), 0.0f);
        instance.set (i, infinity);
        EXPECT_EQ (instance.value (i), 1.0f);
        instance.set (i, nan);
        EXPECT_EQ (instance.value (i), 1.0f);
    }

    for (int index : { -1, numParameters, 255, 256, 1000000, std::numeric_limits<int>::min() })
    {
        instance.set (index, 0.5f);
        EXPECT_EQ (instance.value (index), 0.0f);
        instance.text (rawhost::effGetParamDisplay, index);
    }

    EXPECT_TRUE (instance.getAutomations().empty());
}

TEST_F (BinaryInterface, HostBypassGivesTheInputBitForBit)
{
    Instance instance (library);
    makeAudible (instance);

    const auto before = render (instance);
    EXPECT_NE (before, input());

    EXPECT_EQ (instance.dispatch (rawhost::effSetBypass, 0, 1), 1);
    EXPECT_EQ (render (instance), input());

    instance.dispatch (rawhost::effSetBypass, 0, 0);
    EXPECT_NE (render (instance), input());
}

TEST_F (BinaryInterface, SyncedOscillatorsFollowTheHostsTempoAndPosition)
{
    constexpr size_t window = 120;

    for (const auto& [tempo, seconds] : { std::pair { 120.0, 0.5 }, std::pair { 75.0, 0.8 } })
    {
        Instance instance (library, sampleRate, 480);
        instance.answersTime = true;
        instance.time.tempo = tempo;
        instance.time.flags = rawhost::transportPlaying | rawhost::ppqValid | rawhost::tempoValid;
        makeAudible (instance);
        instance.set (lfo1Sync, 1.0f);
        instance.set (lfo1NoteRate, 0.7f); // a quarter note

        auto left = signals::sine (4 * 48000, 1000.0, sampleRate);
        auto right = left;
        instance.process (left, right);

        const std::vector<float> settled (left.begin() + 48000, left.end());
        const auto period = signals::findPeriod (signals::envelope (settled, window), 80, 500);
        EXPECT_NEAR (static_cast<double> (period * window) / sampleRate, seconds, 0.004) << tempo;
    }

    // The same song position gives the same sound, whatever was played before.
    const auto afterPlaying = [this] (size_t samplesBefore)
    {
        Instance instance (library, sampleRate, 480);
        instance.answersTime = true;
        instance.time.flags = rawhost::transportPlaying | rawhost::ppqValid | rawhost::tempoValid;
        makeAudible (instance);
        instance.set (lfo1Sync, 1.0f);
        auto silence = signals::noise (samplesBefore, 5);
        auto other = silence;
        instance.process (silence, other);

        instance.time.ppqPos = 64.0;
        auto left = signals::sine (48000, 1000.0, sampleRate);
        auto right = left;
        instance.process (left, right);
        return signals::rms (left, 24000, 4800);
    };

    EXPECT_NEAR (afterPlaying (48000), afterPlaying (79200), 1.0e-4);
}

TEST_F (BinaryInterface, OfflineProcessLevelSwitchesTheQualityBetweenBlocks)
{
    const auto renderWith = [this] (const char* realTime, const char* offline, int firstLevel, int secondLevel)
    {
        Instance instance (library);
        makeAudible (instance);
        instance.setChunk (chunkWithQualities (instance, realTime, offline));
        instance.processLevel = firstLevel;
        auto result = render (instance);
        instance.processLevel = secondLevel;
        const auto second = render (instance);
        result.insert (result.end(), second.begin(), second.end());
        return result;
    };

    const auto normal = renderWith ("Normal", "Normal", 2, 2);
    const auto high = renderWith ("High", "Normal", 2, 2);
    EXPECT_NE (normal, high);
    EXPECT_EQ (renderWith ("Normal", "High", 4, 4), high);

    // No suspend and resume between the two halves.
    const auto switched = renderWith ("Normal", "High", 2, 4);
    const auto half = static_cast<std::ptrdiff_t> (normal.size() / 2);
    EXPECT_TRUE (std::equal (switched.begin(), switched.begin() + half, normal.begin()));
    EXPECT_FALSE (std::equal (switched.begin() + half, switched.end(), normal.begin() + half));
}

TEST_F (BinaryInterface, MidiOfAnyKindIsTakenAndUnmappedControllersChangeNothing)
{
    Instance plain (library), withMidi (library);
    makeAudible (plain);
    makeAudible (withMidi);

    std::vector<rawhost::MidiEvent> events;

    for (int i = 0; i < 4000; ++i)
    {
        rawhost::MidiEvent event;
        event.deltaFrames = i % 600 - 10;
        event.data[0] = static_cast<unsigned char> (0x80 + (i * 16) % 128);
        event.data[1] = static_cast<unsigned char> (i % 256);
        event.data[2] = static_cast<unsigned char> (i % 131);
        events.push_back (event);
    }

    events.back().deltaFrames = std::numeric_limits<int32_t>::max();
    withMidi.sendMidi (events);

    EXPECT_EQ (render (plain), render (withMidi));
    EXPECT_TRUE (withMidi.getAutomations().empty());
}

TEST_F (BinaryInterface, AMappedControllerMovesItsParameterAndTheHostHearsIt)
{
    Instance instance (library);
    const auto chunk = instance.getChunk();
    std::string xml (chunk.begin() + 8, chunk.end() - 1);
    const auto map = xml.find ("<MidiControlMap");
    ASSERT_NE (map, std::string::npos);
    xml.replace (map, xml.find ("/>", map) + 2 - map,
                 "<MidiControlMap name=\"Quilvane 2\"><assign CC=\"7\" param=\"Feedback\"/></MidiControlMap>");
    instance.setChunk (makeChunk (xml));
    instance.clearAutomations();

    rawhost::MidiEvent event;
    event.deltaFrames = 100;
    event.data[0] = 0xb5;
    event.data[1] = 7;
    event.data[2] = 127;
    instance.sendMidi ({ event });
    render (instance, std::vector<float> (512, 0.1f));

    ASSERT_EQ (instance.getAutomations().size(), 1u);
    EXPECT_EQ (instance.getAutomations()[0].index, feedback);
    EXPECT_EQ (instance.getAutomations()[0].value, 1.0f);
    EXPECT_EQ (instance.value (feedback), 1.0f);

    // The host's own automation of the same parameter isn't sent back, and the map is in the chunk.
    instance.set (feedback, 0.5f);
    render (instance, std::vector<float> (512, 0.1f));
    EXPECT_EQ (instance.getAutomations().size(), 1u);
    const auto saved = instance.getChunk();
    EXPECT_NE (std::string (saved.begin(), saved.end()).find ("CC=\"7\" param=\"Feedback\""), std::string::npos);
}

TEST_F (BinaryInterface, InstancesAreIndependent)
{
    Instance alone (library);
    makeAudible (alone);
    const auto expected = render (alone);

    Instance first (library), second (library);
    makeAudible (first);
    second.set (fx, 0.3f);
    second.set (lfo1Waveform, 1.0f);

    std::vector<float> result;
    const auto source = input();

    for (size_t start = 0; start < source.size(); start += 512)
    {
        const auto from = source.begin() + static_cast<std::ptrdiff_t> (start);
        render (second, { from, from + 512 });
        const auto block = render (first, { from, from + 512 });
        result.insert (result.end(), block.begin(), block.end());
    }

    EXPECT_EQ (result, expected);
}

TEST_F (BinaryInterface, OpeningAndClosingInALoopGivesTheSameSoundEachTime)
{
    std::vector<float> first;

    for (int i = 0; i < 12; ++i)
    {
        Instance instance (library);
        ASSERT_TRUE (instance.isOpen());
        makeAudible (instance);

        const auto output = render (instance);
        EXPECT_TRUE (i == 0 || output == first) << i;
        first = output;
    }
}

TEST (PluginLibrary, IsLoadedAndUnloadedInALoop)
{
    for (int i = 0; i < 8; ++i)
    {
        {
            Library library (QUILVANE_PLUGIN_FILE);
            ASSERT_TRUE (library.isOpen());
            Instance instance (library), other (library);
            ASSERT_TRUE (instance.isOpen() && other.isOpen());
        }

        EXPECT_FALSE (Library::isLoaded (QUILVANE_PLUGIN_FILE)) << i;
    }
}

TEST_F (BinaryInterface, AChunkRestoresAnInstanceAndADamagedOneChangesNothing)
{
    Instance original (library);

    for (int i = 0; i < numParameters; ++i)
        original.set (i, 0.07f * static_cast<float> (i % 15));

    const auto chunk = original.getChunk();

    Instance restored (library);
    restored.setChunk (chunk);

    for (int i = 0; i < numParameters; ++i)
    {
        EXPECT_EQ (restored.text (rawhost::effGetParamDisplay, i), original.text (rawhost::effGetParamDisplay, i));
        EXPECT_NEAR (static_cast<double> (restored.value (i)), static_cast<double> (original.value (i)), 1.0e-5);
    }

    Instance untouched (library);
    const auto before = untouched.getChunk();

    // Cut off anywhere before the last value is complete.
    const auto lastValue = std::string (chunk.begin(), chunk.end()).rfind ("<param");
    ASSERT_NE (lastValue, std::string::npos);

    for (size_t length = 0; length < lastValue; length += 7)
    {
        untouched.setChunk ({ chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t> (length) });
        EXPECT_EQ (untouched.getChunk(), before) << length << " of " << chunk.size();
    }

    auto foreign = chunk;
    const auto name = std::string (chunk.begin(), chunk.end()).find ("Quilvane 2");
    ASSERT_NE (name, std::string::npos);
    foreign[name] = 'X';
    untouched.setChunk (foreign);

    // Nested without end, read differently by scanners and parsers, and not even text.
    for (const auto& text :
         { repeat ("<c>", 300000), "<r><b></b '>" + repeat ("<c>", 300000), "<r>" + repeat ("<c <!--/>-->>", 100000),
           "<r><!-->" + repeat ("</a>", 300000) + "-->" + repeat ("<c>", 300000), "<a>" + repeat ("x", 57) + "\xf1",
           "<a><!--" + repeat ("x", 50) + "\xf0", std::string ("<a>\xff\xfe</a>"),
           std::string ("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>") })
        untouched.setChunk (makeChunk (text));

    // Nor does one take time by the square of its length: these took from 5 to 15 s each.
    struct Long
    {
        const char* before;
        const char* piece;
        const char* after;
    };

    for (const auto& c :
         { Long { "<a>", "<t#/>", "</a>" }, Long { "<a>", "<t a#=''/>", "</a>" }, Long { "<a ", "a#='' ", "/>" },
           Long { "<a b='", "&amp;", "'/>" }, Long { "<a>", "<b/>", "</a>" } })
    {
        std::string text (c.before);

        for (int i = 0; text.size() < 4000000; ++i)
            for (const auto* letter = c.piece; *letter != 0; ++letter)
                text += *letter == '#' ? std::to_string (i) : std::string (1, *letter);

        const auto start = std::chrono::steady_clock::now();
        untouched.setChunk (makeChunk (text + c.after));
        EXPECT_LT (std::chrono::steady_clock::now() - start, std::chrono::seconds (2)) << c.piece;
    }

    // Lengths that lie.
    for (const auto byte : { '\x7f', '\x80', '\xff' })
    {
        auto lying = chunk;
        std::fill (lying.begin() + 4, lying.begin() + 8, byte);
        lying.resize (600);
        untouched.setChunk (lying);
    }

    EXPECT_EQ (untouched.getChunk(), before);
}

TEST_F (BinaryInterface, UnusualRatesAndBlocksDoNoHarm)
{
    Instance instance (library);
    makeAudible (instance);

    for (float rate : { 0.0f, -44100.0f, std::numeric_limits<float>::quiet_NaN(), 1.0f, 1.0e30f, 8000.0f, 768000.0f })
    {
        for (int blockSize : { 1, 100000, 512 })
        {
            instance.suspend();
            instance.dispatch (rawhost::effSetSampleRate, 0, 0, nullptr, rate);
            instance.dispatch (rawhost::effSetBlockSize, 0, blockSize);
            instance.resume();

            auto left = signals::noise (2048, 3);
            auto right = left;
            instance.process (left, right);

            for (auto sample : left)
                ASSERT_TRUE (std::isfinite (sample)) << rate << " Hz, blocks of " << blockSize;
        }
    }

    float* channels[] { nullptr, nullptr };
    std::array<float, 1> nothing {};
    channels[0] = channels[1] = nothing.data();
    instance.get().processReplacing (&instance.get(), channels, channels, 0);
}

TEST_F (BinaryInterface, ASampleThatIsNotFiniteSilencesNoMoreThanItsRun)
{
    constexpr size_t poisoned = 8000, longestRun = 64;
    const auto isFinite = [] (float sample) { return std::isfinite (sample); };

    for (const auto poison : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                               -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max() })
    {
        for (const auto* quality : { "Normal", "High" })
        {
            for (const auto blockSize : { 1, 48, 512 })
            {
                SCOPED_TRACE (testing::Message() << poison << " " << quality << " " << blockSize);
                Instance instance (library, sampleRate, blockSize), undisturbed (library, sampleRate, blockSize);

                for (auto* each : { &instance, &undisturbed })
                {
                    makeAudible (*each);
                    each->setChunk (chunkWithQualities (*each, quality, quality));
                }

                auto left = input(), right = left, plainLeft = left, plainRight = left;
                left[poisoned] = poison;
                instance.process (left, right);
                undisturbed.process (plainLeft, plainRight);

                EXPECT_TRUE (std::all_of (left.begin(), left.end(), isFinite));
                EXPECT_EQ (right, plainRight);
                EXPECT_TRUE (std::equal (left.begin(), left.begin() + poisoned - longestRun, plainLeft.begin()));

                // The filters' state is lost; after 100 ms nothing is heard of it. The largest number is finite, and
                // may ring on.
                const auto settled = std::isfinite (poison) ? left.size() : poisoned + 4800;

                for (auto i = settled; i < left.size(); ++i)
                    ASSERT_NEAR (left[i], plainLeft[i], 1.0e-3) << i;
            }
        }
    }
}
