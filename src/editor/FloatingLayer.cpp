// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/FloatingLayer.h"

namespace quilvane
{

FloatingLayer::~FloatingLayer()
{
    root.removeMouseListener (this);
}

void FloatingLayer::show (juce::Component& component, juce::Point<int> position, juce::Component* relativeTo,
                          FloatingComponentOwner::Callback* newCallback)
{
    if (shown != nullptr)
        hide (*shown, nullptr);

    root.addAndMakeVisible (component);
    component.toFront (false);
    component.setTopLeftPosition (relativeTo != nullptr ? root.getLocalPoint (relativeTo, position) : position);

    shown = &component;
    callback = newCallback;
    isArmed = ! juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown();

    root.removeMouseListener (this);
    root.addMouseListener (this, true);
}

void FloatingLayer::hide (juce::Component& component, const juce::MouseEvent* event)
{
    if (shown != &component)
        return;

    root.removeMouseListener (this);
    shown = nullptr;
    component.setVisible (false);
    root.removeChildComponent (&component);

    if (auto* told = std::exchange (callback, nullptr))
        told->floatingComponentHidden (component, event);
}

void FloatingLayer::mouseUp (const juce::MouseEvent&)
{
    isArmed = true;
}

void FloatingLayer::mouseDown (const juce::MouseEvent& e)
{
    if (shown == nullptr || ! isArmed)
        return;

    if (e.originalComponent != shown && ! shown->isParentOf (e.originalComponent))
        hide (*shown, &e);
}

} // namespace quilvane
