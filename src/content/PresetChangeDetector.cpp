// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/PresetChangeDetector.h"

#include "parameters/ParameterManager.h"

namespace K7R
{

PresetChangeDetector::PresetChangeDetector (ParameterManager& parameterManager, const std::vector<int>& ids) :
    manager (parameterManager)
{
    for (const auto id : ids)
    {
        if (auto* parameter = manager.getParameter (id))
        {
            slotById.emplace (id, slots.size());
            slots.push_back ({ parameter, {} });
        }
    }

    // From here on it may be called.
    for (auto& slot : slots)
        slot.parameter->addAsyncListener (this);
}

PresetChangeDetector::~PresetChangeDetector()
{
    manager.removeFromAll (this);
}

void PresetChangeDetector::resetBaseline()
{
    const juce::ScopedLock scope (lock);

    for (auto& slot : slots)
    {
        slot.baseline = slot.parameter->getVar();
        slot.changed = false;
    }

    changedCount = 0;
}

std::vector<juce::var> PresetChangeDetector::getBaseline() const
{
    const juce::ScopedLock scope (lock);
    std::vector<juce::var> values;

    for (const auto& slot : slots)
        values.push_back (slot.baseline);

    return values;
}

void PresetChangeDetector::setBaseline (const std::vector<juce::var>& values)
{
    const juce::ScopedLock scope (lock);
    int count = 0;

    for (size_t i = 0; i < juce::jmin (slots.size(), values.size()); ++i)
    {
        auto& slot = slots[i];
        slot.baseline = values[i];
        slot.changed = slot.parameter->getVar() != slot.baseline;
        count += slot.changed ? 1 : 0;
    }

    changedCount = count;
}

void PresetChangeDetector::parameterChanged (Parameter& parameter)
{
    const auto found = slotById.find (parameter.getId());

    if (found == slotById.end())
        return;

    const juce::ScopedLock scope (lock);
    auto& slot = slots[found->second];
    const auto changed = parameter.getVar() != slot.baseline;

    if (std::exchange (slot.changed, changed) != changed)
        changedCount += changed ? 1 : -1;
}

} // namespace K7R
