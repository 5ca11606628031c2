// SPDX-License-Identifier: GPL-3.0-or-later

#include "content/Preset.h"

#include "parameters/ParameterManager.h"

namespace quilvane
{

namespace
{

constexpr const char* presetTag = "Preset";
constexpr const char* parametersTag = "Parameters";
constexpr const char* parameterTag = "param";
constexpr const char* nameAttribute = "name";
constexpr const char* valueAttribute = "value";

} // namespace

void Preset::clear()
{
    entries.clear();
    ids.clear();
}

void Preset::addEntry (int id, const juce::String& value)
{
    entries.push_back ({ id, value });
    ids.addRange ({ id, id + 1 });
}

void Preset::add (const Parameter& parameter)
{
    addEntry (parameter.getId(), parameter.getString());
}

void Preset::readXml (const juce::XmlElement* xml, const ParameterManager& parameters)
{
    clear();

    if (xml == nullptr || ! xml->getTagName().equalsIgnoreCase (presetTag))
        return;

    name = xml->getStringAttribute (nameAttribute);

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
}

std::unique_ptr<juce::XmlElement> Preset::createXml (const ParameterManager& parameters) const
{
    auto xml = std::make_unique<juce::XmlElement> (presetTag);

    if (name.isNotEmpty())
        xml->setAttribute (nameAttribute, name);

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

} // namespace quilvane
