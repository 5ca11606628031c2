// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

#include "support/PluginInTest.h"

namespace bank
{

/** One oscillator as a preset sets it. */
struct Oscillator
{
    bool synced = false;
    double freeRate = 0.0; // Hz
    double cyclesPerBeat = 0.0;
    juce::String waveform;
    double semitones = 0.0; // how far it lifts the notches

    double getRate (double bpm) const { return synced ? cyclesPerBeat * bpm / 60.0 : freeRate; }
    bool isUsed() const { return semitones > 0.0; }
};

/** A preset file of the factory bank, read without the program's own reader. */
struct Preset
{
    explicit Preset (const juce::File&);

    /** All of a folder, by name. */
    static std::vector<Preset> readAll (const juce::File& folder);

    /** Sets the values as a preset does, by the parameters' names. */
    void applyTo (PluginInTest&) const;

    bool has (const char* tag) const { return tags.contains (tag); }
    bool isMoving() const { return oscillators[0].isUsed() || oscillators[1].isUsed(); }
    bool isLayered() const { return oscillators[0].isUsed() && oscillators[1].isUsed(); }

    /** Whether an oscillator in use follows the tempo, so that the sound differs from tempo to tempo. */
    bool hearsTempo() const;

    /** The oscillator that sweeps further. */
    const Oscillator& getMain() const;

    /** Seconds of the longest cycle in use; 0 if none. */
    double getLongestCycle (double bpm) const;
    double getFastestRate (double bpm) const;

    juce::String name;
    juce::StringPairArray attributes;
    std::vector<std::pair<juce::String, juce::String>> values;

    /** The text form's categories, and all tags of both. */
    juce::StringArray categories, tags;

    Oscillator oscillators[2];
    double stereoPhase = 0.0; // degrees
};

} // namespace bank
