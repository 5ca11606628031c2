// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/ParameterManager.h"

#include "parameters/BoolParameter.h"
#include "parameters/FloatParameter.h"
#include "parameters/IntParameter.h"
#include "parameters/StringParameter.h"

namespace K7R
{

namespace
{

constexpr int noIndex = -1;

template <typename Map, typename Key>
Parameter* find (const Map& map, const Key& key)
{
    const auto found = map.find (key);
    return found != map.end() ? found->second : nullptr;
}

std::unique_ptr<Parameter> createSwitch (const juce::String& type, int id, const juce::String& name)
{
    if (type == "bool")
        return std::make_unique<BoolParameter> (id, name);

    if (type == "state")
        return std::make_unique<StateParameter> (id, name);

    if (type == "logic")
        return std::make_unique<LogicParameter> (id, name);

    if (type == "answer")
        return std::make_unique<AnswerParameter> (id, name);

    return nullptr;
}

std::unique_ptr<Parameter> createEnum (int id, const juce::String& name, const juce::String& names,
                                       const juce::String& value)
{
    auto parameter = std::make_unique<EnumParameter> (id, name);
    parameter->setEnumNames (names);
    parameter->setString (value, false); // nobody listens yet, and a post could come before all is built
    return parameter;
}

} // namespace

ParameterManager::ParameterManager() : relay ([this] { deliverDeferredUpdates(); }) {}

ParameterManager::~ParameterManager() = default;

//==============================================================================
void ParameterManager::loadFromXml (const juce::XmlElement* table)
{
    {
        const juce::ScopedWriteLock scope (lock);
        byId.clear();
        byName.clear();
        parameters.clear();
        application.clear();
    }

    if (table == nullptr)
        return;

    application = table->getStringAttribute ("application");

    if (! table->getTagName().equalsIgnoreCase ("PluginParameters"))
        return;

    for (const auto* row : table->getChildIterator())
        if (row->getTagName().equalsIgnoreCase ("param"))
            if (auto parameter = createParameter (*row))
                addParameter (std::move (parameter));
}

std::unique_ptr<Parameter> ParameterManager::createParameter (const juce::XmlElement& row)
{
    const auto id = row.getIntAttribute ("index", noIndex);
    const auto& name = row.getStringAttribute ("name");

    if (id == noIndex || name.isEmpty())
        return nullptr;

    const auto type = row.getStringAttribute ("type", "float");
    const auto& value = row.getStringAttribute ("value");
    std::unique_ptr<Parameter> parameter;

    if (type == "float")
    {
        parameter =
            createFloatParameter (id, name, static_cast<float> (row.getDoubleAttribute ("min", 0.0)),
                                  static_cast<float> (row.getDoubleAttribute ("max", 1.0)), value.getFloatValue());
    }
    else if (type == "int")
    {
        parameter = std::make_unique<IntParameter> (id, name, row.getIntAttribute ("min", 0),
                                                    row.getIntAttribute ("max", 1), value.getIntValue());
    }
    else if (type == "string")
    {
        parameter = std::make_unique<StringParameter> (id, name, value);
    }
    else if (type == "enum")
    {
        parameter = createEnum (id, name, row.getStringAttribute ("enum"), value);
    }
    else if (type == "note")
    {
        parameter = std::make_unique<NoteParameter> (id, name, NoteParameter::parseNoteName (value));
    }
    else
    {
        parameter = createSwitch (type, id, name);

        if (parameter == nullptr)
            return nullptr;

        parameter->setString (value, false); // nobody listens yet, and a post could come before all is built
    }

    parameter->setAutomatable (row.getBoolAttribute ("auto", false));
    parameter->setMeta (row.getBoolAttribute ("meta", false));
    parameter->setUnit (row.getStringAttribute ("unit"));
    parameter->setFormat (valueFormatFromKeyword (row.getStringAttribute ("format")));
    parameter->setTextFormatter (createTextFormatter (id));

    return parameter;
}

std::unique_ptr<Parameter> ParameterManager::createFloatParameter (int id, const juce::String& name, float minimum,
                                                                   float maximum, float defaultValue)
{
    return std::make_unique<FloatParameter> (id, name, minimum, maximum, defaultValue);
}

const ParameterTextFormatter* ParameterManager::createTextFormatter (int)
{
    return nullptr;
}

bool ParameterManager::addParameter (std::unique_ptr<Parameter> parameter)
{
    const juce::ScopedWriteLock scope (lock);

    if (byId.count (parameter->getId()) != 0 || byName.count (parameter->getName()) != 0)
        return false;

    parameter->setUpdateRelay (&relay);
    byId.emplace (parameter->getId(), parameter.get());
    byName.emplace (parameter->getName(), parameter.get());
    parameters.push_back (std::move (parameter));
    return true;
}

//==============================================================================
Parameter* ParameterManager::getParameter (int id) const
{
    const juce::ScopedReadLock scope (lock);
    return find (byId, id);
}

Parameter* ParameterManager::getParameterByName (const juce::String& name) const
{
    const juce::ScopedReadLock scope (lock);
    return find (byName, name);
}

juce::String ParameterManager::getName (int id) const
{
    const auto* parameter = getParameter (id);
    return parameter != nullptr ? parameter->getName() : juce::String();
}

juce::String ParameterManager::getValueString (int id) const
{
    const auto* parameter = getParameter (id);
    return parameter != nullptr ? parameter->getString() : juce::String();
}

void ParameterManager::setValueString (int id, const juce::String& text)
{
    if (auto* parameter = getParameter (id))
        parameter->setString (text, true);
}

void ParameterManager::copyValue (int targetId, int sourceId)
{
    auto* target = getParameter (targetId);
    const auto* source = getParameter (sourceId);

    if (target != nullptr && source != nullptr)
        target->copyFrom (*source, true);
}

//==============================================================================
void ParameterManager::addListener (int id, Parameter::Listener* listener)
{
    if (auto* parameter = getParameter (id))
        parameter->addListener (listener);
}

void ParameterManager::removeFromAll (Parameter::Listener* listener)
{
    const juce::ScopedReadLock scope (lock);

    for (const auto& parameter : parameters)
        parameter->removeAsyncListener (listener);
}

void ParameterManager::notifyAll()
{
    // Without the lock, like any call of listeners: none is added any more.
    for (const auto& parameter : parameters)
        parameter->notifyListeners();
}

void ParameterManager::deliverDeferredUpdates()
{
    for (const auto& parameter : parameters)
        parameter->deliverDeferredUpdate();
}

void ParameterManager::captureDefaults()
{
    for (const auto& parameter : parameters)
        defaults[parameter->getId()] = parameter->clone (parameter->getId(), parameter->getName());
}

const Parameter* ParameterManager::getDefault (int id) const
{
    const auto found = defaults.find (id);
    return found != defaults.end() ? found->second.get() : nullptr;
}

float ParameterManager::getDefaultNormalised (int id) const
{
    const auto* original = getDefault (id);
    return original != nullptr ? original->getNormalised() : 0.0f;
}

} // namespace K7R
