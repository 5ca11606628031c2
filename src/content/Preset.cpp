// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/Preset.h"

#include "parameters/ParameterManager.h"
#include "support/BoundedXml.h"
#include "support/SafeFile.h"

namespace K7R
{

namespace
{

constexpr const char* presetTag = "Preset";
constexpr const char* parametersTag = "Parameters";
constexpr const char* parameterTag = "param";
constexpr const char* nameAttribute = "name";
constexpr const char* valueAttribute = "value";
constexpr const char* ratingAttribute = "rating";
constexpr const char* tagsAttribute = "tags";

constexpr int lowestRating = 1;
constexpr int highestRating = 5;

/** The attributes that are plain texts, in writing order. */
constexpr std::pair<const char*, juce::String Preset::*> textAttributes[] {
    { "application", &Preset::application },
    { "category", &Preset::category },
    { "version", &Preset::version },
    { "author", &Preset::author },
    { "id", &Preset::id },
};

bool isPreset (const juce::XmlElement* xml)
{
    return xml != nullptr && xml->getTagName().equalsIgnoreCase (presetTag);
}

/** Copies what an older document has and a newer one hasn't. */
void keepTheRest (const juce::XmlElement& before, juce::XmlElement& now)
{
    for (int i = 0; i < before.getNumAttributes(); ++i)
    {
        const auto& attribute = before.getAttributeName (i);

        if (attribute != nameAttribute && attribute != tagsAttribute && ! now.hasAttribute (attribute))
            now.setAttribute (attribute, before.getAttributeValue (i));
    }

    std::vector<const juce::XmlElement*> others;

    for (const auto* child : before.getChildIterator())
        if (! child->hasTagName (parametersTag) && ! child->hasTagName (parameterTag))
            others.push_back (child);

    // In front, from the last one on: to add one at the end walks over all.
    auto* values = now.getFirstChildElement();
    now.removeChildElement (values, false);

    for (auto other = others.rbegin(); other != others.rend(); ++other)
        now.prependChildElement (new juce::XmlElement (**other));

    now.prependChildElement (values);
}

} // namespace

void Preset::clearParameters()
{
    entries.clear();
    ids.clear();
}

void Preset::addEntry (int parameterId, const juce::String& value)
{
    entries.push_back ({ parameterId, value });
    ids.addRange ({ parameterId, parameterId + 1 });
}

void Preset::addParameter (const Parameter& parameter)
{
    addEntry (parameter.getId(), parameter.getString());
}

//==============================================================================
bool Preset::readXml (const juce::XmlElement* xml, const ParameterManager& parameters, Extent extent)
{
    clearParameters();

    if (! isPreset (xml))
        return false;

    name = xml->getStringAttribute (nameAttribute);

    for (const auto& [attribute, member] : textAttributes)
        this->*member = xml->getStringAttribute (attribute);

    tags = TagSet::fromText (xml->getStringAttribute (tagsAttribute));

    if (const auto stars = xml->getIntAttribute (ratingAttribute); stars >= lowestRating && stars <= highestRating)
        rating = stars;

    if (extent == Extent::header)
        return true;

    const auto read = [&] (const juce::XmlElement& row)
    {
        if (const auto* parameter = parameters.getParameterByName (row.getStringAttribute (nameAttribute)))
            addEntry (parameter->getId(), row.getStringAttribute (valueAttribute));
    };

    if (const auto* list = xml->getChildByName (parametersTag))
    {
        for (const auto* row : list->getChildIterator())
            read (*row);
    }
    else
    {
        // An older layout, which is never written.
        for (const auto* row : xml->getChildWithTagNameIterator (parameterTag))
            read (*row);
    }

    return true;
}

std::unique_ptr<juce::XmlElement> Preset::createXml (const ParameterManager& parameters, bool includeName) const
{
    auto xml = std::make_unique<juce::XmlElement> (presetTag);

    if (includeName && name.isNotEmpty())
        xml->setAttribute (nameAttribute, name);

    for (const auto& [attribute, member] : textAttributes)
        if ((this->*member).isNotEmpty())
            xml->setAttribute (attribute, this->*member);

    if (rating.has_value())
        xml->setAttribute (ratingAttribute, *rating);

    if (! tags.isEmpty())
        xml->setAttribute (tagsAttribute, tags.toText());

    auto* list = xml->createNewChildElement (parametersTag);

    for (const auto& entry : entries)
    {
        if (const auto* parameter = parameters.getParameter (entry.id))
        {
            auto* row = list->createNewChildElement (parameterTag);
            row->setAttribute (nameAttribute, parameter->getName());
            row->setAttribute (valueAttribute, entry.value);
        }
    }

    return xml;
}

//==============================================================================
bool Preset::loadFromFile (const juce::File& file, const ParameterManager& parameters, Extent extent)
{
    const auto text = readBoundedText (file);
    const auto xml = extent == Extent::header ? parseBoundedXmlHead (text) : parseBoundedXml (text);
    const auto isRead = readXml (xml.get(), parameters, extent);

    name = file.getFileNameWithoutExtension();
    return isRead;
}

bool Preset::saveToFile (const juce::File& file, const ParameterManager& parameters,
                         const juce::XmlElement* before) const
{
    const auto xml = createXml (parameters, false);

    if (isPreset (before))
        keepTheRest (*before, *xml);

    return replaceFileSafely (file, *xml);
}

bool Preset::writeTagsToFile (const juce::File& file, const TagSet& newTags)
{
    const auto xml = parseBoundedXml (file);

    if (! isPreset (xml.get()))
        return false;

    xml->setAttribute (tagsAttribute, newTags.toText());
    return replaceFileSafely (file, *xml);
}

} // namespace K7R
