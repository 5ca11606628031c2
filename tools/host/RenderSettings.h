// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <juce_core/juce_core.h>

#include "Options.h"

namespace K7R::host
{

/** A parameter's value over time: straight lines between points, level before the first and after the
    last. Two points at one time make a jump. */
struct AutomationLane
{
    struct Point
    {
        double seconds;
        double value; // normalised
    };

    juce::String parameterName;
    std::vector<Point> points; // in order of time, at least one

    float getValueAt (double seconds) const;
};

struct ControllerEvent
{
    double seconds;
    int controller; // 0 to 127
    int value;      // 0 to 127
};

/** All that a user can ask of a rendering. */
struct RenderSettings
{
    /** Reads the settings of a command line and refuses what can be refused before a file is opened. */
    static RenderSettings parse (const Options&);

    juce::File input, output;
    std::optional<juce::File> stateToLoad, stateToSave;
    std::shared_ptr<const juce::XmlElement> preset; // as PresetBank reads it; null for none

    std::vector<std::pair<juce::String, juce::String>> values; // name and text, in order
    std::vector<AutomationLane> lanes;
    std::vector<ControllerEvent> controllers; // in order of time

    double bpm = 120.0;
    double tailSeconds = 0.0;
    double sampleRate = 0.0; // Hz; 0 for the input's
    int blockSize = 512;
    bool isOffline = false;
    bool isBypassed = false;
};

} // namespace K7R::host
