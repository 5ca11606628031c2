// SPDX-License-Identifier: GPL-3.0-or-later

// The host's view of the parameters, and the documents that change it.

#include "core/BasePlugin.h"

#include <algorithm>

#include "core/PluginAudioProcessor.h"
#include "support/BoundedXml.h"

namespace K7R
{

namespace
{

// The document of a map. Its indexes begin with 1.
constexpr const char* hostMapTag = "HostParametersMap";
constexpr const char* assignTag = "assign";
constexpr const char* nameAttribute = "name";
constexpr const char* indexAttribute = "hostParam";
constexpr const char* parameterAttribute = "pluginParam";

/** Puts a parameter at an index as setHostParameter() does: it leaves its old one, and one that may not be automated
    gets none. */
void place (HostParameterMap::Table& table, int hostIndex, Parameter* parameter)
{
    if (parameter != nullptr)
        std::replace (table.begin(), table.end(), parameter, static_cast<Parameter*> (nullptr));

    if (juce::isPositiveAndBelow (hostIndex, static_cast<int> (table.size()))
        && (parameter == nullptr || parameter->isAutomatable()))
        table[static_cast<size_t> (hostIndex)] = parameter;
}

} // namespace

Parameter* BasePlugin::getMappedParameter (int hostIndex) const noexcept
{
    return juce::isPositiveAndBelow (hostIndex, getNumHostParameters()) ? hostMap.get (hostIndex) : nullptr;
}

juce::String BasePlugin::getHostParameterName (int hostIndex) const
{
    if (! juce::isPositiveAndBelow (hostIndex, getNumHostParameters()))
        return {};

    const auto* parameter = hostMap.get (hostIndex);
    return parameter != nullptr ? parameter->getName() : "Parameter " + juce::String (hostIndex + 1);
}

juce::String BasePlugin::getHostParameterText (int hostIndex) const
{
    if (! juce::isPositiveAndBelow (hostIndex, getNumHostParameters()))
        return {};

    const auto* parameter = hostMap.get (hostIndex);
    return parameter != nullptr ? parameter->getDisplayText() : juce::String (hostMap.getHostValue (hostIndex), 8);
}

float BasePlugin::getHostParameterValue (int hostIndex) const
{
    if (! juce::isPositiveAndBelow (hostIndex, getNumHostParameters()))
        return 0.0f;

    const auto* parameter = hostMap.get (hostIndex);
    return parameter != nullptr ? parameter->getNormalised() : hostMap.getHostValue (hostIndex);
}

float BasePlugin::getHostParameterDefault (int hostIndex) const
{
    const auto* parameter = getMappedParameter (hostIndex);
    return parameter != nullptr ? parameters->getDefaultNormalised (parameter->getId()) : 0.0f;
}

bool BasePlugin::isHostParameterMeta (int hostIndex) const
{
    const auto* parameter = getMappedParameter (hostIndex);
    return parameter != nullptr && parameter->isMeta();
}

void BasePlugin::setHostParameterValue (int hostIndex, float value)
{
    if (! juce::isPositiveAndBelow (hostIndex, getNumHostParameters()))
        return;

    hostMap.setHostValue (hostIndex, value);

    if (auto* parameter = hostMap.get (hostIndex))
    {
        const HostParameterMap::ScopedHostSet scope (hostMap, hostIndex);
        parameter->setNormalised (value, true);
    }
}

//==============================================================================
void BasePlugin::setHostParameter (int hostIndex, Parameter* parameter, bool notify)
{
    if (parameter == nullptr)
        return clearHostParameter (hostIndex);

    clearHostParameter (getHostIndex (*parameter));

    if (! parameter->isAutomatable())
        return;

    if (hostIndex < getNumHostParameters())
        hostMap.assign (hostIndex, *parameter);

    if (notify)
        tellOfHostMap();
}

void BasePlugin::tellOfHostMap()
{
    if (processor != nullptr)
        processor->updateHostDisplay();

    hostMapBroadcaster.sendChangeMessage();
}

void BasePlugin::clearHostParameter (int hostIndex)
{
    if (hostIndex < getNumHostParameters() && hostMap.clear (hostIndex))
        hostMapBroadcaster.sendChangeMessage();
}

//==============================================================================
bool BasePlugin::loadHostMapXml (const juce::XmlElement& xml)
{
    if (! xml.getTagName().equalsIgnoreCase (hostMapTag)
        || ! xml.getStringAttribute (nameAttribute).equalsIgnoreCase (getProductName()))
        return false;

    HostParameterMap::Table table {};
    const auto numIndexes = getNumHostParameters();

    for (const auto* assign : xml.getChildWithTagNameIterator (assignTag))
    {
        const auto index = juce::jmax (0, assign->getIntAttribute (indexAttribute)) - 1;
        place (table, index < numIndexes ? index : HostParameterMap::unmapped,
               parameters->getParameterByName (assign->getStringAttribute (parameterAttribute)));
    }

    hostMap.replaceAll (table);
    tellOfHostMap();
    return true;
}

bool BasePlugin::loadHostMap (const juce::File& file)
{
    const auto xml = parseBoundedXml (file);
    return xml != nullptr && loadHostMapXml (*xml);
}

std::unique_ptr<juce::XmlElement> BasePlugin::createHostMapXml() const
{
    auto xml = std::make_unique<juce::XmlElement> (hostMapTag);
    xml->setAttribute (nameAttribute, getProductName());

    for (int index = 0; index < getNumHostParameters(); ++index)
    {
        if (const auto* parameter = hostMap.get (index))
        {
            auto* assign = xml->createNewChildElement (assignTag);
            assign->setAttribute (indexAttribute, index + 1);
            assign->setAttribute (parameterAttribute, parameter->getName());
        }
    }

    return xml;
}

void BasePlugin::assignHostParameters()
{
    HostParameterMap::Table table {};

    if (usesHostParameterMap() && hasPresets())
    {
        int numAssigned = 0;

        for (const auto& parameter : parameters->getParameters())
            if (juce::isPositiveAndBelow (parameter->getId(), getNumPresetParameters()) && parameter->isAutomatable())
                place (table, numAssigned++, parameter.get());

        numHostParameters = numAssigned;

        // A product may show the host fewer.
        std::fill (table.begin() + juce::jlimit (0, HostParameterMap::capacity, getNumHostParameters()), table.end(),
                   nullptr);
    }

    hostMap.replaceAll (table);
}

bool BasePlugin::loadEmbeddedHostMap()
{
    const auto xml = parseBoundedXml (loadEmbeddedText ("default" + getHostMapExtension()));
    return xml != nullptr && loadHostMapXml (*xml);
}

void BasePlugin::resetHostMap()
{
    if (loadEmbeddedHostMap())
        return;

    assignHostParameters();
    tellOfHostMap();
}

} // namespace K7R
