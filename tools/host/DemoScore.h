// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

namespace K7R::host
{

/** The instruments of the demo score. */
enum class Part
{
    piano,
    drums,
};

struct ScoreNote
{
    Part part;
    double beat;   // quarters from the start
    double length; // quarters
    int key;       // MIDI note; a drum of General MIDI
    int velocity;  // 1 to 127
};

constexpr double demoScoreTempo = 96.0;  // beats per minute
constexpr double demoScoreLength = 32.0; // quarters: eight bars of 4/4, 20 seconds

/** A short piece for trying an effect on: wide chords of an electric piano under hats, ride and crashes,
    so that there is energy at all frequencies and all of the time. In order of time. */
std::vector<ScoreNote> makeDemoScore();

} // namespace K7R::host
