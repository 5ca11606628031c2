// SPDX-License-Identifier: GPL-3.0-or-later

// What the phaser costs: its core against the plain statement of the network and against a common
// phaser, on the same noise, in nanoseconds per stereo sample; and what an instance costs to build.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <juce_dsp/juce_dsp.h>
#include <malloc.h>
#include <map>
#include <string>

#include "BrowserBench.h"
#include "EditorBench.h"
#include "core/FrameworkIds.h"
#include "dsp/phaser/QuilvaneCore.h"
#include "reference/ReferencePhaser.h"
#include "support/PluginInTest.h"
#include "support/PortableEffect.h"
#include "support/Signals.h"

using namespace K7R;
using namespace quilvane;

namespace
{

constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;

/** The setting that all figures are for: 8 stages, both oscillators moving. */
const std::map<int, const char*> settings {
    { parameterIds::stagesNumber, "8" }, { parameterIds::lfo1Depth, "50" },     { parameterIds::lfo2Depth, "10" },
    { parameterIds::lfo1Rate, "0.5" },   { parameterIds::lfo2Rate, "3" },       { parameterIds::feedback, "60" },
    { parameterIds::fx, "100" },         { parameterIds::stereoPhaseId, "90" },
};

/** Runs `process (left, right, numSamples)` over blocks of noise, and counts stereo samples. */
template <typename Process>
void runOnNoise (benchmark::State& state, Process&& process, bool leftSounds = true, bool rightSounds = true,
                 int size = blockSize)
{
    const auto noise = signals::noise (static_cast<size_t> (16 * blockSize), 1);
    const auto silence = std::vector<float> (noise.size());
    std::vector<float> left (noise.size()), right (noise.size());

    // Until gates have closed and smoothed values have arrived.
    for (int i = 0; i < 8; ++i)
    {
        left = leftSounds ? noise : silence;
        right = rightSounds ? noise : silence;
        process (left.data(), right.data(), static_cast<int> (left.size()));
    }

    size_t start = 0;
    const auto step = static_cast<size_t> (size);

    for (auto _ : state)
    {
        if (start + step > left.size())
            start = 0;

        std::copy_n (&(leftSounds ? noise : silence)[start], step, &left[start]);
        std::copy_n (&(rightSounds ? noise : silence)[start], step, &right[start]);
        process (&left[start], &right[start], size);
        benchmark::DoNotOptimize (left[start]);
        start += step;
    }

    state.SetItemsProcessed (state.iterations() * size);
}

//==============================================================================
/** A core with parameters of its own, entered as the effect enters it. */
class CoreInBench
{
public:
    explicit CoreInBench (const char* quality)
    {
        for (const auto& [id, text] : settings)
            plugin.setText (id, text);

        plugin.setText (frameworkIds::realTimeQuality, quality);
    }

    void operator() (float* left, float* right, int numSamples)
    {
        auto& effect = static_cast<Quilvane&> (plugin.processor.getPlugin());
        const juce::ScopedNoDenormals noDenormals;
        effect.getCore()->processStereo (left, right, left, right, numSamples, false);
    }

    PluginInTest plugin { sampleRate, blockSize };
};

void core (benchmark::State& state, const char* quality, bool leftSounds, bool rightSounds)
{
    runOnNoise (state, CoreInBench (quality), leftSounds, rightSounds);
}

void coreInBlocks (benchmark::State& state)
{
    runOnNoise (state, CoreInBench ("Normal"), true, true, static_cast<int> (state.range (0)));
}

/** The whole processor: play head, MIDI queue, lock. */
void plugin (benchmark::State& state)
{
    CoreInBench bench ("Normal");
    juce::MidiBuffer midi;
    runOnNoise (state, [&] (float* left, float* right, int n) { bench.plugin.processBlock (left, right, n, midi); });
}

void plainModel (benchmark::State& state, const char* quality)
{
    CoreInBench source (quality);
    reference::ReferencePhaser model;

    for (int id = 0; id <= parameterIds::processingQuality; ++id)
    {
        const auto& p = source.plugin.parameter (id);
        model.parameterChanged (id, { p.getFloat(), p.getNormalised(), p.getInt(), p.getBool() });
    }

    model.prepare (sampleRate);
    runOnNoise (state,
                [&] (float* left, float* right, int n)
                {
                    const juce::ScopedNoDenormals noDenormals;
                    model.processStereo (left, right, left, right, n, false);
                });
}

//==============================================================================
/** JUCE's phaser of 6 stages, alone or oversampled 8 times. */
class CommonPhaser
{
public:
    explicit CommonPhaser (bool isOversampled) : oversampled (isOversampled)
    {
        const auto factor = oversampled ? static_cast<double> (oversampling.getOversamplingFactor()) : 1.0;
        phaser.prepare ({ sampleRate * factor, static_cast<juce::uint32> (16 * blockSize * factor), 2 });
        phaser.setRate (0.5f);
        phaser.setDepth (0.8f);
        phaser.setCentreFrequency (600.0f);
        phaser.setFeedback (0.6f);
        phaser.setMix (0.5f);
        oversampling.initProcessing (16 * blockSize);
    }

