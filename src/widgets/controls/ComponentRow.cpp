// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ComponentRow.h"

namespace K7R
{

ComponentRow::ComponentRow (Direction direction, Alignment acrossTheRow, int pixelsBetween) :
    vertical (direction == Direction::vertical),
    alignment (acrossTheRow),
    spacing (pixelsBetween)
{
    setInterceptsMouseClicks (false, true);
}

void ComponentRow::add (juce::Component& child)
{
    addAndMakeVisible (child);
    updateLayout();
}

void ComponentRow::childBoundsChanged (juce::Component*)
{
    updateLayout();
}

void ComponentRow::updateLayout()
{
    if (isLayingOut)
        return;

    const juce::ScopedValueSetter<bool> scope (isLayingOut, true);
    auto along = spacing * juce::jmax (0, getNumChildComponents() - 1);
    auto across = 0;

    for (const auto* child : getChildren())
    {
        along += vertical ? child->getHeight() : child->getWidth();
        across = juce::jmax (across, vertical ? child->getWidth() : child->getHeight());
    }

    setSize (vertical ? across : along, vertical ? along : across);

    int place = 0;

    for (auto* child : getChildren())
    {
        const auto room = across - (vertical ? child->getWidth() : child->getHeight());
        const auto side = alignment == Alignment::start ? 0 : alignment == Alignment::centre ? room / 2 : room;

        child->setTopLeftPosition (vertical ? side : place, vertical ? place : side);
        place += (vertical ? child->getHeight() : child->getWidth()) + spacing;
    }
}

} // namespace K7R
