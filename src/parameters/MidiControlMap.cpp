// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/MidiControlMap.h"

#include "parameters/BoundedXml.h"
#include "parameters/ParameterManager.h"

namespace quilvane
{

namespace
{

constexpr const char* mapTag = "MidiControlMap";
constexpr const char* olderMapTag = "MidiCCMap";
constexpr const char* assignTag = "assign";
constexpr const char* controllerAttribute = "CC";
constexpr const char* parameterAttribute = "param";
constexpr const char* nameAttribute = "name";
constexpr const char* applicationAttribute = "application";

constexpr float valueScale = 0.00787401572f; // 1 / 127

bool isController (int number)
{
    return juce::isPositiveAndBelow (number, MidiControlMap::numControllers);
}

} // namespace

MidiControlMap::MidiControlMap (const ParameterManager& manager) : parameters (manager) {}

//==============================================================================
void MidiControlMap::handleController (const juce::MidiMessage& message)
{
    activity = true;

    const auto* bytes = message.getRawData();
    const auto controller = static_cast<int> (bytes[1]);

    if (! isController (controller))
        return;

    const auto count = learnCount.load();
    auto* wanted = learnParameter.load();

    if (wanted != seenLearnParameter || count != seenLearnCount)
    {
        seenLearnParameter = wanted;
        seenLearnCount = count;
        learnController = wanted != nullptr ? getController (*wanted) : noController;
        displaced = nullptr;
    }

    if (wanted != nullptr && learnController != controller)
        learn (*wanted, controller);

    if (auto* target = entryAt (controller).load())
    {
        target->setNormalised (static_cast<float> (bytes[2]) * valueScale, true);
        listeners.call ([this, target] (Listener& l) { l.controllerMoved (*this, *target); });
    }
}

void MidiControlMap::learn (Parameter& parameter, int controller)
{
    // What the last attempt displaced returns.
    if (learnController != noController)
        entryAt (learnController) = displaced;

    displaced = entryAt (controller).exchange (&parameter);
    learnController = controller;
}

//==============================================================================
void MidiControlMap::assign (Parameter& parameter, int controller)
{
    const auto old = getController (parameter);

    if (old == controller)
        return;

    if (old != noController)
        entryAt (old) = nullptr;

    if (isController (controller))
        entryAt (controller) = &parameter;
}

void MidiControlMap::startLearn (Parameter& parameter)
{
    if (learnParameter == nullptr)
    {
        std::copy (map.begin(), map.end(), mapBeforeLearn.begin());
        ++learnCount;
    }

    learnParameter = &parameter;
}

void MidiControlMap::stopLearn() noexcept
{
    learnParameter = nullptr;
}

void MidiControlMap::cancelLearn() noexcept
{
    if (learnParameter.exchange (nullptr) == nullptr)
        return;

    for (std::size_t i = 0; i < map.size(); ++i)
        map[i] = mapBeforeLearn[i];
}

int MidiControlMap::getController (const Parameter& parameter) const noexcept
{
    for (int i = 0; i < numControllers; ++i)
        if (map[static_cast<std::size_t> (i)].load (std::memory_order_relaxed) == &parameter)
            return i;

    return noController;
}

Parameter* MidiControlMap::getParameter (int controller) const noexcept
{
    return isController (controller) ? map[static_cast<std::size_t> (controller)].load() : nullptr;
}

void MidiControlMap::clear() noexcept
{
    for (auto& entry : map)
        entry = nullptr;
}

MidiControlMap::Snapshot MidiControlMap::takeSnapshot() const noexcept
{
    Snapshot snapshot;
    snapshot.numDocuments = numDocuments;

    for (std::size_t i = 0; i < map.size(); ++i)
        snapshot.entries[i] = map[i];

    return snapshot;
}

void MidiControlMap::restore (const Snapshot& snapshot) noexcept
{
    if (! isCurrent (snapshot))
        return;

    stopLearn();

    for (std::size_t i = 0; i < map.size(); ++i)
        map[i] = snapshot.entries[i];
}

//==============================================================================
bool MidiControlMap::loadFromXml (const juce::XmlElement* xml)
{
    if (xml == nullptr
        || ! (xml->getTagName().equalsIgnoreCase (mapTag) || xml->getTagName().equalsIgnoreCase (olderMapTag)))
        return false;

    if (name.isNotEmpty() && ! xml->getStringAttribute (nameAttribute).equalsIgnoreCase (name)
        && ! xml->getStringAttribute (applicationAttribute).equalsIgnoreCase (name))
        return false;

    ++numDocuments;
    stopLearn();
    clear();

    for (const auto* row : xml->getChildWithTagNameIterator (assignTag))
    {
        auto* parameter = parameters.getParameterByName (row->getStringAttribute (parameterAttribute));
        const auto controller = row->getIntAttribute (controllerAttribute);

        if (parameter != nullptr && parameter->isAutomatable() && isController (controller))
            assign (*parameter, controller);
    }

    return true;
}

bool MidiControlMap::loadFromFile (const juce::File& file)
{
    return loadFromXml (parseBoundedXml (file).get());
}

std::unique_ptr<juce::XmlElement> MidiControlMap::createXml() const
{
    auto xml = std::make_unique<juce::XmlElement> (mapTag);
    xml->setAttribute (nameAttribute, name);

    for (int i = 0; i < numControllers; ++i)
    {
        if (const auto* parameter = getParameter (i))
        {
            auto* row = xml->createNewChildElement (assignTag);
            row->setAttribute (controllerAttribute, i);
            row->setAttribute (parameterAttribute, parameter->getName());
        }
    }

    return xml;
}

} // namespace quilvane
