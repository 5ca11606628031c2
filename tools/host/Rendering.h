// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "AudioFiles.h"
#include "HostedPlugin.h"
#include "RenderSettings.h"

namespace K7R::host
{

/** One rendering from its files to its result. Created, prepared, committed and destroyed on the message
    thread, run on an audio thread. Every function throws a Failure if its part can't be done. */
class Rendering
{
public:
    /** @param settings have to outlive the object */
    Rendering (const RenderSettings& settings, const juce::File& pluginFile);
    ~Rendering();

    /** Plays everything, and tells how far it is. */
    void run (const std::function<void (double fraction)>& progress);

    /** Puts the results in their places. The state is taken first: if it fails, no file has changed. */
    void commit();

    juce::String getSummary() const;

private:
    class Transport;

    void automate();
    void addControllers (juce::int64 start, int numSamples);
    void renderBlock (juce::int64 start, int numSamples);

    const RenderSettings& settings;
    AudioInput input;
    const double sampleRate; // Hz
    HostedPlugin plugin;
    std::unique_ptr<Transport> transport;
    std::vector<std::pair<const AutomationLane*, juce::AudioProcessorParameter*>> lanes;
    std::optional<AudioOutput> output;

    juce::int64 length = 0; // samples, with the tail
    size_t nextController = 0;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer midi;
    float peak = 0.0f;
};

} // namespace K7R::host