    void operator() (float* left, float* right, int numSamples)
    {
        const juce::ScopedNoDenormals noDenormals;
        float* channels[] { left, right };
        juce::dsp::AudioBlock<float> block (channels, 2, static_cast<size_t> (numSamples));

        if (! oversampled)
            return phaser.process (juce::dsp::ProcessContextReplacing<float> (block));

        auto inner = oversampling.processSamplesUp (block);
        phaser.process (juce::dsp::ProcessContextReplacing<float> (inner));
        oversampling.processSamplesDown (block);
    }

private:
    bool oversampled;
    juce::dsp::Oversampling<float> oversampling { 2, 3, juce::dsp::Oversampling<float>::filterHalfBandPolyphaseIIR };
    juce::dsp::Phaser<float> phaser;
};

void commonPhaser (benchmark::State& state, bool oversampled)
{
    runOnNoise (state, [phaser = std::make_shared<CommonPhaser> (oversampled)] (float* left, float* right, int n)
                { (*phaser) (left, right, n); });
}

//==============================================================================
void constructInstance (benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize (Quilvane::createProcessor());
}

void prepareToPlay (benchmark::State& state)
{
    PluginInTest instance;
    bool other = false;

    for (auto _ : state)
        instance.processor.prepareToPlay ((other = ! other) ? 96000.0 : 48000.0, blockSize);
}

//==============================================================================
constexpr int numUserPresets = 10000;

/** Folders with the factory bank and many user presets, for as long as the program runs. */
class Folders
{
public:
    Folders() : root (juce::File::createTempFile ("bench"))
    {
        const auto factory = root.getChildFile ("Portable_data/Presets/Factory.k7rpkg");
        factory.getParentDirectory().createDirectory();
        juce::File (QUILVANE_FACTORY_BANK).copyFileTo (factory);
        root.getChildFile ("Portable_user/UserStore/Presets").createDirectory();
    }

    ~Folders() { root.deleteRecursively(); }

    std::unique_ptr<PluginAudioProcessor> createInstance() const
    {
        auto processor = std::make_unique<PluginAudioProcessor>();
        processor->setPlugin (std::make_unique<PortableEffect> (root, "bench"));
        return processor;
    }

private:
    const juce::File root;
};

const Folders& getFolders()
{
    static const Folders folders;
    return folders;
}

void constructWithBank (benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize (getFolders().createInstance());
}

void loadFactoryPreset (benchmark::State& state)
{
    const auto instance = getFolders().createInstance();
    auto& presets = *instance->getPlugin().getFactoryPresets();
    presets.reload();
    size_t next = 0;

    for (auto _ : state)
        presets.loadItem (presets.getItems()[next++ % presets.getItems().size()]->name);
}

void listUserPresets (benchmark::State& state)
{
    const auto instance = getFolders().createInstance();
    auto& presets = *instance->getPlugin().getUserPresets();

    for (int i = 0; i < numUserPresets; ++i)
        presets.createItemFile ("Preset " + juce::String (i), TagSet::fromText ("Modulation:Slow|Synced"));

    for (auto _ : state)
        presets.reload();

    if (presets.getItems().size() != static_cast<size_t> (numUserPresets))
        state.SkipWithError ("not all presets were listed");
}

/** The first instance of the process, which opens what all share, in microseconds. */
double buildFirstInstance()
{
    const auto start = std::chrono::steady_clock::now();
    const auto instance = Quilvane::createProcessor();
    benchmark::DoNotOptimize (instance.get());
    return std::chrono::duration<double, std::micro> (std::chrono::steady_clock::now() - start).count();
}

/** Sizes, which aren't timed. */
void printSizes()
{
    constexpr int numInstances = 32;
    std::vector<std::unique_ptr<PluginAudioProcessor>> instances;
    instances.push_back (getFolders().createInstance());
    const auto before = mallinfo2();

    for (int i = 0; i < numInstances; ++i)
    {
        instances.push_back (getFolders().createInstance());
        instances.back()->prepareToPlay (sampleRate, blockSize);
    }

    const auto after = mallinfo2();
    const auto bytes = static_cast<double> (after.uordblks + after.hblkhd - before.uordblks - before.hblkhd);
    juce::MemoryBlock chunk;
    instances.front()->getStateInformation (chunk);

    std::printf ("\nSizes\n  %-44s %12.1f\n", "heap of an instance, KiB", bytes / numInstances / 1024.0);
    std::printf ("  %-44s %12d\n", "state chunk, bytes", static_cast<int> (chunk.getSize()));
}

//==============================================================================
/** Prints as the console does, and keeps the least time per item of all repetitions: what else the machine does only
    adds to it. */
class Reporter : public benchmark::ConsoleReporter
{
public:
    Reporter() : ConsoleReporter (OO_Tabular) {}

