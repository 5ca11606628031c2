// SPDX-License-Identifier: GPL-3.0-or-later

#include "SkinSource.h"

#include "Failure.h"
#include "Options.h"
#include "support/BoundedXml.h"

namespace K7R::skin
{

namespace
{

std::unique_ptr<juce::XmlElement> readDocument (const juce::File& file)
{
    if (! file.existsAsFile())
        throw Failure ("there is no file " + file.getFullPathName());

    auto xml = parseBoundedXml (file);

    if (xml == nullptr)
        throw Failure (file.getFullPathName() + " is not an XML document");

    return xml;
}

juce::File findFont (const juce::File& folder, const juce::String& name)
{
    const auto found = folder.findChildFiles (juce::File::findFiles, true, name);

    if (found.isEmpty())
        throw Failure ("there is no font " + name + " in " + folder.getFullPathName());

    return found[0];
}

juce::String keyOf (const juce::String& tag, const juce::String& name)
{
    return tag + ":" + name;
}

double numberOf (const juce::XmlElement& element, const char* name)
{
    const auto text = requireAttribute (element, name);
    const auto number = parseNumber (text);

    if (! number)
        throw Failure ("\"" + text + "\" of " + element.getTagName() + " is not a number");

    return *number;
}

juce::String replaceIn (const juce::String& text, const Substitutes& substitutes)
{
    if (! text.containsChar ('{'))
        return text;

    const auto before = text.upToFirstOccurrenceOf ("{", false, false);
    const auto inside = text.fromFirstOccurrenceOf ("{", false, false).upToFirstOccurrenceOf ("}", false, false);
    const auto behind = text.fromFirstOccurrenceOf ("}", false, false);
    const auto name = inside.upToFirstOccurrenceOf ("|", false, false);
    const auto found = substitutes.find (name);

    if (found == substitutes.end() && ! inside.containsChar ('|'))
        throw Failure ("nothing stands in for {" + name + "} in \"" + text + "\"");

    return before + (found != substitutes.end() ? found->second : inside.fromFirstOccurrenceOf ("|", false, false))
           + replaceIn (behind, substitutes);
}

} // namespace

//==============================================================================
SkinSource::SkinSource (const juce::File& f, const juce::File& fonts) : folder (f), fontFolder (fonts)
{
    include (folder.getChildFile ("panel.xml"));

    if (panel == nullptr)
        throw Failure (folder.getFullPathName() + " describes no Panel");
}

void SkinSource::include (const juce::File& file)
{
    if (! included.insert (file.getFullPathName()).second)
        throw Failure (file.getFullPathName() + " is included twice");

    const auto document = readDocument (file);

    for (const auto* child : document->getChildIterator())
        take (std::make_unique<juce::XmlElement> (*child));
}

void SkinSource::take (std::unique_ptr<juce::XmlElement> element)
{
    const auto tag = element->getTagName();

    if (tag == "Panel")
    {
        panel = std::move (element);
    }
    else if (tag == "Include")
    {
        include (folder.getChildFile (requireAttribute (*element, "file")));
    }
    else if (tag == "Size")
    {
        const auto name = requireAttribute (*element, "name");
        sizes[name] = { name, numberOf (*element, "scale"), juce::roundToInt (numberOf (*element, "leastCap")) };
    }
    else if (tag == "Colour")
    {
        palette[requireAttribute (*element, "name")] = juce::Colour::fromString (requireAttribute (*element, "argb"));
    }
    else if (tag == "Font")
    {
        auto lettering = std::make_unique<Lettering> (findFont (fontFolder, requireAttribute (*element, "file")));

        for (const auto* pair : element->getChildWithTagNameIterator ("Kern"))
            lettering->setKerning (requireAttribute (*pair, "pair"), static_cast<float> (numberOf (*pair, "by")));

        letterings[requireAttribute (*element, "name")] = std::move (lettering);
    }
    else
    {
        const auto key = keyOf (tag, requireAttribute (*element, "name"));
        pieces[key] = std::move (element);
    }
}

SkinSize SkinSource::getSize (const juce::String& name) const
{
    const auto found = sizes.find (name);

    if (found == sizes.end())
        throw Failure ("the skin has no size \"" + name + "\"");

    return found->second;
}

const juce::XmlElement& SkinSource::find (const juce::String& tag, const juce::String& name) const
{
    const auto found = pieces.find (keyOf (tag, name));

    if (found == pieces.end())
        throw Failure ("the skin has no " + tag + " \"" + name + "\"");

    return *found->second;
}

const Lettering& SkinSource::getLettering (const juce::String& name) const
{
    const auto found = letterings.find (name);

    if (found == letterings.end())
        throw Failure ("the skin has no Font \"" + name + "\"");

    return *found->second;
}

const juce::Drawable& SkinSource::getDrawing (const juce::String& fileName) const
{
    auto& drawing = drawings[fileName];

    if (drawing == nullptr)
        drawing = juce::Drawable::createFromSVG (*readDocument (folder.getChildFile (fileName)));

    if (drawing == nullptr)
        throw Failure (fileName + " is not a vector picture");

    return *drawing;
}

juce::Colour SkinSource::getColour (const juce::String& text) const
{
    const auto name = text.upToFirstOccurrenceOf ("@", false, false).trim();
    const auto found = palette.find (name);

    if (found == palette.end())
        throw Failure ("the palette has no colour \"" + name + "\"");

    if (! text.containsChar ('@'))
        return found->second;

    return found->second.withMultipliedAlpha (text.fromFirstOccurrenceOf ("@", false, false).getFloatValue());
}

Fill SkinSource::getFill (const juce::String& text) const
{
    const auto top = getColour (text.upToFirstOccurrenceOf (" to ", false, false));
    return { top, text.contains (" to ") ? getColour (text.fromFirstOccurrenceOf (" to ", false, false)) : top };
}

//==============================================================================
std::unique_ptr<juce::XmlElement> substitute (const juce::XmlElement& element, const Substitutes& substitutes)
{
    auto copy = std::make_unique<juce::XmlElement> (element.getTagName());

    for (int i = 0; i < element.getNumAttributes(); ++i)
        copy->setAttribute (element.getAttributeName (i), replaceIn (element.getAttributeValue (i), substitutes));

    for (const auto* child : element.getChildIterator())
        copy->addChildElement (substitute (*child, substitutes).release());

    return copy;
}

Substitutes getSubstitutes (const juce::XmlElement& element)
{
    Substitutes substitutes;

    for (int i = 0; i < element.getNumAttributes(); ++i)
        substitutes[element.getAttributeName (i)] = element.getAttributeValue (i);

    return substitutes;
}

juce::String requireAttribute (const juce::XmlElement& element, const char* name)
{
    if (! element.hasAttribute (name))
        throw Failure ("a " + element.getTagName() + " " + element.getStringAttribute ("name") + " has no attribute \""
                       + name + "\"");

    return element.getStringAttribute (name);
}

} // namespace K7R::skin
