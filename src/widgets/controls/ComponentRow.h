// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** Lays its children out one behind the other, in their order and with their own sizes, and takes the size that they
    need. Invisible children keep their place. */
class ComponentRow final : public juce::Component
{
public:
    enum class Direction
    {
        horizontal,
        vertical,
    };

    /** Where children stand across the row. */
    enum class Alignment
    {
        start,
        centre,
        end,
    };

    /** @param spacing between two children, in pixels */
    explicit ComponentRow (Direction, Alignment = Alignment::start, int spacing = 0);

    /** Adds a child at the end; it isn't owned. */
    void add (juce::Component&);

    void updateLayout();
    void childBoundsChanged (juce::Component*) override;

private:
    const bool vertical;
    const Alignment alignment;
    const int spacing;
    bool isLayingOut = false;
};

} // namespace K7R
