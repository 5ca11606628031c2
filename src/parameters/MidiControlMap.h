// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <atomic>
#include <memory>

#include <juce_audio_basics/juce_audio_basics.h>

#include "support/ListenerArray.h"

namespace K7R
{

class Parameter;
class ParameterManager;

/** Connects MIDI controllers to parameters, on all channels alike, and learns such connections.

    The audio thread feeds it controllers while other threads edit it: every entry is one atomic pointer, and what is
    being learned is one atomic word, which lies over the entries until it's kept or dropped. So the audio thread never
    writes an entry, and never waits; editors share a lock. A parameter sits at one controller at most.

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
    /** Takes a control change of any channel; audio thread, wait-free. While a parameter is being learned the
        controller takes it over, and the one that the last controller displaced returns to its place;
        the parameter at the controller, if any, then follows the value. */
    void handleController (const juce::MidiMessage&);

    /** Whether any controller came in since the last call. Any thread. */
    bool takeActivity() noexcept { return activity.exchange (false); }

    //==============================================================================
    // For any thread but the audio thread.

    /** Puts a parameter at a controller, in place of any other, and removes it from where it stood;
        noController only removes. Ends learning and keeps what was learned. */
    void assign (Parameter&, int controller);

    /** The next controllers belong to this parameter, until stopLearn() or cancelLearn(). The map from
        before the first of several learned in a row is the one that cancelLearn() restores. */
    void startLearn (Parameter&);

    /** Ends learning and keeps what was learned. */
    void stopLearn();

    /** Ends learning and restores the map as it was before. */
    void cancelLearn();

    /** The parameter that is being learned; null for none. Any thread. */
    Parameter* getLearnParameter() const noexcept;

    /** The controller at which a parameter sits, or noController. Any thread. */
    int getController (const Parameter&) const noexcept;

    /** The parameter at a controller; null for none. Any thread. */
    Parameter* getParameter (int controller) const noexcept;

    using Entries = std::array<Parameter*, static_cast<std::size_t> (numControllers)>;

    /** What sits where at one moment, for going back to it. */
    struct Snapshot
    {
        Entries entries {};
        int numDocuments = 0; // that had been loaded until then
    };

    Snapshot takeSnapshot() const;

    /** Whether no whole map has been loaded since, as a host does with its project. */
    bool isCurrent (const Snapshot& snapshot) const noexcept { return snapshot.numDocuments == numDocuments; }

    /** Goes back to a snapshot, and ends learning. Does nothing if a whole map has been loaded since: that one
        stands. */
    void restore (const Snapshot&);

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
    /** A learn in progress, which takes precedence over the entries. */
    struct Learn
    {
        juce::int32 parameter = -1; // its place in the manager's list
        juce::int16 controller = noController;
        juce::int16 isOpen = 0; // to other controllers
    };

    Parameter* getParameter (const Learn&, int controller) const noexcept;
    Parameter* getParameter (const Learn&) const noexcept;
    Learn closeLearn() noexcept;
    void keepLearned() noexcept;
    void replaceEntries (const Entries&) noexcept;

    const ParameterManager& parameters;
    juce::String name;
    ListenerArray<Listener> listeners;
    std::atomic<bool> activity { false };

    juce::CriticalSection editLock; // between editors, and for who needs a whole map
    std::array<std::atomic<Parameter*>, static_cast<std::size_t> (numControllers)> map {};
    std::atomic<Learn> learning { Learn() };
    std::atomic<int> numDocuments { 0 };
    Snapshot beforeLearn;

    static_assert (std::atomic<Learn>::is_always_lock_free);

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidiControlMap)
};

} // namespace K7R
