// SPDX-License-Identifier: GPL-3.0-or-later

// The factory bank: its files, and what every preset does to sound, against what its tags say.
// With QUILVANE_BANK_REPORT set in the environment, all that is measured is printed.

#include <cstdio>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "bank/BankMeasures.h"

using namespace bank;

namespace
{

constexpr double tempos[] { 90.0, 140.0 }; // BPM

constexpr double mostLoudnessChange = 4.0; // dB
constexpr double leastDistance = 0.5;      // of the colour

constexpr double slowestFast = 3.0, fastestSlow = 0.4; // Hz
constexpr double leastResonance = 8.0;                 // dB
constexpr double mostSubtleColour = 2.0;               // dB
constexpr double leastExtremeRestlessness = 5.7;       // dB
constexpr double leastWideSideToMid = -8.0;            // dB
constexpr double leastOpposedPhase = 150.0;            // degrees

const std::set<juce::String> modulationTags { "Slow",   "Medium",  "Fast",     "Static", "Synced",
                                              "Random", "Layered", "Resonant", "Subtle", "Extreme" };
const std::set<juce::String> spatializeTags { "Mono", "Drift", "Opposed", "Wide" };

const std::vector<Preset>& getBank()
{
    static const auto bank = Preset::readAll (juce::File (QUILVANE_PRESETS_FOLDER));
    return bank;
}

/** What is listened to: all, or some where everything takes ten times as long. */
std::vector<Preset> getHeardBank()
{
    constexpr size_t step = QUILVANE_SANITIZED ? 16 : 1;
    std::vector<Preset> heard;

    for (size_t i = 0; i < getBank().size(); i += step)
        heard.push_back (getBank()[i]);

    return heard;
}

/** The tempos at which a preset sounds different. */
std::vector<double> getTempos (const Preset& preset)
{
    if (preset.hearsTempo())
        return { std::begin (tempos), std::end (tempos) };

    return { tempos[0] };
}

void report (const char* measures, const juce::String& about, std::initializer_list<double> values)
{
    static const auto isWanted = std::getenv ("QUILVANE_BANK_REPORT") != nullptr;

    if (! isWanted)
        return;

    std::printf ("%s | %s", measures, about.toRawUTF8());

    for (auto value : values)
        std::printf (" | %.2f", value);

    std::printf ("\n");
}

/** Whether the sides follow each other as the tags say, by a single oscillator's lag from side to side. */
void expectLagAsTagged (const Preset& preset, const Heard& heard)
{
    const auto frames = heard.spectrogram.getLag (heard.framesPerCycle);
    const auto degrees = std::abs (frames) * 360.0 / heard.framesPerCycle;
    EXPECT_GE (heard.spectrogram.getLikeness (frames, true), 0.5);

    EXPECT_TRUE (preset.has ("Opposed") ? degrees >= 135.0 : degrees >= 10.0 && degrees <= 135.0) << degrees;
}

void expectNoiseAsTagged (const Preset& preset, const Heard& heard)
{
    EXPECT_EQ (preset.has ("Mono"), heard.sideToMid <= -100.0) << heard.sideToMid;
    EXPECT_EQ (preset.has ("Wide"), heard.sideToMid >= leastWideSideToMid) << heard.sideToMid;
    EXPECT_EQ (preset.has ("Subtle"), heard.spectrogram.getColour() <= mostSubtleColour);

    if (! preset.isMoving() || preset.isLayered())
        return;

    // A single oscillator's sound is the same a cycle later and another half a cycle later. Random steps don't
    // come again, but last.
    const auto cycle = heard.framesPerCycle;
    const auto afterCycle = heard.spectrogram.getLikeness (cycle, false);

    if (preset.has ("Random"))
    {
        EXPECT_LE (afterCycle, 0.35);
        EXPECT_GE (heard.spectrogram.getLikeness (cycle / 4, false), afterCycle + 0.2);
    }
    else
    {
        EXPECT_GE (afterCycle, 0.55);
        EXPECT_LE (heard.spectrogram.getLikeness (cycle / 2, false), afterCycle - 0.4);
    }

    if (! preset.has ("Mono"))
        expectLagAsTagged (preset, heard);
}

void expectLevel (const Heard& heard)
{
    EXPECT_LE (heard.peak, 1.0);

    EXPECT_LE (std::abs (heard.loudnessChange), mostLoudnessChange) << heard.loudnessChange;
}

} // namespace

