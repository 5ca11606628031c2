// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace K7R::host
{

/** The demo score played by small instruments of our own, in stereo: what "edit" plays when it's given no file. It
    can be looped. */
juce::AudioBuffer<float> renderDemoSound (double sampleRate);

} // namespace K7R::host
