// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

#include "content/Preset.h"

namespace K7R
{

class Parameter;
class PresetChangeDetector;

/** The presets of one instance: the default one, the current one, and whether the values have moved since.

    A load stores first and publishes after: the lock makes it whole for everybody who fills a preset meanwhile, and is
    free again before listeners, and through them the host, hear of it. Hosts save and restore on threads of their own,
    with locks of their own.

    Owned by the BasePlugin. Any thread, once it's set up.
*/
class PresetSession
{
public:
    explicit PresetSession (ParameterManager&);
    ~PresetSession();

    /** Sets how many parameters from the start of the table belong to a preset. */
    void setNumParameters (int number) noexcept { numParameters = number; }

    /** Takes the values that stand as the default preset, and watches them from here on. */
    void begin();

    //==============================================================================
    /** The values before any preset was loaded; empty in a product without presets. */
    const Preset& getDefault() const noexcept { return defaultPreset; }

    /** The values as the last loaded preset gave them. */
    Preset getCurrent() const;

    /** Takes the values that stand as the current preset. */
    void keepCurrent();

    /** Fills a preset with the values that stand: never with a part of one that is being loaded. */
    void fill (Preset&) const;

    /** Applies a preset, which becomes the current one: what it doesn't mention falls back to the default preset's
        value. Then the listeners of what has changed are told. */
    void load (const Preset&);

    /** Marks that values change because of a load, for as long as it lives. */
    class ScopedLoad
    {
    public:
        explicit ScopedLoad (PresetSession& owner) noexcept : session (owner) { ++session.numLoading; }
        ~ScopedLoad() { --session.numLoading; }

        ScopedLoad (const ScopedLoad&) = delete;
        ScopedLoad& operator= (const ScopedLoad&) = delete;

    private:
        PresetSession& session;
    };

    /** Whether values are changing because of a load, until all its listeners have been told. */
    bool isLoading() const noexcept { return numLoading > 0; }

    //==============================================================================
    /** All that a user goes back to who has listened to other presets. */
    struct Snapshot
    {
        std::vector<std::unique_ptr<Parameter>> values; // exact, where a preset's text is rounded
        juce::String name;
        Preset current;
        std::vector<juce::var> baseline;
        int numLoads = 0, numStates = 0;
    };

    Snapshot takeSnapshot() const;

    /** Tells that the host has restored a state: it stands, whatever snapshots there are. */
    void stateRestored() noexcept { ++numStates; }

    /** Whether there is something to go back from: since the snapshot a preset was loaded, and no state restored. */
    bool isOutdated (const Snapshot& snapshot) const noexcept
    {
        return numLoads != snapshot.numLoads && numStates == snapshot.numStates;
    }

    /** Brings back the values, the current preset, and what counts as unchanged. Then the listeners of what has changed
        are told. */
    void restore (const Snapshot&);

    //==============================================================================
    /** Whether parameters have moved since the baseline was set. Wait-free. */
    bool hasChanged() const noexcept;

    /** From now on, the values that stand are the unchanged ones. */
    void resetBaseline();

private:
    /** Stores under the lock, and publishes after.
        @param storeAll adds what it has changed to the list */
    void apply (const std::function<void (std::vector<Parameter*>&)>& storeAll);

    ParameterManager& parameters;
    int numParameters = 0;
    juce::CriticalSection lock; // of whole presets in the parameters, and of the current one
    Preset defaultPreset;
    Preset currentPreset;
    std::unique_ptr<PresetChangeDetector> changeDetector;
    std::atomic<int> numLoads { 0 }, numStates { 0 }, numLoading { 0 };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetSession)
};

} // namespace K7R
