// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/FloatingLayer.h"

#include "widgets/windows/ModalComponent.h"

namespace K7R
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

    focusBefore = juce::Component::getCurrentlyFocusedComponent();
    root.addAndMakeVisible (component);
    component.toFront (false);

    const auto corner = relativeTo != nullptr ? root.getLocalPoint (relativeTo, position) : position;
    const auto place = component.getBounds().withPosition (corner);

    // One that is larger than the editor stays where it was asked for.
    const auto fits = place.getWidth() <= root.getWidth() && place.getHeight() <= root.getHeight();
    component.setBounds (fits ? place.constrainedWithin (root.getLocalBounds()) : place);

    shown = &component;
    callback = newCallback;
    isArmed = ! juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown();

    root.removeMouseListener (this);
    root.addMouseListener (this, true);

    if (component.getWantsKeyboardFocus() && component.isShowing())
        component.grabKeyboardFocus();
}

void FloatingLayer::hide (juce::Component& component, const juce::MouseEvent* event)
{
    if (shown != &component)
        return;

    root.removeMouseListener (this);
    shown = nullptr;

    const auto hadFocus = component.hasKeyboardFocus (true);

    if (hadFocus)
        juce::Component::unfocusAllComponents();

    component.setVisible (false);
    root.removeChildComponent (&component);

    if (hadFocus && focusBefore != nullptr && focusBefore->isShowing())
        focusBefore->grabKeyboardFocus();

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

    if (e.originalComponent == shown || shown->isParentOf (e.originalComponent)
        || ModalComponent::isOnCover (*e.originalComponent)
        || (callback != nullptr && callback->keepsFloatingComponent (*shown, e)))
        return;

    hide (*shown, &e);
}

} // namespace K7R