    void ReportRuns (const std::vector<Run>& runs) override
    {
        for (const auto& run : runs)
        {
            if (run.run_type == Run::RT_Aggregate)
                continue;

            const auto items = run.counters.find ("items_per_second");
            const auto time = items != run.counters.end() ? 1.0e9 / items->second : run.GetAdjustedCPUTime();
            auto& least = nanoseconds.try_emplace (run.benchmark_name(), time).first->second;
            least = std::min (least, time);
        }

        ConsoleReporter::ReportRuns (runs);
    }

    void printSummary() const
    {
        std::printf ("\n%-46s %12s\n", "Nanoseconds per stereo sample, 8 stages", "ns");

        for (const auto& [name, time] : nanoseconds)
            if (name.rfind ("instance", 0) != 0)
                std::printf ("  %-44s %12.1f\n", name.c_str(), time);

        std::printf ("\nRatios\n");
        printRatio ("plain model / core", "plain model, Normal", "core, Normal");
        printRatio ("core / JUCE's phaser", "core, Normal", "JUCE phaser, 6 stages");
        printRatio ("core / JUCE's phaser oversampled 8 times", "core, Normal",
                    "JUCE phaser, 6 stages, oversampled 8x");
        printRatio ("High / Normal", "core, High", "core, Normal");
        printRatio ("one side silent / both active", "core, Normal, right silent", "core, Normal");
        printRatio ("both sides silent / both active", "core, Normal, both silent", "core, Normal");
        printRatio ("blocks of 1 / of 512", "core, Normal, blocks of/1", "core, Normal");
        printRatio ("blocks of 4096 / of 32", "core, Normal, blocks of/4096", "core, Normal, blocks of/32");
        printRatio ("whole plug-in / core", "plug-in, Normal", "core, Normal");
    }

private:
    void printRatio (const char* label, const char* numerator, const char* denominator) const
    {
        const auto a = nanoseconds.find (numerator), b = nanoseconds.find (denominator);

        if (a != nanoseconds.end() && b != nanoseconds.end())
            std::printf ("  %-44s %12.2f\n", label, a->second / b->second);
    }

    std::map<std::string, double> nanoseconds;
};

} // namespace

BENCHMARK_CAPTURE (core, Normal, "Normal", true, true)->Name ("core, Normal");
BENCHMARK_CAPTURE (core, High, "High", true, true)->Name ("core, High");
BENCHMARK_CAPTURE (core, rightSilent, "Normal", true, false)->Name ("core, Normal, right silent");
BENCHMARK_CAPTURE (core, bothSilent, "Normal", false, false)->Name ("core, Normal, both silent");
BENCHMARK (coreInBlocks)->Name ("core, Normal, blocks of")->Arg (1)->Arg (32)->Arg (4096);
BENCHMARK (plugin)->Name ("plug-in, Normal");
BENCHMARK_CAPTURE (plainModel, Normal, "Normal")->Name ("plain model, Normal");
BENCHMARK_CAPTURE (plainModel, High, "High")->Name ("plain model, High");
BENCHMARK_CAPTURE (commonPhaser, plain, false)->Name ("JUCE phaser, 6 stages");
BENCHMARK_CAPTURE (commonPhaser, oversampled, true)->Name ("JUCE phaser, 6 stages, oversampled 8x");
BENCHMARK (constructInstance)->Name ("instance, constructed and destroyed")->Unit (benchmark::kMicrosecond);
BENCHMARK (prepareToPlay)->Name ("instance, prepareToPlay at a new rate")->Unit (benchmark::kMicrosecond);

BENCHMARK (constructWithBank)->Name ("instance, constructed with the factory bank")->Unit (benchmark::kMicrosecond);
BENCHMARK (loadFactoryPreset)->Name ("instance, a factory preset loaded")->Unit (benchmark::kMicrosecond);
BENCHMARK (listUserPresets)->Name ("instance, 10000 user presets listed")->Unit (benchmark::kMillisecond);

int main (int argc, char** argv)
{
    // Nothing here touches the user's own files.
    const auto home = juce::File::createTempFile ("home");
    home.createDirectory();
    setenv ("HOME", home.getFullPathName().toRawUTF8(), 1);

    // Makes JUCE forgive the X server's complaints, as in any application with windows.
    juce::JUCEApplicationBase::createInstance = []() -> juce::JUCEApplicationBase* { return nullptr; };
    const juce::ScopedJuceInitialiser_GUI juce;
    benchmark::Initialize (&argc, argv);

    if (benchmark::ReportUnrecognizedArguments (argc, argv))
        return 1;

    const auto firstInstance = buildFirstInstance();
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks (&reporter);
    reporter.printSummary();
    std::printf ("\n  %-44s %12.1f\n", "the first instance of the process, us", firstInstance);
    printSizes();
    printEditorFigures();
    printBrowserFigures();
    home.deleteRecursively();
    return 0;
}
