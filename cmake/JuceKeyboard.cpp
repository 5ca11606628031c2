// SPDX-License-Identifier: GPL-3.0-or-later

// The on-screen keyboard of juce_audio_utils, without the rest of that module: the rest wants the system's sound
// devices, which a plug-in has no use for.

#include <juce_audio_utils/juce_audio_utils.h>

#include <juce_audio_utils/gui/juce_KeyboardComponentBase.cpp>
#include <juce_audio_utils/gui/juce_MidiKeyboardComponent.cpp>
