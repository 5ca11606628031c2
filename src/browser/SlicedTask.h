// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include <juce_events/juce_events.h>

namespace K7R
{

/** A long piece of work that is done in slices of the message loop's time, so that the window stays alive: it shows
    how far the work has got, and can stop it. One at a time. Message thread. */
class SlicedTask final : private juce::Timer
{
public:
    enum class Step
    {
        next,
        wait, // for an answer; resume() goes on
        finished,
    };

    struct Work
    {
        std::function<Step()> step;       // a short one
        std::function<void()> onProgress; // after a slice that wasn't the last
        std::function<void (bool)> onEnd; // told whether it was stopped before its time
    };

    SlicedTask() = default;
    ~SlicedTask() override { stopTimer(); }

    /** Begins at the next turn of the message loop; nothing while another work is being done. */
    void start (Work);

    /** Does a slice at once, so that what is short is done when this returns. */
    void doSlice();

    /** Goes on after a step that had to wait. */
    void resume();

    /** Ends the work before its time; what has been done stays. Nothing if there is none. */
    void stop() { end (true); }

    /** Ends it as if the last step had. */
    void finish() { end (false); }

    bool isRunning() const noexcept { return work.step != nullptr; }

private:
    void timerCallback() override { doSlice(); }
    void end (bool wasStopped);

    Work work;
};

} // namespace K7R
