// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <unordered_map>
#include <vector>

#include "parameters/Parameter.h"

namespace K7R
{

class ParameterManager;

/** Knows whether the parameters of a preset have moved away from the values that the last preset gave
    them. A value that is moved back clears its own change.

    It hears of changes on the message thread. The baseline is reset there, or on the thread on which a host
    restores a state; any thread may ask.
*/
class PresetChangeDetector final : private Parameter::Listener
{
public:
    /** Watches these parameters; those of other ids never count. Takes no baseline yet. */
    PresetChangeDetector (ParameterManager&, const std::vector<int>& ids);
    ~PresetChangeDetector() override;

    /** Any thread, wait-free. */
    bool hasChanged() const noexcept { return changedCount > 0; }

    /** From now on, the values that stand are the unchanged ones. */
    void resetBaseline();

    /** The unchanged values, for a later setBaseline(). */
    std::vector<juce::var> getBaseline() const;
    void setBaseline (const std::vector<juce::var>&);

private:
    struct Slot
    {
        Parameter* parameter;
        juce::var baseline;
        bool changed = false;
    };

    void parameterChanged (Parameter&) override;

    ParameterManager& manager;
    juce::CriticalSection lock; // of what the slots hold
    std::vector<Slot> slots;
    std::unordered_map<int, size_t> slotById;
    std::atomic<int> changedCount { 0 };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetChangeDetector)
};

} // namespace K7R
