// SPDX-License-Identifier: GPL-3.0-or-later

#include "RenderSettings.h"

#include <algorithm>

#include "AudioFiles.h"
#include "Failure.h"
#include "Options.h"

namespace K7R::host
{

namespace
{

constexpr double slowestTempo = 1.0;
constexpr double fastestTempo = 1000.0;
constexpr int largestBlock = 65536;
constexpr int highestController = 127;

double requireNumber (const juce::String& text, double lowest, double highest, const Failure& refusal)
{
    const auto number = parseNumber (text);

    if (! number || *number < lowest || *number > highest)
        throw refusal;

    return *number;
}

int requireMidiValue (const juce::String& text, const Failure& refusal)
{
    const auto number = parseInteger (text);

    if (! number || ! juce::isPositiveAndNotGreaterThan (*number, highestController))
        throw refusal;

    return *number;
}

AutomationLane parseLane (const juce::String& text)
{
    const Failure refusal (
        "--automate wants \"Name=seconds:value,...\" with rising times and values from 0 to 1, not \"" + text + "\"");
    const auto [name, points] = splitAt (text, "=", refusal);
    AutomationLane lane { name, {} };

    for (const auto& point : juce::StringArray::fromTokens (points, ",", {}))
    {
        const auto [time, value] = splitAt (point, ":", refusal);
        const auto earliest = lane.points.empty() ? 0.0 : lane.points.back().seconds;

        lane.points.push_back (
            { requireNumber (time, earliest, longestAudio, refusal), requireNumber (value, 0.0, 1.0, refusal) });
    }

    return lane;
}

ControllerEvent parseController (const juce::String& text)
{
    const Failure refusal ("--cc wants controller@seconds=value with numbers up to 127, not \"" + text + "\"");
    const auto [place, value] = splitAt (text, "=", refusal);
    const auto [controller, time] = splitAt (place, "@", refusal);

    return { requireNumber (time, 0.0, longestAudio, refusal), requireMidiValue (controller, refusal),
             requireMidiValue (value, refusal) };
}

template <typename Parse>
auto parseAll (const juce::StringArray& texts, Parse&& parse)
{
    std::vector<decltype (parse (texts[0]))> results;

    for (const auto& text : texts)
        results.push_back (parse (text));

    return results;
}

void checkFiles (const RenderSettings& settings)
{
    AudioOutput::check (settings.output);
    OutputFile::checkIsNot (settings.input, settings.output);

    if (settings.stateToSave)
    {
        OutputFile::check (*settings.stateToSave);
        OutputFile::checkIsNot (settings.input, *settings.stateToSave);
        OutputFile::checkIsNot (settings.output, *settings.stateToSave);
    }

    if (settings.stateToLoad)
        OutputFile::checkIsNot (*settings.stateToLoad, settings.output);
}

} // namespace

float AutomationLane::getValueAt (double seconds) const
{
    const auto next =
        std::find_if (points.begin(), points.end(), [seconds] (const Point& p) { return p.seconds > seconds; });

    if (next == points.begin())
        return static_cast<float> (next->value);

    const auto& last = *std::prev (next);

    if (next == points.end())
        return static_cast<float> (last.value);

    const auto progress = (seconds - last.seconds) / (next->seconds - last.seconds);
    return static_cast<float> (last.value + (next->value - last.value) * progress);
}

RenderSettings RenderSettings::parse (const Options& options)
{
    const auto& files = options.requirePositional (2, 2, "two files, IN and OUT");
    RenderSettings settings;

    settings.input = resolveFile (files[0]);
    settings.output = resolveFile (files[1]);

    if (const auto state = options.getValue ("--state"))
        settings.stateToLoad = resolveFile (*state);

    if (const auto state = options.getValue ("--save-state"))
        settings.stateToSave = resolveFile (*state);

    settings.values = parseAll (options.getValues ("--set"), splitSetting);
    settings.lanes = parseAll (options.getValues ("--automate"), parseLane);
    settings.controllers = parseAll (options.getValues ("--cc"), parseController);

    std::stable_sort (settings.controllers.begin(), settings.controllers.end(),
                      [] (const auto& a, const auto& b) { return a.seconds < b.seconds; });

    settings.bpm = options.getNumber ("--bpm", { slowestTempo, fastestTempo }, " BPM", settings.bpm);
    settings.tailSeconds = options.getNumber ("--tail", { 0.0, longestAudio }, " seconds", settings.tailSeconds);
    settings.sampleRate = options.getInteger (
        "--rate", { static_cast<int> (lowestSampleRate), static_cast<int> (highestSampleRate) }, " Hz", 0);
    settings.blockSize = options.getInteger ("--block", { 1, largestBlock }, " samples", settings.blockSize);
    settings.isOffline = options.has ("--offline");
    settings.isBypassed = options.has ("--bypass");

    checkFiles (settings);
    return settings;
}

} // namespace K7R::host
