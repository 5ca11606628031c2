// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/MidiControlMap.h"

#include <algorithm>

#include "parameters/ParameterManager.h"
#include "support/BoundedXml.h"

namespace K7R
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

    auto learn = learning.load();

    // Where an editor comes in between, what it left counts.
    if (auto wanted = learn; learn.isOpen != 0 && learn.controller != controller)
    {
        wanted.controller = static_cast<juce::int16> (controller);

        if (learning.compare_exchange_strong (learn, wanted))
            learn = wanted;
    }

    if (auto* target = getParameter (learn, controller))
    {
        target->setNormalised (static_cast<float> (bytes[2]) * valueScale, true);
        listeners.call ([this, target] (Listener& l) { l.controllerMoved (*this, *target); });
    }
}

Parameter* MidiControlMap::getParameter (const Learn& learn) const noexcept
{
    const auto& all = parameters.getParameters();
    return juce::isPositiveAndBelow (learn.parameter, all.size())
               ? all[static_cast<std::size_t> (learn.parameter)].get()
               : nullptr;
}

Parameter* MidiControlMap::getParameter (const Learn& learn, int controller) const noexcept
{
    auto* entry = map[static_cast<std::size_t> (controller)].load();

    if (learn.controller == noController)
        return entry;

    auto* learned = getParameter (learn);

    if (learn.controller == controller)
        return learned;

    return entry != learned ? entry : nullptr;
}

Parameter* MidiControlMap::getParameter (int controller) const noexcept
{
    return isController (controller) ? getParameter (learning.load(), controller) : nullptr;
}

int MidiControlMap::getController (const Parameter& parameter) const noexcept
{
    const auto learn = learning.load();

    for (int i = 0; i < numControllers; ++i)
        if (getParameter (learn, i) == &parameter)
            return i;

    return noController;
}

Parameter* MidiControlMap::getLearnParameter() const noexcept
{
    const auto learn = learning.load();
    return learn.isOpen != 0 ? getParameter (learn) : nullptr;
}

//==============================================================================
MidiControlMap::Learn MidiControlMap::closeLearn() noexcept
{
    auto learn = learning.load();
    auto closed = learn;

    do
    {
        closed = learn;
        closed.isOpen = 0;
    } while (! learning.compare_exchange_weak (learn, closed));

    return closed;
}

void MidiControlMap::keepLearned() noexcept
{
    // The learned controller stays in force until the entries have it.
    const auto learn = closeLearn();

    if (auto* parameter = getParameter (learn); parameter != nullptr && learn.controller != noController)
    {
        for (int i = 0; i < numControllers; ++i)
            if (auto& entry = map[static_cast<std::size_t> (i)]; i == learn.controller)
                entry = parameter;
            else if (entry == parameter)
                entry = nullptr;
    }

    learning = Learn();
}

void MidiControlMap::replaceEntries (const Entries& entries) noexcept
{
    closeLearn();
    std::copy (entries.begin(), entries.end(), map.begin());
    learning = Learn();
}

//==============================================================================
void MidiControlMap::assign (Parameter& parameter, int controller)
{
    const juce::ScopedLock scope (editLock);
    keepLearned();
    const auto old = getController (parameter);

    if (old == controller)
        return;

    if (old != noController)
        map[static_cast<std::size_t> (old)] = nullptr;

    if (isController (controller))
        map[static_cast<std::size_t> (controller)] = &parameter;
}

void MidiControlMap::startLearn (Parameter& parameter)
{
    const auto& all = parameters.getParameters();
    const auto found = std::find_if (all.begin(), all.end(), [&] (const auto& p) { return p.get() == &parameter; });

    if (found == all.end())
        return;

    const juce::ScopedLock scope (editLock);

    if (getLearnParameter() == nullptr)
        beforeLearn = takeSnapshot();

    keepLearned();
    learning = Learn { static_cast<juce::int32> (found - all.begin()), noController, 1 };
}

void MidiControlMap::stopLearn()
{
    const juce::ScopedLock scope (editLock);
    keepLearned();
}

void MidiControlMap::cancelLearn()
{
    const juce::ScopedLock scope (editLock);

    if (getLearnParameter() != nullptr)
        restore (beforeLearn);
}

MidiControlMap::Snapshot MidiControlMap::takeSnapshot() const
{
    const juce::ScopedLock scope (editLock);
    const auto learn = learning.load();
    Snapshot snapshot;
    snapshot.numDocuments = numDocuments;

    for (int i = 0; i < numControllers; ++i)
        snapshot.entries[static_cast<std::size_t> (i)] = getParameter (learn, i);

    return snapshot;
}

void MidiControlMap::restore (const Snapshot& snapshot)
{
    const juce::ScopedLock scope (editLock);

    if (isCurrent (snapshot))
        replaceEntries (snapshot.entries);
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

    Entries entries {};

    for (const auto* row : xml->getChildWithTagNameIterator (assignTag))
    {
        auto* parameter = parameters.getParameterByName (row->getStringAttribute (parameterAttribute));
        const auto controller = row->getIntAttribute (controllerAttribute);

        if (parameter != nullptr && parameter->isAutomatable() && isController (controller))
        {
            std::replace (entries.begin(), entries.end(), parameter, static_cast<Parameter*> (nullptr));
            entries[static_cast<std::size_t> (controller)] = parameter;
        }
    }

    const juce::ScopedLock scope (editLock);
    ++numDocuments;
    replaceEntries (entries);
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

    const auto entries = takeSnapshot().entries;

    for (int i = 0; i < numControllers; ++i)
    {
        if (const auto* parameter = entries[static_cast<std::size_t> (i)])
        {
            auto* row = xml->createNewChildElement (assignTag);
            row->setAttribute (controllerAttribute, i);
            row->setAttribute (parameterAttribute, parameter->getName());
        }
    }

    return xml;
}

} // namespace K7R
