// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/PresetChangeDetector.h"

#include "parameters/ParameterManager.h"

namespace quilvane
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
            parameter->addAsyncListener (this);
        }
    }
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

} // namespace quilvane
