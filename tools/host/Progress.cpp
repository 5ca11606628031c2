// SPDX-License-Identifier: GPL-3.0-or-later

#include "Progress.h"

#include <iostream>
#include <utility>

#include <unistd.h>

namespace K7R::host
{

namespace
{

constexpr juce::uint32 shortWork = 1000; // ms
constexpr juce::uint32 refreshInterval = 100;

} // namespace

Progress::Progress (juce::String whatIsDone, double totalAmount) :
    what (std::move (whatIsDone)),
    total (totalAmount),
    isTerminal (isatty (STDERR_FILENO) != 0),
    startTime (juce::Time::getMillisecondCounter()),
    lastTime (startTime)
{
}

Progress::~Progress()
{
    if (isShown && isTerminal)
        std::cerr << "\r\033[K" << std::flush;
}

void Progress::update (double done)
{
    const auto now = juce::Time::getMillisecondCounter();
    const auto percent = juce::jlimit (0, 100, static_cast<int> (100.0 * done / total));

    if (now - startTime < shortWork)
        return;

    if (isTerminal && now - lastTime >= refreshInterval)
    {
        lastTime = now;
        show (percent);
    }

    const auto quarter = percent / 25;

    if (! isTerminal && quarter > std::exchange (lastQuarter, quarter) && quarter < 4)
        show (percent);
}

void Progress::show (int percent)
{
    const auto line = what + " " + juce::String (percent) + " %";
    isShown = true;

    if (isTerminal)
        std::cerr << "\r" << line << "\033[K" << std::flush;
    else
        std::cerr << line << std::endl;
}

} // namespace K7R::host
