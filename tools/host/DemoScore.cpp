// SPDX-License-Identifier: GPL-3.0-or-later

#include "DemoScore.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace K7R::host
{

namespace
{

constexpr int numBars = 8;
constexpr double beatsPerBar = 4.0;

/** The off sixteenths come a little late, in quarters. */
constexpr double swing = 0.045;

//==============================================================================
/** What the hands hold in one bar. */
struct Harmony
{
    int root, fifth;              // the left hand's
    int approach;                 // leads to the next bar's root
    std::array<int, 4> rightHand; // from the lowest up
};

constexpr std::array<Harmony, numBars> harmonies { {
    { 40, 47, 43, { 55, 59, 62, 66 } }, // E minor 9
    { 45, 52, 37, { 55, 61, 66, 71 } }, // A 13
    { 38, 45, 42, { 54, 57, 61, 64 } }, // D major 9
    { 43, 50, 38, { 59, 62, 66, 69 } }, // G major 9
    { 37, 43, 41, { 59, 64, 67, 71 } }, // C sharp half-diminished
    { 42, 49, 36, { 58, 64, 69, 73 } }, // F sharp 7, sharp 9
    { 35, 42, 34, { 57, 61, 62, 66 } }, // B minor 9
    { 35, 42, 35, { 57, 61, 64, 66 } }, // B minor 11
} };

/** One stroke of a hand in a bar. */
struct Stroke
{
    double beat, length;
    int velocity;
};

constexpr std::array<Stroke, 3> chordStrokes { { { 0.0, 1.35, 74 }, { 1.5, 0.4, 56 }, { 2.25, 1.6, 66 } } };
constexpr Stroke finalChord { 0.0, 3.9, 78 };

/** The chord is broken upwards by a little from note to note, in quarters. */
constexpr double chordSpread = 0.02;

enum class BassNote
{
    root,
    fifth,
    approach,
};

struct BassStroke
{
    Stroke stroke;
    BassNote note;
};

constexpr std::array<BassStroke, 4> bassStrokes { {
    { { 0.0, 1.6, 88 }, BassNote::root },
    { { 1.75, 0.3, 70 }, BassNote::root },
    { { 2.5, 0.9, 80 }, BassNote::fifth },
    { { 3.5, 0.45, 72 }, BassNote::approach },
} };

/** The right hand's top line: beat from the start, length, key, velocity. */
struct MelodyNote
{
    double beat, length;
    int key, velocity;
};

constexpr std::array<MelodyNote, 17> melody { {
    { 2.75, 0.5, 78, 70 },
    { 3.25, 0.25, 76, 62 },
    { 3.5, 1.25, 74, 72 },
    { 6.5, 0.5, 76, 68 },
    { 7.0, 0.75, 73, 74 },
    { 10.75, 0.5, 76, 70 },
    { 11.25, 0.25, 73, 60 },
    { 11.5, 1.5, 78, 76 },
    { 14.5, 0.75, 74, 66 },
    { 15.5, 0.5, 71, 62 },
    { 18.75, 0.5, 74, 70 },
    { 19.25, 0.25, 76, 64 },
    { 19.5, 1.0, 79, 78 },
    { 22.5, 0.5, 81, 76 },
    { 23.0, 0.75, 76, 70 },
    { 26.75, 0.5, 78, 72 },
    { 27.5, 0.5, 73, 66 },
} };

//==============================================================================
namespace drum
{
constexpr int kick = 36, sideStick = 37, closedHat = 42, openHat = 46, crash = 49, ride = 51, rideBell = 53,
              splash = 55;
}

constexpr std::array<Stroke, 4> kickStrokes {
    { { 0.0, 0.25, 104 }, { 1.75, 0.25, 74 }, { 2.5, 0.25, 96 }, { 3.75, 0.25, 62 } }
};
constexpr std::array<Stroke, 2> stickStrokes { { { 1.0, 0.25, 88 }, { 3.0, 0.25, 92 } } };

/** The loudness of the hat on each sixteenth of a beat. */
constexpr std::array<int, 4> hatVelocities { 94, 56, 80, 62 };
constexpr double openHatBeat = 3.5;

/** The ride, which joins in the second half, and its bell on the beats. */
constexpr int firstRideBar = 4;
constexpr std::array<Stroke, 8> rideStrokes { { { 0.0, 0.5, 88 },
                                                { 0.5, 0.5, 66 },
                                                { 1.0, 0.5, 82 },
                                                { 1.5, 0.5, 70 },
                                                { 2.0, 0.5, 88 },
                                                { 2.5, 0.5, 66 },
                                                { 3.0, 0.5, 82 },
                                                { 3.5, 0.5, 72 } } };

constexpr std::array<MelodyNote, 5> cymbals { {
    { 0.0, 4.0, drum::crash, 96 },
    { 12.0, 2.0, drum::splash, 80 },
    { 16.0, 4.0, drum::crash, 100 },
    { 24.0, 4.0, drum::splash, 84 },
    { 28.0, 4.0, drum::crash, 104 },
} };

//==============================================================================
/** The score while it is put together. */
class Writer
{
public:
    void add (Part part, double beat, double length, int key, int velocity)
    {
        notes.push_back ({ part, swung (beat), length, key, velocity });
    }

    void addBassAndChords (int bar)
    {
        const auto& harmony = harmonies[static_cast<size_t> (bar)];
        const auto start = bar * beatsPerBar;

        if (bar == numBars - 1)
        {
            add (Part::piano, start, finalChord.length, harmony.root, finalChord.velocity);
            add (Part::piano, start, finalChord.length, harmony.fifth, finalChord.velocity);
            return addChord (start, finalChord, harmony.rightHand);
        }

        for (const auto& [stroke, note] : bassStrokes)
        {
            const auto key = note == BassNote::root    ? harmony.root
                             : note == BassNote::fifth ? harmony.fifth
                                                       : harmony.approach;
            add (Part::piano, start + stroke.beat, stroke.length, key, stroke.velocity);
        }

        for (const auto& stroke : chordStrokes)
            addChord (start, stroke, harmony.rightHand);
    }

    void addDrums (int bar)
    {
        const auto start = bar * beatsPerBar;

        const auto addAll = [&] (const auto& strokes, int key)
        {
            for (const auto& stroke : strokes)
                add (Part::drums, start + stroke.beat, stroke.length, key, stroke.velocity);
        };

        addHats (start);

        if (bar >= firstRideBar)
            addAll (rideStrokes, drum::ride);

        if (bar == numBars - 1)
            return add (Part::drums, start, 0.25, drum::kick, kickStrokes[0].velocity);

        addAll (kickStrokes, drum::kick);
        addAll (stickStrokes, drum::sideStick);

        if (bar >= firstRideBar)
            add (Part::drums, start + 2.0, 0.5, drum::rideBell, 70);
    }

    std::vector<ScoreNote> take()
    {
        std::stable_sort (notes.begin(), notes.end(), [] (const auto& a, const auto& b) { return a.beat < b.beat; });
        return std::move (notes);
    }

private:
    static double swung (double beat)
    {
        const auto sixteenths = beat * 4.0;
        const auto whole = static_cast<int> (sixteenths);
        const auto isOff = whole % 2 == 1 && sixteenths - whole < 0.001;
        return isOff ? beat + swing : beat;
    }

    void addChord (double start, const Stroke& stroke, const std::array<int, 4>& keys)
    {
        auto delay = 0.0;

        for (const auto key : keys)
        {
            add (Part::piano, start + stroke.beat + delay, stroke.length - delay, key, stroke.velocity);
            delay += chordSpread;
        }
    }

    void addHats (double start)
    {
        for (int sixteenth = 0; sixteenth < 16; ++sixteenth)
        {
            const auto beat = sixteenth * 0.25;
            const auto isOpen = beat >= openHatBeat && beat < openHatBeat + 0.25;
            const auto velocity = hatVelocities[static_cast<size_t> (sixteenth % 4)];

            add (Part::drums, start + beat, isOpen ? 0.5 : 0.2, isOpen ? drum::openHat : drum::closedHat, velocity);
        }
    }

    std::vector<ScoreNote> notes;
};

} // namespace

std::vector<ScoreNote> makeDemoScore()
{
    Writer writer;

    for (int bar = 0; bar < numBars; ++bar)
    {
        writer.addBassAndChords (bar);
        writer.addDrums (bar);
    }

    for (const auto& note : melody)
        writer.add (Part::piano, note.beat, note.length, note.key, note.velocity);

    for (const auto& note : cymbals)
        writer.add (Part::drums, note.beat, note.length, note.key, note.velocity);

    return writer.take();
}

} // namespace K7R::host
