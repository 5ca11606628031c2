// SPDX-License-Identifier: GPL-3.0-or-later

#include "Rendering.h"

#include <algorithm>
#include <cmath>

namespace K7R::host
{

namespace
{

constexpr int numChannels = 2;
constexpr int midiChannel = 1;
constexpr int quartersPerBar = 4;

} // namespace

/** Where a playing host is: at a constant tempo in 4/4, from position 0 on. */
class Rendering::Transport : public juce::AudioPlayHead
{
public:
    Transport (double rateToUse, double tempo) : sampleRate (rateToUse), bpm (tempo) {}

    void setPosition (juce::int64 newPosition) noexcept { position = newPosition; }

    /** The position in seconds. */
    double getSeconds() const noexcept { return static_cast<double> (position) / sampleRate; }

    juce::Optional<PositionInfo> getPosition() const override
    {
        const auto quarters = getSeconds() * bpm / 60.0;
        const auto bar = std::floor (quarters / quartersPerBar);

        PositionInfo info;
        info.setTimeInSamples (position);
        info.setTimeInSeconds (getSeconds());
        info.setBpm (bpm);
        info.setTimeSignature (TimeSignature { quartersPerBar, 4 });
        info.setPpqPosition (quarters);
        info.setPpqPositionOfLastBarStart (bar * quartersPerBar);
        info.setBarCount (static_cast<juce::int64> (bar));
        info.setIsPlaying (true);
        return info;
    }

private:
    const double sampleRate, bpm;
    juce::int64 position = 0;
};

//==============================================================================
Rendering::Rendering (const RenderSettings& settingsToUse, const juce::File& pluginFile) :
    settings (settingsToUse),
    input (settings.input),
    sampleRate (settings.sampleRate > 0.0 ? settings.sampleRate : input.getFileRate()),
    plugin (pluginFile, sampleRate, settings.blockSize),
    transport (std::make_unique<Transport> (sampleRate, settings.bpm))
{
    input.setSampleRate (sampleRate);
    length = input.getLength() + static_cast<juce::int64> (std::ceil (settings.tailSeconds * sampleRate));

    if (settings.stateToLoad)
        plugin.loadState (*settings.stateToLoad);

    if (settings.preset != nullptr)
        plugin.loadPreset (*settings.preset);

    for (const auto& [name, text] : settings.values)
        plugin.set (name, text);

    for (const auto& lane : settings.lanes)
        lanes.emplace_back (&lane, &plugin.findParameter (lane.parameterName));

    output.emplace (settings.output, sampleRate);
    automate();
    plugin.getInstance().setPlayHead (transport.get());
    plugin.prepare (settings.isOffline);
}

Rendering::~Rendering()
{
    plugin.getInstance().setPlayHead (nullptr);
}

void Rendering::run (const std::function<void (double)>& progress)
{
    const juce::int64 largestBlock = settings.blockSize;

    for (juce::int64 position = 0; position < length;)
    {
        const auto numSamples = static_cast<int> (std::min (largestBlock, length - position));
        renderBlock (position, numSamples);
        position += numSamples;
        progress (static_cast<double> (position) / static_cast<double> (length));
    }
}

void Rendering::commit()
{
    if (settings.stateToSave)
        plugin.saveState (*settings.stateToSave);

    output->commit();
}

juce::String Rendering::getSummary() const
{
    const auto seconds = static_cast<double> (length) / sampleRate;
    const auto level = peak > 0.0f ? juce::String (juce::Decibels::gainToDecibels (peak), 1) + " dBFS" : "silence";

    return settings.output.getFileName() + ": " + juce::String (seconds, 2) + " s at " + juce::String (sampleRate)
           + " Hz, peak " + level + (peak > 1.0f && output->isFixedPoint() ? ", cut off at full scale" : "");
}

void Rendering::automate()
{
    for (const auto& [lane, parameter] : lanes)
        parameter->setValue (lane->getValueAt (transport->getSeconds()));
}

void Rendering::addControllers (juce::int64 start, int numSamples)
{
    for (; nextController < settings.controllers.size(); ++nextController)
    {
        const auto& event = settings.controllers[nextController];
        const auto offset = std::llround (event.seconds * sampleRate) - start;

        if (offset >= numSamples)
            return;

        midi.addEvent (juce::MidiMessage::controllerEvent (midiChannel, event.controller, event.value),
                       static_cast<int> (offset));
    }
}

void Rendering::renderBlock (juce::int64 start, int numSamples)
{
    auto& instance = plugin.getInstance();

    buffer.setSize (numChannels, numSamples, false, false, true);
    input.read (buffer);
    midi.clear();
    addControllers (start, numSamples);
    transport->setPosition (start);
    automate();

    if (settings.isBypassed)
        instance.processBlockBypassed (buffer, midi);
    else
        instance.processBlock (buffer, midi);

    peak = juce::jmax (peak, buffer.getMagnitude (0, numSamples));
    output->write (buffer);
}

} // namespace K7R::host