TEST (FactoryBank, HoldsManyPresetsUnderNamesOfTheirOwn)
{
    constexpr size_t leastPresets = 96;
    constexpr int longestName = 16;
    std::set<juce::String> names;

    for (const auto& preset : getBank())
    {
        EXPECT_TRUE (names.insert (preset.name.toLowerCase().removeCharacters (" ")).second) << preset.name;
        EXPECT_LE (preset.name.length(), longestName) << preset.name;
        EXPECT_EQ (preset.attributes["application"], "Quilvane 2") << preset.name;
        EXPECT_EQ (preset.attributes["version"], "1.0") << preset.name;
        EXPECT_TRUE (preset.attributes["author"].isNotEmpty()) << preset.name;
        EXPECT_FALSE (preset.attributes.containsKey ("name")) << preset.name;
    }

    EXPECT_GE (names.size(), leastPresets);
    EXPECT_TRUE (names.count ("colorful") == 1);
}

TEST (FactoryBank, SetsEveryParameterToAValueThatReadsBackAsWritten)
{
    for (const auto& preset : getBank())
    {
        SCOPED_TRACE (preset.name);
        PluginInTest plugin;
        const auto& parameters = plugin.processor.getPlugin().getParameters();
        std::set<int> ids;

        for (const auto& [key, value] : preset.values)
        {
            auto* parameter = parameters.getParameterByName (key);
            ASSERT_NE (parameter, nullptr) << key;
            EXPECT_TRUE (ids.insert (parameter->getId()).second) << key;

            // From either end, a text that isn't understood leaves something else.
            for (auto before : { 0.0f, 1.0f })
            {
                parameter->setNormalised (before, true);
                parameter->setString (value, true);
                EXPECT_EQ (parameter->getString(), value) << key;
            }
        }

        EXPECT_EQ (ids.size(), size_t { quilvane::parameterIds::numPresetParameters });
        EXPECT_LT (*ids.rbegin(), int { quilvane::parameterIds::numPresetParameters });
    }
}

TEST (FactoryBank, UsesEachTagOfItsVocabularyAndNoOther)
{
    constexpr int leastUses = 3;
    std::map<juce::String, int> uses;

    for (const auto& preset : getBank())
    {
        EXPECT_EQ (preset.categories.joinIntoString (","), "Modulation,Spatialize") << preset.name;
        const auto text = preset.attributes["tags"];

        for (const auto& tag : preset.tags)
        {
            ++uses[tag];
            const auto isSpatial = text.fromFirstOccurrenceOf (";", false, false).contains (tag);
            EXPECT_EQ ((isSpatial ? spatializeTags : modulationTags).count (tag), 1u) << preset.name << ": " << tag;
        }

        auto unique = preset.tags;
        unique.removeDuplicates (false);
        EXPECT_EQ (unique.size(), preset.tags.size()) << preset.name;
    }

    for (const auto* vocabulary : { &modulationTags, &spatializeTags })
        for (const auto& tag : *vocabulary)
            EXPECT_GE (uses[tag], leastUses) << tag;
}

TEST (FactoryBank, TagsSayWhatTheOscillatorsDo)
{
    for (const auto& preset : getBank())
    {
        SCOPED_TRACE (preset.name);
        const auto& main = preset.getMain();
        const auto slowest = main.getRate (tempos[0]), fastest = main.getRate (tempos[1]);
        const auto isSlow = fastest <= fastestSlow, isFast = slowest >= slowestFast;
        const auto isRandom = [] (const Oscillator& o) { return o.isUsed() && o.waveform == "Sample/Hold"; };

        EXPECT_EQ (preset.has ("Static"), ! preset.isMoving());
        EXPECT_EQ (preset.has ("Slow"), preset.isMoving() && isSlow);
        EXPECT_EQ (preset.has ("Fast"), preset.isMoving() && isFast);
        EXPECT_EQ (preset.has ("Medium"), preset.isMoving() && ! isSlow && ! isFast);
        EXPECT_EQ (preset.has ("Synced"), preset.isMoving() && main.synced);
        EXPECT_EQ (preset.has ("Layered"), preset.isLayered());
        EXPECT_EQ (preset.has ("Random"), isRandom (preset.oscillators[0]) || isRandom (preset.oscillators[1]));

        const auto phase = preset.isMoving() ? preset.stereoPhase : 0.0;
        EXPECT_EQ (preset.has ("Mono"), phase == 0.0);
        EXPECT_EQ (preset.has ("Opposed"), phase >= leastOpposedPhase);
        EXPECT_EQ (preset.has ("Drift"), phase > 0.0 && phase < leastOpposedPhase);
    }
}

