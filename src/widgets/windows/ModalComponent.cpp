// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/ModalComponent.h"

namespace K7R
{

namespace
{

constexpr juce::uint32 coverColour = 0x3fffffff;

} // namespace

ModalComponent::CoveringWindow::CoveringWindow (ModalComponent& modal) : owner (modal)
{
    setVisible (false);
    setFocusContainerType (juce::Component::FocusContainerType::keyboardFocusContainer);
}

void ModalComponent::CoveringWindow::paint (juce::Graphics& g)
{
    if (owner.paintCover (g))
        g.fillAll (juce::Colour (coverColour));
}

//==============================================================================
ModalComponent::ModalComponent (const juce::String& name) : juce::Component (name)
{
    setVisible (false);
    addMouseListener (&pressWatcher, true);
}

ModalComponent::~ModalComponent()
{
    removeMouseListener (&pressWatcher);

    if (auto* parent = cover.getParentComponent())
        parent->removeChildComponent (&cover);

    cover.removeChildComponent (this);
}

juce::Component* ModalComponent::findDesktop (juce::Component& from)
{
    for (auto* component = &from; component != nullptr; component = component->getParentComponent())
        if (dynamic_cast<Desktop*> (component) != nullptr)
            return component;

    return nullptr;
}

void ModalComponent::showModal (Placement newPlacement, juce::Point<int> newPosition, juce::Component* relativeTo)
{
    if (getParentComponent() != &cover || cover.getParentComponent() == nullptr)
    {
        auto* desktop = findDesktop (*this);

        if (desktop == nullptr)
            return;

        // In this order, because a parent other than the cover takes the cover away.
        if (auto* parent = cover.getParentComponent())
            parent->removeChildComponent (&cover);

        cover.addChildComponent (this);
        setVisible (false);
        desktop->addChildComponent (cover);
        cover.toFront (false);
    }

    if (! isShown())
    {
        auto* desktop = cover.getParentComponent();
        placement = newPlacement;
        position = relativeTo != nullptr ? desktop->getLocalPoint (relativeTo, newPosition) : newPosition;

        focusBefore = juce::Component::getCurrentlyFocusedComponent();
        cover.setVisible (true);
        cover.toFront (false);
        place();
    }

    setVisible (true);
}

void ModalComponent::hideModal()
{
    const auto hadFocus = cover.hasKeyboardFocus (true);

    // Else JUCE gives it to whatever comes next, which may lie under another cover.
    if (hadFocus)
        juce::Component::unfocusAllComponents();

    cover.setVisible (false);
    setVisible (false);

    if (hadFocus)
        returnFocus();
}

void ModalComponent::keepFocus()
{
    if (! isShowing() || cover.hasKeyboardFocus (true))
        return;

    const auto* window = getPeer();
    auto* last = window != nullptr ? window->getLastFocusedSubcomponent() : nullptr;
    (last != nullptr && isParentOf (last) && last->getWantsKeyboardFocus() ? last : this)->grabKeyboardFocus();
}

void ModalComponent::returnFocus()
{
    const auto* desktop = cover.getParentComponent();
    const CoveringWindow* top = nullptr;

    if (desktop != nullptr)
        for (const auto* child : desktop->getChildren())
            if (const auto* other = dynamic_cast<const CoveringWindow*> (child); other != nullptr && other->isVisible())
                top = other;

    if (focusBefore != nullptr && focusBefore->isShowing()
        && (top == nullptr || top->isParentOf (focusBefore.getComponent())))
        focusBefore->grabKeyboardFocus();
    else if (top != nullptr && top->isShowing())
        top->owner.grabKeyboardFocus();
}

void ModalComponent::place()
{
    const auto* parent = cover.getParentComponent();

    if (parent == nullptr)
        return;

    cover.setBounds (parent->getLocalBounds());

    if (placement == Placement::atPosition)
        return setTopLeftPosition (position);

    const auto area = dynamic_cast<const Desktop&> (*parent).getModalArea();
    setTopLeftPosition (area.getX() + area.getWidth() / 2 - getWidth() / 2,
                        area.getY() + area.getHeight() / 2 - getHeight() / 2);
}

void ModalComponent::parentHierarchyChanged()
{
    if (auto* parent = cover.getParentComponent(); parent != nullptr && getParentComponent() != &cover)
        parent->removeChildComponent (&cover);
}

std::unique_ptr<juce::AccessibilityHandler> ModalComponent::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::dialogWindow);
}

juce::Component* ModalComponent::getFocusKeptByPress() const
{
    auto* const focused = juce::Component::getCurrentlyFocusedComponent();
    return juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown() && cover.isParentOf (focused) ? focused
                                                                                                     : nullptr;
}

std::unique_ptr<juce::ComponentTraverser> ModalComponent::createKeyboardFocusTraverser()
{
    struct Traverser final : juce::KeyboardFocusTraverser
    {
        explicit Traverser (juce::Component* keeping) : kept (keeping) {}

        juce::Component* getDefaultComponent (juce::Component* parent) override
        {
            return kept != nullptr ? kept : juce::KeyboardFocusTraverser::getDefaultComponent (parent);
        }

        juce::Component* const kept;
    };

    return std::make_unique<Traverser> (getFocusKeptByPress());
}

bool ModalComponent::isOnCover (const juce::Component& component)
{
    return dynamic_cast<const CoveringWindow*> (&component) != nullptr
           || component.findParentComponentOfClass<CoveringWindow>() != nullptr;
}

void ModalComponent::dismissAll (juce::Component& desktop)
{
    for (int i = desktop.getNumChildComponents(); --i >= 0;)
        if (auto* cover = dynamic_cast<CoveringWindow*> (desktop.getChildComponent (i)))
            if (cover->isVisible())
            {
                cover->owner.dismiss();
                i = juce::jmin (i, desktop.getNumChildComponents());
            }
}

} // namespace K7R
