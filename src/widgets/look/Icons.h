// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** The icons of the windows that are built by code: vector drawings of one hand, held as SVG texts on a grid of
    24 by 24, and in one colour, which their users replace. */
struct Icons
{
    static constexpr juce::uint32 colour = 0xffe6e6e6;
    static constexpr juce::uint32 overColour = 0xffff6c00;
    static constexpr juce::uint32 litColour = 0xffffa35f;

    enum class Name
    {
        close,
        tick,
        arrowDown,
        arrowLeft,
        arrowRight,
        arrowUp,
        plus,
        minus,
        quality,
        midi,
        skin,
        gear,
        folder,
        file,
        save,
        list,
        record,
        reset,
        resize,
        user,
        factory,
        import,
        exportArrow,
        edit,
        bin,
    };

    /** An icon in its own colour. */
    static std::unique_ptr<juce::Drawable> create (Name);

    /** An icon in another colour. */
    static std::unique_ptr<juce::Drawable> create (Name, juce::Colour);

    /** Makes a button that shows nothing but an icon, hot while the mouse is over it, and tells what it is for. It
        takes no focus. */
    static void setUp (juce::DrawableButton&, Name, const juce::String& title, juce::Colour = juce::Colour (colour));

    /** The drawing of an SVG document; null for a text that is none. */
    static std::unique_ptr<juce::Drawable> fromSvg (const juce::String& text);
};

} // namespace K7R