TEST (FactoryBank, NoiseKeepsItsLevelAndMovesAsTheTagsSay)
{
    for (const auto& preset : getHeardBank())
    {
        for (auto bpm : getTempos (preset))
        {
            SCOPED_TRACE (preset.name + " at " + juce::String (bpm));
            const auto heard = listen (preset, Material::pinkNoise, bpm);
            expectLevel (heard);
            expectNoiseAsTagged (preset, heard);

            report ("noise: tempo, loudness, peak, side to mid, colour, likeness a cycle later", preset.name,
                    { bpm, heard.loudnessChange, heard.peak, heard.sideToMid, heard.spectrogram.getColour(),
                      preset.isMoving() ? heard.spectrogram.getLikeness (heard.framesPerCycle, false) : 1.0 });
        }
    }
}

TEST (FactoryBank, ChordKeepsItsLevel)
{
    for (const auto& preset : getHeardBank())
    {
        for (auto bpm : getTempos (preset))
        {
            SCOPED_TRACE (preset.name + " at " + juce::String (bpm));
            const auto heard = listen (preset, Material::chord, bpm);
            expectLevel (heard);
            report ("chord: tempo, loudness, peak", preset.name, { bpm, heard.loudnessChange, heard.peak });
        }
    }
}

TEST (FactoryBank, ResonantPresetsRing)
{
    for (const auto& preset : getHeardBank())
    {
        const auto resonance = measureResonance (preset);
        EXPECT_EQ (preset.has ("Resonant"), resonance >= leastResonance) << preset.name << ": " << resonance;
        report ("resonance", preset.name, { resonance });
    }
}

TEST (FactoryBank, StaticPresetsStandStill)
{
    constexpr double mostChange = -90.0; // dB

    for (const auto& preset : getBank())
    {
        if (preset.has ("Static"))
        {
            EXPECT_LE (measureChange (preset), mostChange) << preset.name;
        }
        else if (preset.name == "Colorful")
        {
            EXPECT_GE (measureChange (preset), -30.0) << "the measure hears a slow sweep";
        }
    }
}

TEST (FactoryBank, NoTwoPresetsSoundTheSame)
{
    const auto bank = getHeardBank();
    std::vector<Spectrogram> sounds;

    for (const auto& preset : bank)
    {
        sounds.push_back (listenInParts (preset, tempos[0]));
        const auto restlessness = sounds.back().getRestlessness();
        EXPECT_EQ (preset.has ("Extreme"), restlessness >= leastExtremeRestlessness) << preset.name;
        report ("restlessness", preset.name, { restlessness });

        if (preset.isLayered())
        {
            const auto single = listenInParts (withoutSecondLayer (preset), tempos[0]);
            EXPECT_GE (getDistance (sounds.back(), single), leastDistance)
                << preset.name << " without its second layer";
        }
    }

    std::map<double, juce::String> pairs;

    for (size_t i = 0; i < bank.size(); ++i)
        for (size_t j = i + 1; j < bank.size(); ++j)
            pairs[getDistance (sounds[i], sounds[j])] = bank[i].name + " and " + bank[j].name;

    constexpr int numReported = 40;
    int numPairs = 0;

    for (const auto& [distance, names] : pairs)
        if (numPairs++ < numReported)
            report ("distance", names, { distance });

    ASSERT_FALSE (pairs.empty());
    EXPECT_GE (pairs.begin()->first, leastDistance) << "closest: " << pairs.begin()->second;
}
