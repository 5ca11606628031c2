// SPDX-License-Identifier: GPL-3.0-or-later

#include "LivePlayer.h"

namespace K7R::host
{

namespace
{

constexpr double paceRate = 48000.0;
constexpr int paceBlock = 480;
constexpr int stopTimeoutMs = 1000;

} // namespace

LivePlayer::LivePlayer (juce::AudioPluginInstance& instance, MakeSound soundMaker) :
    juce::Thread ("pace"),
    plugin (instance),
    makeSound (std::move (soundMaker))
{
    devices.initialiseWithDefaultDevices (0, 2);

    if (devices.getCurrentAudioDevice() != nullptr)
    {
        devices.addAudioCallback (this);
        return;
    }

    prepare (paceRate, paceBlock);
    startThread();
}

LivePlayer::~LivePlayer()
{
    devices.removeAudioCallback (this);
    stopThread (stopTimeoutMs);
}

juce::String LivePlayer::getDeviceName() const
{
    const auto* device = devices.getCurrentAudioDevice();
    return device != nullptr ? device->getName() : juce::String ("no audio device");
}

void LivePlayer::prepare (double sampleRate, int blockSize)
{
    sound = makeSound (sampleRate);
    block.setSize (2, blockSize);
    plugin.setNonRealtime (false);
    plugin.prepareToPlay (sampleRate, blockSize);
}

void LivePlayer::audioDeviceAboutToStart (juce::AudioIODevice* device)
{
    prepare (device->getCurrentSampleRate(), device->getCurrentBufferSizeSamples());
}

void LivePlayer::renderBlock (int numSamples)
{
    for (int i = 0; i < numSamples; ++i)
    {
        for (int channel = 0; channel < 2; ++channel)
            block.setSample (channel, i, sound.getSample (channel, position));

        position = (position + 1) % sound.getNumSamples();
    }

    juce::AudioBuffer<float> part (block.getArrayOfWritePointers(), 2, numSamples);
    midi.clear();
    plugin.processBlock (part, midi);
}

void LivePlayer::audioDeviceIOCallbackWithContext (const float* const*, int, float* const* output, int numOutputs,
                                                   int numSamples, const juce::AudioIODeviceCallbackContext&)
{
    for (int start = 0; start < numSamples;)
    {
        const auto length = juce::jmin (block.getNumSamples(), numSamples - start);
        renderBlock (length);

        for (int channel = 0; channel < numOutputs; ++channel)
            if (output[channel] != nullptr)
                juce::FloatVectorOperations::copy (output[channel] + start, block.getReadPointer (channel % 2), length);

        start += length;
    }
}

void LivePlayer::run()
{
    for (auto next = juce::Time::getMillisecondCounterHiRes(); ! threadShouldExit();)
    {
        renderBlock (paceBlock);
        next += 1000.0 * paceBlock / paceRate;
        wait (juce::jmax (1, juce::roundToInt (next - juce::Time::getMillisecondCounterHiRes())));
    }
}

} // namespace K7R::host
