// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/PresetSession.h"

#include <numeric>
#include <utility>

#include "content/PresetChangeDetector.h"
#include "core/FrameworkIds.h"
#include "parameters/ParameterManager.h"

namespace K7R
{

PresetSession::PresetSession (ParameterManager& manager) : parameters (manager) {}

PresetSession::~PresetSession() = default;

void PresetSession::begin()
{
    std::vector<int> ids (static_cast<size_t> (juce::jmax (0, numParameters)));
    std::iota (ids.begin(), ids.end(), 0);

    changeDetector = std::make_unique<PresetChangeDetector> (parameters, ids);
    fill (defaultPreset);
}

//==============================================================================
Preset PresetSession::getCurrent() const
{
    const juce::ScopedLock scope (lock);
    return currentPreset;
}

void PresetSession::keepCurrent()
{
    const juce::ScopedLock scope (lock);
    Preset preset;
    fill (preset);
    currentPreset = std::move (preset);
}

void PresetSession::fill (Preset& preset) const
{
    const juce::ScopedLock scope (lock);
    preset.clearParameters();

    for (int id = 0; id < numParameters; ++id)
        if (const auto* parameter = parameters.getParameter (id))
            preset.addParameter (*parameter);

    preset.name = parameters.getValueString (frameworkIds::presetName);
}

void PresetSession::apply (const std::function<void (std::vector<Parameter*>&)>& storeAll)
{
    const ScopedLoad loading (*this);
    std::vector<Parameter*> changed;
    changed.reserve (2 * static_cast<size_t> (juce::jmax (0, numParameters)) + 1);

    const auto publish = [&]
    {
        for (auto* parameter : changed)
            parameter->notifyListeners();
    };

    try
    {
        const juce::ScopedLock scope (lock);
        storeAll (changed);
        ++numLoads;
    }
    catch (...)
    {
        // The sound follows what was stored, whatever failed after.
        publish();
        throw;
    }

    publish();
}

void PresetSession::load (const Preset& preset)
{
    apply (
        [&] (auto& changed)
        {
            const auto store = [&] (int id, const juce::String& value)
            {
                auto* parameter = parameters.getParameter (id);

                if (parameter != nullptr && parameter->setString (value, false))
                    changed.push_back (parameter);
            };

            // A parameter that the preset lacks falls back to the default, not to the present value.
            for (const auto& entry : defaultPreset.getEntries())
                if (! preset.contains (entry.id))
                    store (entry.id, entry.value);

            for (const auto& entry : preset.getEntries())
                if (juce::isPositiveAndBelow (entry.id, numParameters))
                    store (entry.id, entry.value);

            store (frameworkIds::presetName, preset.name);
            keepCurrent();
            resetBaseline();
        });
}

PresetSession::Snapshot PresetSession::takeSnapshot() const
{
    const juce::ScopedLock scope (lock);
    Snapshot snapshot;

    for (int id = 0; id < numParameters; ++id)
        if (const auto* parameter = parameters.getParameter (id))
            snapshot.values.push_back (parameter->clone (id, parameter->getName()));

    snapshot.name = parameters.getValueString (frameworkIds::presetName);
    snapshot.current = currentPreset;
    snapshot.numLoads = numLoads;
    snapshot.numStates = numStates;

    if (changeDetector != nullptr)
        snapshot.baseline = changeDetector->getBaseline();

    return snapshot;
}

void PresetSession::restore (const Snapshot& snapshot)
{
    apply (
        [&] (auto& changed)
        {
            for (const auto& value : snapshot.values)
                if (auto* parameter = parameters.getParameter (value->getId()); parameter->copyFrom (*value, false))
                    changed.push_back (parameter);

            if (auto* name = parameters.getParameter (frameworkIds::presetName); name->setString (snapshot.name, false))
                changed.push_back (name);

            currentPreset = snapshot.current;

            if (changeDetector != nullptr)
                changeDetector->setBaseline (snapshot.baseline);
        });
}

//==============================================================================
bool PresetSession::hasChanged() const noexcept
{
    return changeDetector != nullptr && changeDetector->hasChanged();
}

void PresetSession::resetBaseline()
{
    if (changeDetector != nullptr)
        changeDetector->resetBaseline();
}

} // namespace K7R
