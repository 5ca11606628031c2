// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include <juce_audio_devices/juce_audio_devices.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace K7R::host
{

/** Plays a sound in a loop through a plug-in: into the system's audio if there is any, else into nothing at the same
    pace, so that the plug-in is alive all the same. Created and destroyed on the message thread. */
class LivePlayer final : private juce::AudioIODeviceCallback, private juce::Thread
{
public:
    using MakeSound = std::function<juce::AudioBuffer<float> (double sampleRate)>;

    /** @param makeSound gives the sound, two channels, once the rate is known */
    LivePlayer (juce::AudioPluginInstance&, MakeSound makeSound);
    ~LivePlayer() override;

    /** The name of the device, or "no audio device". */
    juce::String getDeviceName() const;

private:
    void audioDeviceAboutToStart (juce::AudioIODevice*) override;
    void audioDeviceIOCallbackWithContext (const float* const* input, int numInputs, float* const* output,
                                           int numOutputs, int numSamples,
                                           const juce::AudioIODeviceCallbackContext&) override;
    void audioDeviceStopped() override {}
    void run() override;

    void prepare (double sampleRate, int blockSize);
    void renderBlock (int numSamples);

    juce::AudioPluginInstance& plugin;
    const MakeSound makeSound;
    juce::AudioDeviceManager devices;
    juce::AudioBuffer<float> sound, block;
    juce::MidiBuffer midi;
    int position = 0; // in the sound
};

} // namespace K7R::host
