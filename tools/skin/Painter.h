// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "Canvas.h"
#include "Formula.h"
#include "SkinSource.h"

namespace K7R::skin
{

/** Where a piece is drawn: the mapping from its units to the pixels of a canvas, and its variables. */
struct Place
{
    juce::AffineTransform transform;
    Variables variables;
    float opacity = 1.0f;
    int depth = 0; // of macros
};

/** Draws the elements of a skin's sources; their list stands at the head of panel.xml. */
class Painter
{
public:
    /** Takes an element that isn't drawn: a control. */
    using ControlHandler = std::function<void (const juce::XmlElement&, const Place&)>;

    /** @param handler without it, a control throws a Failure */
    Painter (Canvas&, const SkinSource&, const SkinSize&, ControlHandler handler = {});

    /** Draws the children of an element, in order. */
    void drawChildren (const juce::XmlElement&, const Place&);

private:
    class Pen;

    void draw (const juce::XmlElement&, const Place&);
    bool drawStructure (const juce::XmlElement&, const Place&);
    bool drawShape (const juce::XmlElement&, const Place&);

    void drawRepeat (const juce::XmlElement&, const Place&);
    void drawUse (const juce::XmlElement&, const Place&);
    void drawGroup (const juce::XmlElement&, Place);
    void drawText (const Pen&, const juce::XmlElement&, const Place&);
    void drawPicture (const Pen&, const juce::XmlElement&, const Place&);

    /** Fills or strokes a path that is in units. */
    void paint (const Pen&, const juce::Path&);
    void fill (const juce::Path& inPixels, const juce::String& colours, const Place&);

    Canvas& canvas;
    const SkinSource& source;
    const SkinSize& size;
    ControlHandler handleControl;
};

} // namespace K7R::skin
