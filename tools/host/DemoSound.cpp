// SPDX-License-Identifier: GPL-3.0-or-later

#include "DemoSound.h"

#include <cmath>

#include "DemoScore.h"

namespace K7R::host
{

namespace
{

constexpr float peakLevel = 0.5f; // of the whole

/** A tone of an electric piano: a carrier whose phase a decaying modulator moves. */
void addPianoNote (juce::AudioBuffer<float>& buffer, int start, double sampleRate, const ScoreNote& note)
{
    constexpr double decay = 1.2, toneDecay = 0.35, release = 0.08; // s
    constexpr double modulatorRatio = 2.0, index = 1.6;

    const auto omega =
        juce::MathConstants<double>::twoPi * juce::MidiMessage::getMidiNoteInHertz (note.key) / sampleRate;
    const auto held = note.length * 60.0 / demoScoreTempo;
    const auto amplitude = note.velocity / 127.0;
    const auto pan = 0.5 + 0.3 * std::sin (note.key); // each key has its place
    const auto numSamples = buffer.getNumSamples();

    for (int i = 0; i < numSamples; ++i)
    {
        const auto seconds = i / sampleRate;
        const auto gain =
            amplitude * std::exp (-seconds / decay) * (seconds > held ? std::exp (-(seconds - held) / release) : 1.0);

        if (seconds > held && gain < 1.0e-4)
            break;

        const auto modulator = index * std::exp (-seconds / toneDecay) * std::sin (modulatorRatio * omega * i);
        const auto sample = gain * std::sin (omega * i + modulator);
        const auto place = (start + i) % numSamples; // what rings on past the end is heard from the start
        buffer.addSample (0, place, static_cast<float> (sample * (1.0 - pan)));
        buffer.addSample (1, place, static_cast<float> (sample * pan));
    }
}

/** A burst of noise: short for hats, long for cymbals. */
void addDrum (juce::AudioBuffer<float>& buffer, int start, double sampleRate, const ScoreNote& note,
              juce::Random& random)
{
    constexpr int crash = 49, ride = 51;
    const auto decay = note.key == crash ? 0.7 : note.key == ride ? 0.25 : 0.05; // s
    const auto amplitude = 0.35 * note.velocity / 127.0;
    const auto numSamples = buffer.getNumSamples();
    double last = 0.0;

    for (int i = 0; i < numSamples; ++i)
    {
        const auto gain = amplitude * std::exp (-i / (decay * sampleRate));

        if (gain < 1.0e-4)
            break;

        const auto noise = 2.0 * random.nextDouble() - 1.0;
        const auto sample = static_cast<float> (gain * (noise - last)); // brighter than white
        last = noise;

        for (int channel = 0; channel < 2; ++channel)
            buffer.addSample (channel, (start + i) % numSamples, sample);
    }
}

} // namespace

juce::AudioBuffer<float> renderDemoSound (double sampleRate)
{
    const auto secondsPerBeat = 60.0 / demoScoreTempo;
    juce::AudioBuffer<float> buffer (2, juce::roundToInt (demoScoreLength * secondsPerBeat * sampleRate));
    buffer.clear();
    juce::Random random (1);

    for (const auto& note : makeDemoScore())
    {
        const auto start = juce::roundToInt (note.beat * secondsPerBeat * sampleRate);

        if (note.part == Part::piano)
            addPianoNote (buffer, start, sampleRate, note);
        else
            addDrum (buffer, start, sampleRate, note, random);
    }

    buffer.applyGain (peakLevel / juce::jmax (1.0e-6f, buffer.getMagnitude (0, buffer.getNumSamples())));
    return buffer;
}

} // namespace K7R::host
