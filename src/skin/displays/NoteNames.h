// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

namespace K7R
{

/** The parts of a note's name. Notes are counted in semitones from C. */
struct NoteNames
{
    static constexpr const char* letters = "CDEFGAB";

    /** 0 for C to 6 for B; a black key has the letter of the white one below. */
    static constexpr int letterOf (int note)
    {
        constexpr std::array<int, 12> letterIndexes { 0, 0, 1, 1, 2, 3, 3, 4, 4, 5, 5, 6 };
        return letterIndexes[static_cast<unsigned> (note) % 12u];
    }

    static constexpr bool isSharp (int note)
    {
        const auto semitone = static_cast<unsigned> (note) % 12u;
        return semitone == 1 || semitone == 3 || semitone == 6 || semitone == 8 || semitone == 10;
    }

    static constexpr int octaveOf (int note) { return note / 12; }
};

} // namespace K7R
