// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

bool FloatingComponentOwner::showFloating (juce::Component& from, juce::Component& component, juce::Point<int> position,
                                           juce::Component* relativeTo, Callback* callback)
{
    auto* owner = from.findParentComponentOfClass<FloatingComponentOwner>();

    if (owner != nullptr)
        owner->showFloatingComponent (component, position, relativeTo, callback);

    return owner != nullptr;
}

bool FloatingComponentOwner::hideFloating (juce::Component& from, juce::Component& component,
                                           const juce::MouseEvent* event)
{
    auto* owner = from.findParentComponentOfClass<FloatingComponentOwner>();

    if (owner != nullptr)
        owner->hideFloatingComponent (component, event);

    return owner != nullptr;
}

} // namespace K7R
