// SPDX-License-Identifier: GPL-3.0-or-later

#include "SkinDrawing.h"

#include <cmath>

#include "BitmapFont.h"
#include "Failure.h"

namespace K7R::skin
{

namespace
{

constexpr int thumbnailWidth = 200; // pixels, about

juce::Image makeThumbnail (const juce::Image& picture)
{
    const auto reduction = juce::roundToInt (static_cast<float> (picture.getWidth()) / thumbnailWidth);
    auto thumbnail = makeImage (picture.getWidth() / reduction, picture.getHeight() / reduction);

    // The mean of whole blocks of pixels, all of which are opaque.
    for (int y = 0; y < thumbnail.getHeight(); ++y)
    {
        for (int x = 0; x < thumbnail.getWidth(); ++x)
        {
            int red = 0;
            int green = 0;
            int blue = 0;

            for (int i = 0; i < reduction * reduction; ++i)
            {
                const auto colour = picture.getPixelAt (x * reduction + i % reduction, y * reduction + i / reduction);
                red += colour.getRed();
                green += colour.getGreen();
                blue += colour.getBlue();
            }

            const auto mean = [=] (int sum) { return static_cast<juce::uint8> (sum / (reduction * reduction)); };
            thumbnail.setPixelAt (x, y, { mean (red), mean (green), mean (blue) });
        }
    }

    return thumbnail;
}

bool haveSamePixels (const juce::Image& a, const juce::Image& b)
{
    if (a.getBounds() != b.getBounds())
        return false;

    for (int y = 0; y < a.getHeight(); ++y)
        for (int x = 0; x < a.getWidth(); ++x)
            if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
                return false;

    return true;
}

void describeBounds (juce::XmlElement& control, juce::Rectangle<int> bounds)
{
    auto* extent = control.createNewChildElement ("size");
    extent->setAttribute ("width", bounds.getWidth());
    extent->setAttribute ("height", bounds.getHeight());

    auto* position = control.createNewChildElement ("pos");
    position->setAttribute ("left", bounds.getX());
    position->setAttribute ("top", bounds.getY());
}

void describeBehaviour (juce::XmlElement& control, const juce::XmlElement& element)
{
    if (element.hasAttribute ("param"))
    {
        auto* link = control.createNewChildElement ("links")->createNewChildElement ("link");
        link->setAttribute ("as", "connectedTo");
        link->setAttribute ("param", element.getStringAttribute ("param"));
    }

    if (element.hasAttribute ("event"))
    {
        auto* action = control.createNewChildElement ("actions")->createNewChildElement ("action");
        action->setAttribute ("type", "onClick");
        action->setAttribute ("event", element.getStringAttribute ("event"));
    }
}

void drawPart (const juce::Image& target, const juce::Image& part, juce::Rectangle<int> from, juce::Point<int> to)
{
    juce::Graphics g (target);
    g.drawImage (part, to.x, to.y, from.getWidth(), from.getHeight(), from.getX(), from.getY(), from.getWidth(),
                 from.getHeight());
}

} // namespace

//==============================================================================
struct SkinDrawing::PanelInProgress
{
    Canvas& canvas;
    juce::XmlElement& controls;
    std::vector<std::function<void (const juce::Image&)>>& previews; // drawn on top, in order
    juce::AffineTransform transform;
};

SkinDrawing::SkinDrawing (const SkinSource& s, const SkinSize& z) : source (s), size (z)
{
    const auto& panel = source.getPanel();
    const auto width = juce::roundToInt (panel.getDoubleAttribute ("w") * size.scale);
    const auto height = juce::roundToInt (panel.getDoubleAttribute ("h") * size.scale);

    preview = makeImage (width, height);
    drawPanel (panel, { width, height }, *document.createNewChildElement ("Panel"), preview, true);
    keepImage ("Thumbnail.png", {}, makeThumbnail (preview));

    for (const auto* name : { "PluginLogo", "K7RLogo" })
        drawLogo (source.find ("Logo", name));
}

void SkinDrawing::drawLogo (const juce::XmlElement& logo)
{
    const auto width = juce::roundToInt (logo.getDoubleAttribute ("w") * size.scale);
    const auto height = juce::roundToInt (logo.getDoubleAttribute ("h") * size.scale);

    Canvas canvas (width, height);
    Painter (canvas, source, size)
        .drawChildren (logo, { juce::AffineTransform::scale (static_cast<float> (size.scale)), {} });

    auto image = makeImage (width, height);
    canvas.copyTo (image, 0, 0);
    keepImage (logo.getStringAttribute ("name") + ".png", {}, image);
}

void SkinDrawing::drawPanel (const juce::XmlElement& element, juce::Rectangle<int> bounds, juce::XmlElement& described,
                             const juce::Image& previewOfPanel, bool isShown)
{
    const auto imageName = requireAttribute (element, "image");
    described.setAttribute ("name", requireAttribute (element, "name"));

    auto* gfx = described.createNewChildElement ("gfx");
    gfx->setAttribute ("resource", imageName);
    gfx->setAttribute ("framesNum", 1);
    describeBounds (described, bounds);

    Canvas canvas (bounds.getWidth(), bounds.getHeight());
    std::vector<std::function<void (const juce::Image&)>> previews;
    PanelInProgress progress { canvas, *described.createNewChildElement ("controls"), previews,
                               juce::AffineTransform::scale (static_cast<float> (size.scale)) };

    Painter (canvas, source, size,
             [&] (const juce::XmlElement& control, const Place& place) { addControl (progress, control, place); })
        .drawChildren (element, { progress.transform, {} });

    auto image = makeImage (bounds.getWidth(), bounds.getHeight());
    canvas.copyTo (image, 0, 0);
    keepImage (imageName, {}, image);
    imagesOfControls.insert (imageName);

    if (! isShown)
        return;

    drawPart (previewOfPanel, image, image.getBounds(), bounds.getPosition());

    for (const auto& paintControl : previews)
        paintControl (previewOfPanel.getClippedImage (bounds));
}

void SkinDrawing::addControl (PanelInProgress& panel, const juce::XmlElement& element, const Place& place)
{
    if (element.hasTagName ("Panel"))
        addNestedPanel (panel, element, place);
    else if (element.hasTagName ("Display"))
        addDisplay (panel, element, place);
    else
        addStripControl (panel, element, place);
}

namespace
{

juce::Point<int> pixelOf (const juce::XmlElement& element, const Place& place)
{
    const auto coordinate = [&] (const char* name)
    { return static_cast<float> (evaluate (requireAttribute (element, name), place.variables)); };

    return juce::Point<float> (coordinate ("x"), coordinate ("y")).transformedBy (place.transform).roundToInt();
}

} // namespace

void SkinDrawing::addNestedPanel (PanelInProgress& panel, const juce::XmlElement& element, const Place& place)
{
    const auto corner = pixelOf (element, place);
    const auto extent = [&] (const char* name)
    { return juce::roundToInt (evaluate (requireAttribute (element, name), place.variables) * size.scale); };
    const juce::Rectangle<int> bounds (corner.x, corner.y, extent ("w"), extent ("h"));

    // Drawn apart, because it is only shown with what stands on the outer panel once that is drawn.
    const auto inner = makeImage (bounds.getWidth(), bounds.getHeight());
    const auto isShown = element.getBoolAttribute ("shown", true);
    juce::XmlElement described ("Panel");
    drawPanel (element, bounds.withZeroOrigin(), described, inner, isShown);

    auto* position = described.getChildByName ("pos");
    position->setAttribute ("left", bounds.getX());
    position->setAttribute ("top", bounds.getY());
    panel.controls.addChildElement (new juce::XmlElement (described));

    panel.previews.emplace_back ([inner, bounds] (const juce::Image& target)
                                 { drawPart (target, inner, inner.getBounds(), bounds.getPosition()); });
}

//==============================================================================
void SkinDrawing::addStripControl (PanelInProgress& panel, const juce::XmlElement& element, const Place& place)
{
    auto substitutes = getSubstitutes (element);
    const auto pieces = substitute (source.find ("Template", requireAttribute (element, "template")), substitutes);

    const auto units = [&] (const char* name) { return evaluate (requireAttribute (*pieces, name), place.variables); };

    // Segments all have the same number of pixels.
    const auto numSegments = pieces->getIntAttribute ("segments", 1);
    const auto segment = juce::roundToInt (units ("w") * size.scale / numSegments);
    const auto width = segment * numSegments;
    const auto height = juce::roundToInt (units ("h") * size.scale);
    const auto numFrames = pieces->getIntAttribute ("frames", 1);
    const auto corner = pixelOf (element, place);

    // From here on the frame's own corners are the measure: it fills its pixels.
    Place local { juce::AffineTransform::scale (static_cast<float> (width / units ("w")),
                                                static_cast<float> (height / units ("h"))),
                  {} };
    const auto imageName = requireAttribute (element, "image");
    const auto& strip = drawStrip (*pieces, imageName, width, height, numFrames, local);
    imagesOfControls.insert (imageName);

    if (const auto* under = pieces->getChildByName ("under"))
    {
        auto place2 = local;
        place2.transform = local.transform.translated (corner);
        Painter (panel.canvas, source, size).drawChildren (*under, place2);
    }

    auto* control = panel.controls.createNewChildElement (element.getTagName());
    control->setAttribute ("name", requireAttribute (element, "name"));

    for (const auto* attribute : { "style", "clickEvent", "paramReset" })
        if (pieces->hasAttribute (attribute))
            control->setAttribute (attribute, pieces->getStringAttribute (attribute));

    if (numSegments > 1)
        control->setAttribute ("thumb", segment / 2);

    auto* gfx = control->createNewChildElement ("gfx");
    gfx->setAttribute ("resource", imageName);
    gfx->setAttribute ("framesNum", numFrames);
    describeBounds (*control, { corner.x, corner.y, width, height });
    describeBehaviour (*control, element);

    const auto value = evaluate (element.getStringAttribute ("preview", "0"), place.variables);
    const auto frame = static_cast<int> (std::floor (value * (numFrames - 1) + 0.5));
    const juce::Rectangle<int> shown (0, frame * height, width, height);

    panel.previews.emplace_back ([strip, shown, corner] (const juce::Image& target)
                                 { drawPart (target, strip, shown, corner); });
}

const juce::Image& SkinDrawing::drawStrip (const juce::XmlElement& pieces, const juce::String& name, int width,
                                           int height, int numFrames, const Place& local)
{
    const auto* content = pieces.getChildByName ("frame");

    if (content == nullptr || numFrames < 1)
        throw Failure ("the Template \"" + pieces.getStringAttribute ("name") + "\" has no frame");

    const auto description =
        content->toString() + juce::String (width) + "x" + juce::String (height) + "x" + juce::String (numFrames);

    if (images.count (name) != 0)
        return keepImage (name, description, {});

    auto strip = makeImage (width, height * numFrames);
    Canvas canvas (width, height);

    for (int i = 0; i < numFrames; ++i)
    {
        auto place = local;
        place.variables["frame"] = i;
        place.variables["n"] = numFrames > 1 ? static_cast<double> (i) / (numFrames - 1) : 0.0;

        canvas.clear();
        Painter (canvas, source, size).drawChildren (*content, place);
        canvas.copyTo (strip, 0, i * height);
    }

    return keepImage (name, description, strip);
}

juce::int64 SkinDrawing::getNumPixelsInMemory() const
{
    juce::int64 pixels = 0;

    for (const auto& name : imagesOfControls)
        pixels += static_cast<juce::int64> (images.at (name).getWidth()) * images.at (name).getHeight();

    return pixels;
}

const juce::Image& SkinDrawing::keepImage (const juce::String& name, const juce::String& description,
                                           const juce::Image& image)
{
    const auto found = images.find (name);

    if (found == images.end())
    {
        descriptions[name] = description;
        return images[name] = image;
    }

    if (descriptions[name] != description || (image.isValid() && ! haveSamePixels (image, found->second)))
        throw Failure ("two different pictures are called " + name);

    return found->second;
}

//==============================================================================
void SkinDrawing::addDisplay (PanelInProgress& panel, const juce::XmlElement& element, const Place& place)
{
    const auto& font = source.find ("BitmapFont", requireAttribute (element, "font"));
    const auto& strip = drawFont (font);
    imagesOfControls.insert (requireAttribute (font, "image"));

    const auto cellWidth = strip.getWidth();
    const auto cellHeight = strip.getHeight() / numFontRows;
    const auto numShown = juce::roundToInt (evaluate (requireAttribute (element, "chars"), place.variables));
    const auto corner = pixelOf (element, place);

    auto* control = panel.controls.createNewChildElement ("Display");
    control->setAttribute ("name", requireAttribute (element, "name"));

    if (element.hasAttribute ("readonly"))
        control->setAttribute ("readonly", element.getStringAttribute ("readonly"));

    auto* gfx = control->createNewChildElement ("gfx");
    gfx->setAttribute ("resource", requireAttribute (font, "image"));
    gfx->setAttribute ("fontHeight", cellHeight);
    gfx->setAttribute ("firstASCII", " ");
    describeBounds (*control, { corner.x, corner.y, numShown * cellWidth, cellHeight });
    describeBehaviour (*control, element);

    const auto text = element.getStringAttribute ("preview").substring (0, numShown);

    panel.previews.emplace_back (
        [=] (const juce::Image& target)
        {
            for (int i = 0; i < text.length(); ++i)
            {
                const auto row = static_cast<int> (text[i] - firstFontCharacter) * cellHeight;
                drawPart (target, strip, { 0, row, cellWidth, cellHeight }, corner.translated (i * cellWidth, 0));
            }
        });
}

const juce::Image& SkinDrawing::drawFont (const juce::XmlElement& font)
{
    const auto name = requireAttribute (font, "image");

    if (images.count (name) != 0)
        return images[name];

    return keepImage (name, {}, drawBitmapFont (font, source, size));
}

} // namespace K7R::skin
