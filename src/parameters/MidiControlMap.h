// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <atomic>
#include <memory>

#include <juce_audio_basics/juce_audio_basics.h>

#include "parameters/ListenerArray.h"

namespace quilvane
{

class Parameter;
class ParameterManager;

/** Connects MIDI controllers to parameters, on all channels alike, and learns such connections.

    The audio thread feeds it controllers while the message thread edits it: every entry is one atomic
    pointer, and neither side waits. A parameter sits at one controller at most.

    Owned by the BasePlugin.
*/
class MidiControlMap
{
public:
    static constexpr int numControllers = 128;
    static constexpr int noController = -1;

    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** A controller moved a parameter; audio thread. */
        virtual void controllerMoved (MidiControlMap&, Parameter&) = 0;
    };

    explicit MidiControlMap (const ParameterManager&);

    /** The product's name, which the maps of its files bear. */
    void setName (const juce::String& newName) { name = newName; }

    //==============================================================================
    /** Takes a control change of any channel; audio thread. While a parameter is being learned the
        controller takes it over, and the one that the last controller displaced returns to its place;
        the parameter at the controller, if any, then follows the value. */
    void handleController (const juce::MidiMessage&);

    /** Whether any controller came in since the last call. Any thread. */
    bool takeActivity() noexcept { return activity.exchange (false); }

    //==============================================================================
    // Message thread.

    /** Puts a parameter at a controller, in place of any other, and removes it from where it stood;
        noController only removes. */
    void assign (Parameter&, int controller);

    /** The next controllers belong to this parameter, until stopLearn() or cancelLearn(). The map from
        before the first of several learned in a row is the one that cancelLearn() restores. */
    void startLearn (Parameter&);

    /** Ends learning and keeps what was learned. */
    void stopLearn() noexcept;

    /** Ends learning and restores the map as it was before. */
    void cancelLearn() noexcept;

    /** The parameter that is being learned; null for none. Any thread. */
    Parameter* getLearnParameter() const noexcept { return learnParameter; }

    /** The controller at which a parameter sits, or noController. Any thread. */
    int getController (const Parameter&) const noexcept;

    /** The parameter at a controller; null for none. Any thread. */
    Parameter* getParameter (int controller) const noexcept;

    void clear() noexcept;

    /** What sits where at one moment, for going back to it. */
    struct Snapshot
    {
        std::array<Parameter*, static_cast<std::size_t> (numControllers)> entries {};
        int numDocuments = 0; // that had been loaded until then
    };

    Snapshot takeSnapshot() const noexcept;

    /** Whether no whole map has been loaded since, as a host does with its project. */
    bool isCurrent (const Snapshot& snapshot) const noexcept { return snapshot.numDocuments == numDocuments; }

    /** Goes back to a snapshot, and ends learning. Does nothing if a whole map has been loaded since: that one
        stands. */
    void restore (const Snapshot&) noexcept;

    // Before audio runs.
    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

    //==============================================================================
    /** Replaces the map by that of an element "MidiControlMap", and ends learning; null, another element or a
        map of another product changes nothing. Parameters that aren't automatable are left out.
        @returns whether it did */
    bool loadFromXml (const juce::XmlElement*);

    /** The same from a file; one that can't be read changes nothing. */
    bool loadFromFile (const juce::File&);

    std::unique_ptr<juce::XmlElement> createXml() const;

private:
    using Entries = std::array<std::atomic<Parameter*>, static_cast<std::size_t> (numControllers)>;

    std::atomic<Parameter*>& entryAt (int controller) { return map[static_cast<std::size_t> (controller)]; }
    void learn (Parameter&, int controller);

    const ParameterManager& parameters;
    juce::String name;
    ListenerArray<Listener> listeners;
    std::atomic<bool> activity { false };
    std::atomic<Parameter*> learnParameter { nullptr };
    std::atomic<int> numDocuments { 0 };
    std::atomic<int> learnCount { 0 }; // tells a learn from one of the same parameter before it
    Entries map {};

    // The audio thread's own view of a learn in progress.
    Parameter* seenLearnParameter = nullptr;
    int seenLearnCount = 0;
    int learnController = noController;
    Parameter* displaced = nullptr;

    // The message thread's.
    std::array<Parameter*, static_cast<std::size_t> (numControllers)> mapBeforeLearn {};

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidiControlMap)
};

} // namespace quilvane
