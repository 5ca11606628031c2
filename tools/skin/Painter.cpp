// SPDX-License-Identifier: GPL-3.0-or-later

#include "Painter.h"

#include <cmath>

#include "Failure.h"

namespace K7R::skin
{

namespace
{

constexpr int deepestUse = 32; // macros within macros

float scaleOf (const juce::AffineTransform& transform)
{
    return std::sqrt (std::abs (transform.getDeterminant()));
}

bool isUpright (const juce::AffineTransform& transform)
{
    return std::abs (transform.mat01) < 1.0e-6f && std::abs (transform.mat10) < 1.0e-6f;
}

/** The rectangle in pixels, with all edges between pixels and no side of less than one. */
juce::Rectangle<float> snapToPixels (juce::Rectangle<float> units, const juce::AffineTransform& transform)
{
    const auto exact = units.transformedBy (transform);
    const auto left = std::round (exact.getX());
    const auto top = std::round (exact.getY());

    return { left, top, juce::jmax (1.0f, std::round (exact.getRight()) - left),
             juce::jmax (1.0f, std::round (exact.getBottom()) - top) };
}

juce::Path roundedRectangle (juce::Rectangle<float> bounds, float radius)
{
    juce::Path path;

    if (radius > 0.0f)
        path.addRoundedRectangle (bounds, juce::jmin (radius, bounds.getWidth() / 2, bounds.getHeight() / 2));
    else
        path.addRectangle (bounds);

    return path;
}

} // namespace

//==============================================================================
/** The attributes of one element, as numbers. */
class Painter::Pen
{
public:
    Pen (const juce::XmlElement& e, const Place& p) : element (e), place (p) {}

    float get (const char* name) const
    {
        return static_cast<float> (evaluate (requireAttribute (element, name), place.variables));
    }

    float get (const char* name, float otherwise) const { return element.hasAttribute (name) ? get (name) : otherwise; }

    juce::Path getRing() const
    {
        juce::Path path;
        const auto radius = get ("r");
        path.addEllipse (get ("cx") - radius, get ("cy") - radius, 2 * radius, 2 * radius);
        return path;
    }

    juce::Path getArc() const
    {
        juce::Path path;
        const auto radius = get ("r");
        path.addCentredArc (get ("cx"), get ("cy"), radius, radius, 0.0f, juce::degreesToRadians (get ("from")),
                            juce::degreesToRadians (get ("to")), true);
        return path;
    }

    juce::Path getLine() const
    {
        juce::Path path;
        path.startNewSubPath (get ("x1"), get ("y1"));
        path.lineTo (get ("x2"), get ("y2"));
        return path;
    }

    /** A straight line of whole pixels, at least one thick.
        @returns a path in pixels */
    juce::Path getHairline (bool isHorizontal) const
    {
        const auto thickness = std::round (juce::jmax (1.0f, get ("thickness", 1.0f) * scaleOf (place.transform)));
        auto bounds = isHorizontal ? juce::Rectangle<float> (get ("x"), get ("y"), get ("w"), 0.0f)
                                   : juce::Rectangle<float> (get ("x"), get ("y"), 0.0f, get ("h"));
        bounds = snapToPixels (bounds, place.transform);

        if (isHorizontal)
            bounds.setHeight (thickness);
        else
            bounds.setWidth (thickness);

        return roundedRectangle (bounds, 0.0f);
    }

    /** A rectangle whose edges lie between pixels, in pixels; "inset" is in pixels and counts from there. */
    juce::Path getRectangle() const
    {
        const auto bounds = snapToPixels ({ get ("x"), get ("y"), get ("w"), get ("h") }, place.transform)
                                .reduced (get ("inset", 0.0f));

        return roundedRectangle (bounds, get ("radius", 0.0f) * scaleOf (place.transform) - get ("inset", 0.0f));
    }

    juce::PathStrokeType getStroke() const
    {
        const auto least = 1.0f / scaleOf (place.transform); // a pixel
        const auto cap = element.getStringAttribute ("cap");

        return { juce::jmax (least, get ("thickness", 1.0f)),
                 element.getStringAttribute ("joint") == "sharp" ? juce::PathStrokeType::mitered
                                                                 : juce::PathStrokeType::curved,
                 cap == "round" ? juce::PathStrokeType::rounded : juce::PathStrokeType::butt };
    }

