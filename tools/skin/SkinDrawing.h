// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>
#include <memory>
#include <set>

#include "Canvas.h"
#include "Painter.h"
#include "SkinSource.h"

namespace K7R::skin
{

/** A skin, drawn in one size: its images and its document. */
class SkinDrawing
{
public:
    /** Draws everything; throws a Failure. */
    SkinDrawing (const SkinSource&, const SkinSize&);

    /** The images by the names that the document gives them, with "Thumbnail.png". */
    const std::map<juce::String, juce::Image>& getImages() const noexcept { return images; }

    /** The skin document, "skin.xml". */
    const juce::XmlElement& getDocument() const noexcept { return document; }

    /** The whole panel, with each control as its attribute "preview" says. */
    juce::Image getPreview() const { return preview; }

    /** The pixels of all images that the controls hold; they share an image of one name. */
    juce::int64 getNumPixelsInMemory() const;

private:
    struct PanelInProgress;

    void drawPanel (const juce::XmlElement&, juce::Rectangle<int> bounds, juce::XmlElement& described,
                    const juce::Image& previewOfPanel, bool isShown);
    void drawLogo (const juce::XmlElement&);
    void addControl (PanelInProgress&, const juce::XmlElement&, const Place&);
    void addNestedPanel (PanelInProgress&, const juce::XmlElement&, const Place&);
    void addStripControl (PanelInProgress&, const juce::XmlElement&, const Place&);
    void addDisplay (PanelInProgress&, const juce::XmlElement&, const Place&);

    const juce::Image& drawStrip (const juce::XmlElement& pieces, const juce::String& name, int width, int height,
                                  int numFrames, const Place& local);
    const juce::Image& drawFont (const juce::XmlElement& font);
    const juce::Image& keepImage (const juce::String& name, const juce::String& description, const juce::Image&);

    const SkinSource& source;
    SkinSize size;
    std::map<juce::String, juce::Image> images;
    std::map<juce::String, juce::String> descriptions; // of the images, to tell whether two uses agree
    juce::XmlElement document { "PluginEditor" };
    juce::Image preview;
    std::set<juce::String> imagesOfControls;
};

} // namespace K7R::skin
