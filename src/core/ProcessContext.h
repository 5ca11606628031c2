// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace K7R
{

/** One audio callback, as the effect sees it. Overwritten on each callback. */
struct ProcessContext
{
    juce::AudioBuffer<float>* buffer = nullptr; // in place: input and output share the channels
    juce::MidiBuffer* midi = nullptr;
    int numInputChannels = 0;
    int numOutputChannels = 0;
    juce::AudioPlayHead* playHead = nullptr; // may be null
    bool bypassed = false;
};

} // namespace K7R