    const juce::XmlElement& element;
    const Place& place;
};

//==============================================================================
Painter::Painter (Canvas& c, const SkinSource& s, const SkinSize& z, ControlHandler handler) :
    canvas (c),
    source (s),
    size (z),
    handleControl (std::move (handler))
{
}

void Painter::drawChildren (const juce::XmlElement& element, const Place& place)
{
    for (const auto* child : element.getChildIterator())
        if (! child->isTextElement())
            draw (*child, place);
}

void Painter::draw (const juce::XmlElement& element, const Place& place)
{
    if (element.hasAttribute ("if") && evaluate (element.getStringAttribute ("if"), place.variables) == 0.0)
        return;

    if (drawStructure (element, place) || drawShape (element, place))
        return;

    if (handleControl == nullptr)
        throw Failure ("a \"" + element.getTagName() + "\" can't stand within a picture");

    handleControl (element, place);
}

bool Painter::drawStructure (const juce::XmlElement& element, const Place& place)
{
    if (element.hasTagName ("group"))
        drawGroup (element, place);
    else if (element.hasTagName ("repeat"))
        drawRepeat (element, place);
    else if (element.hasTagName ("use"))
        drawUse (element, place);
    else
        return false;

    return true;
}

void Painter::drawGroup (const juce::XmlElement& element, Place place)
{
    const Pen pen (element, place);
    const auto x = pen.get ("x", 0.0f);
    const auto y = pen.get ("y", 0.0f);
    const auto angle = juce::degreesToRadians (pen.get ("angle", 0.0f));
    const auto opacity = pen.get ("opacity", 1.0f);

    place.transform = juce::AffineTransform::rotation (angle).translated (x, y).followedBy (place.transform);
    place.opacity *= opacity;
    drawChildren (element, place);
}

void Painter::drawRepeat (const juce::XmlElement& element, const Place& place)
{
    const auto name = requireAttribute (element, "var");
    const auto from = juce::roundToInt (evaluate (requireAttribute (element, "from"), place.variables));
    const auto to = juce::roundToInt (evaluate (requireAttribute (element, "to"), place.variables));
    auto inner = place;

    for (int value = from; value <= to; ++value)
    {
        inner.variables[name] = value;
        drawChildren (element, inner);
    }
}

void Painter::drawUse (const juce::XmlElement& element, const Place& place)
{
    const auto macro =
        substitute (source.find ("Macro", requireAttribute (element, "macro")), getSubstitutes (element));
    const Pen pen (element, place);

    auto inner = place;

    if (++inner.depth > deepestUse)
        throw Failure ("the Macro \"" + macro->getStringAttribute ("name") + "\" uses itself");

    inner.transform =
        juce::AffineTransform::translation (pen.get ("x", 0.0f), pen.get ("y", 0.0f)).followedBy (place.transform);
    drawChildren (*macro, inner);
}

bool Painter::drawShape (const juce::XmlElement& element, const Place& place)
{
    const Pen pen (element, place);

    if (element.hasTagName ("rect"))
        fill (pen.getRectangle(), requireAttribute (element, "fill"), place);
    else if (element.hasTagName ("hline") || element.hasTagName ("vline"))
        fill (pen.getHairline (element.hasTagName ("hline")), requireAttribute (element, "fill"), place);
    else if (element.hasTagName ("circle"))
        paint (pen, pen.getRing());
    else if (element.hasTagName ("arc"))
        paint (pen, pen.getArc());
    else if (element.hasTagName ("line"))
        paint (pen, pen.getLine());
    else if (element.hasTagName ("path"))
        paint (pen, juce::Drawable::parseSVGPath (requireAttribute (element, "d")));
    else if (element.hasTagName ("text"))
        drawText (pen, element, place);
    else if (element.hasTagName ("picture"))
        drawPicture (pen, element, place);
    else
        return false;

    return true;
}

void Painter::paint (const Pen& pen, const juce::Path& path)
{
    // A length of nothing has no direction and leaves no trace.
    if (path.isEmpty())
        return;

    auto outline = path;

    if (pen.element.hasAttribute ("stroke"))
    {
        const auto scale = scaleOf (pen.place.transform);
        pen.getStroke().createStrokedPath (outline, path, {}, juce::jmax (1.0f, 4.0f * scale));
    }

    outline.applyTransform (pen.place.transform);
    fill (outline,
          pen.element.hasAttribute ("stroke") ? pen.element.getStringAttribute ("stroke")
                                              : requireAttribute (pen.element, "fill"),
          pen.place);
}

void Painter::fill (const juce::Path& path, const juce::String& colours, const Place& place)
{
    const auto [top, bottom] = source.getFill (colours);
    canvas.fill (path, top.withMultipliedAlpha (place.opacity), bottom.withMultipliedAlpha (place.opacity));
}

void Painter::drawText (const Pen& pen, const juce::XmlElement& element, const Place& place)
{
    const auto text = requireAttribute (element, "text");
    const auto exactCap = pen.get ("cap") * scaleOf (place.transform);
    const auto cap = juce::jmax (static_cast<float> (size.leastCap), std::round (exactCap));
    const auto& lettering = source.getLettering (requireAttribute (element, "font"));
    auto outline = lettering.getOutline (text, cap, pen.get ("tracking", 0.0f));

    const auto& align = element.getStringAttribute ("align");
    const auto width = outline.getBounds().getWidth();
    const auto shift = align == "centre" ? -width / 2 : align == "right" ? -width : 0.0f;
    const auto isCentred = element.hasAttribute ("middle");
    const auto position =
        juce::Point<float> (pen.get ("x"), pen.get (isCentred ? "middle" : "y")).transformedBy (place.transform);
    const auto baseline = isCentred ? position.y + cap / 2 : position.y;

    if (! isUpright (place.transform))
        throw Failure ("the text \"" + text + "\" can't be turned");

    // Baselines and the tops of capitals lie between pixels, so that they are sharp.
    outline.applyTransform (
        juce::AffineTransform::translation (std::round (position.x + shift), std::round (baseline)));
    fill (outline, requireAttribute (element, "fill"), place);
}

void Painter::drawPicture (const Pen& pen, const juce::XmlElement& element, const Place& place)
{
    const auto& drawing = source.getDrawing (requireAttribute (element, "file"));
    const auto position = juce::Point<float> (pen.get ("x"), pen.get ("y")).transformedBy (place.transform);
    const auto width = pen.get ("w") * scaleOf (place.transform);
    const auto bounds = drawing.getDrawableBounds();

    // A picture's own units are those of its view box, whose top left corner is its origin.
    const auto scale = width / pen.get ("span", bounds.getRight());

    canvas.draw (drawing,
                 juce::AffineTransform::scale (scale).translated (std::round (position.x), std::round (position.y)));
}

} // namespace K7R::skin
