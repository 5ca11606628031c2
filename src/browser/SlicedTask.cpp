// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/SlicedTask.h"

#include <utility>

namespace K7R
{

namespace
{

constexpr int sliceMs = 12, pauseMs = 1;

} // namespace

void SlicedTask::start (Work toDo)
{
    if (isRunning())
        return;

    work = std::move (toDo);
    startTimer (pauseMs);
}

void SlicedTask::resume()
{
    if (isRunning())
        startTimer (pauseMs);
}

void SlicedTask::doSlice()
{
    const auto sliceEnd = juce::Time::getMillisecondCounterHiRes() + sliceMs;
    const auto doStep = work.step; // a step can stop the work

    do
    {
        if (! isRunning())
            return;

        const auto result = doStep();

        if (result == Step::finished)
            return finish();

        if (result == Step::wait)
            return stopTimer();
    } while (juce::Time::getMillisecondCounterHiRes() < sliceEnd);

    if (work.onProgress != nullptr)
        work.onProgress();
}

void SlicedTask::end (bool wasStopped)
{
    stopTimer();

    // The next work may begin in there.
    if (const auto ended = std::exchange (work, {}); ended.onEnd != nullptr)
        ended.onEnd (wasStopped);
}

} // namespace K7R
