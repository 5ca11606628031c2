// SPDX-License-Identifier: GPL-3.0-or-later

#include <cmath>
#include <iostream>

#include <juce_audio_basics/juce_audio_basics.h>

#include "Commands.h"
#include "DemoScore.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"

namespace K7R::host
{

namespace
{

constexpr int ticksPerQuarter = 480;
constexpr int electricPiano = 4; // the program of General MIDI, from 0
constexpr int pianoChannel = 1;
constexpr int drumChannel = 10;
constexpr int textIsTrackName = 3; // the meta event's type

double toTicks (double quarters)
{
    return std::round (quarters * ticksPerQuarter);
}

juce::MidiMessageSequence makeConductorTrack()
{
    juce::MidiMessageSequence track;
    track.addEvent (juce::MidiMessage::textMetaEvent (textIsTrackName, "Quilvane 2 Demo"));
    track.addEvent (juce::MidiMessage::timeSignatureMetaEvent (4, 4));
    track.addEvent (juce::MidiMessage::tempoMetaEvent (juce::roundToInt (60.0e6 / demoScoreTempo)));
    track.addEvent (juce::MidiMessage::endOfTrack(), toTicks (demoScoreLength));
    return track;
}

juce::MidiMessageSequence makeTrack (Part part, int channel, const juce::String& name)
{
    juce::MidiMessageSequence track;
    track.addEvent (juce::MidiMessage::textMetaEvent (textIsTrackName, name));

    if (part == Part::piano)
        track.addEvent (juce::MidiMessage::programChange (channel, electricPiano));

    for (const auto& note : makeDemoScore())
    {
        if (note.part != part)
            continue;

        const auto velocity = static_cast<juce::uint8> (note.velocity);
        track.addEvent (juce::MidiMessage::noteOn (channel, note.key, velocity), toTicks (note.beat));
        track.addEvent (juce::MidiMessage::noteOff (channel, note.key), toTicks (note.beat + note.length));
    }

    track.addEvent (juce::MidiMessage::endOfTrack(), toTicks (demoScoreLength));
    track.sort();
    return track;
}

void runScore (const juce::ArgumentList& arguments)
{
    const Options options (arguments, {});
    const auto& files = options.requirePositional (1, 1, "one file, OUT.mid");
    const auto file = resolveFile (files[0]);

    if (! file.hasFileExtension ("mid;midi"))
        throw Failure (file.getFullPathName() + " should end in .mid");

    juce::MidiFile midi;
    midi.setTicksPerQuarterNote (ticksPerQuarter);
    midi.addTrack (makeConductorTrack());
    midi.addTrack (makeTrack (Part::piano, pianoChannel, "Electric Piano"));
    midi.addTrack (makeTrack (Part::drums, drumChannel, "Drums"));

    OutputFile::write (file, [&midi] (juce::OutputStream& out) { return midi.writeTo (out); });

    std::cout << file.getFileName() << ": " << demoScoreLength * 60.0 / demoScoreTempo << " s at " << demoScoreTempo
              << " BPM" << std::endl;
}

} // namespace

juce::ConsoleApplication::Command makeScoreCommand()
{
    return { "score", "score OUT.mid", "Writes the demo score as a MIDI file",
             "Writes a short piece for electric piano and drums, to be played by any General MIDI synthesizer\n"
             "and then through the plug-in.",
             runScore };
}

} // namespace K7R::host
