// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>

#include <juce_events/juce_events.h>

#include "support/ListenerArray.h"

namespace K7R
{

/** A note length with a dotted or triplet scale, as a number of cycles per quarter note.

    Set by one thread at a time; the value may be read by any thread, wait-free.
*/
class NoteValue
{
public:
    enum class Scale
    {
        full = 0,
        dotted = 1,  // slower, by 2/3
        triplet = 2, // faster, by 3/2
    };

    NoteValue();

    /** From 0 (1/256 cycle per quarter note) in octaves to 12 (16 cycles); any other index gives 0.
        @returns whether the index changed */
    bool setNoteIndex (int index);

    /** Any number but those of Scale gives 0.
        @returns whether the scale changed */
    bool setScaleIndex (int index);

    /** Cycles per quarter note. */
    double get() const noexcept { return value.load (std::memory_order_relaxed); }

private:
    void update();

    int noteIndex = 10;
    int scaleIndex = static_cast<int> (Scale::full);
    std::atomic<double> value { 0.0 };
};

//==============================================================================
/** Turns a note value, a tempo and a song position into a grid of pulses.

    It is used in two ways. Oscillators take the note value, and keep tempo and position here. Effects
    that act on the edges of the grid start the pulse engine, call tick() once per sample and hear of
    edges on the message thread. tick() belongs to the audio thread, and does nothing while there is no
    tempo.
*/
class Clock : private juce::AsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        virtual void clockReset() = 0;
        virtual void clockTick() = 0;
    };

    Clock() = default;
    ~Clock() override;

    //==============================================================================
    double getNoteValue() const noexcept { return noteValue.get(); }
    bool setNoteIndex (int index);
    bool setScaleIndex (int index);

    /** @param ppq quarter notes from the start of the song */
    void setPosition (double ppq);

    /** @param bpm beats (quarter notes) per minute */
    void setTempo (double bpm);
    void setSampleRate (double hz);

    /** @param fraction of each step that is on, 0 to 1 */
    void setPulseWidth (double fraction);

    double getTempo() const noexcept { return tempo; }
    double getPosition() const noexcept { return position; }

    //==============================================================================
    /** Lets tick() run. */
    void start() noexcept { running = true; }

    /** Stops the pulse engine, if it runs, and tells the listeners. */
    void reset();

    /** Goes on by one sample. An edge posts a message, which costs a system call: an effect that ticks on the
        audio thread and has no listeners anywhere should keep its own count instead.
        @returns whether an edge of the grid fired */
    bool tick();

    bool isOff() const noexcept { return state == State::off; }
    bool isOn() const noexcept { return state == State::on; }

    /** Whether the last edge was the first since a reset. */
    bool wasFirstEdge() const noexcept { return firstEdge; }

    /** Whether the position is nearer to the grid line before it than to the next. */
    bool isNearPreviousLine() const noexcept;

    // Message thread; called from the last added to the first.
    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

private:
    enum class State
    {
        unknown = -1,
        off = 0,
        on = 1,
    };

    void change (double& member, double newValue);
    void planNextEdge();
    void handleAsyncUpdate() override;

    NoteValue noteValue;
    double position = 0.0; // quarter notes
    double sampleRate = 44100.0;
    double tempo = 0.0;
    double pulseWidth = 0.5;
    double ppqPerSample = 0.0;
    int samplesToEdge = 0;
    State state = State::unknown;
    State nextState = State::off;
    bool firstEdge = false;
    bool running = false;
    std::atomic<bool> needsRecalculation { true };
    std::atomic<bool> resetPending { false };
    std::atomic<bool> tickPending { false };
    ListenerArray<Listener> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Clock)
};

} // namespace K7R
