// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::host
{

/** Tells the user on the standard error how far a long piece of work is.

    On a terminal that is one line, which is written over and over and gone at the end; anywhere else a
    plain line at each quarter. Work that takes less than a moment isn't told at all. One thread.
*/
class Progress
{
public:
    /** @param what the work, as the line's first words
        @param total the amount of work, in any unit */
    Progress (juce::String what, double total);
    ~Progress();

    /** The amount that is done by now. */
    void update (double done);

private:
    void show (int percent);

    const juce::String what;
    const double total;
    const bool isTerminal;
    const juce::uint32 startTime; // ms
    juce::uint32 lastTime;        // ms
    int lastQuarter = 0;
    bool isShown = false;
};

} // namespace K7R::host
