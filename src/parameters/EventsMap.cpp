// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/EventsMap.h"

namespace K7R
{

bool EventsMap::addEvent (const juce::String& name, int uid)
{
    if (uids.count (name) != 0 || names.count (uid) != 0)
        return false;

    uids.emplace (name, uid);
    names.emplace (uid, name);
    return true;
}

void EventsMap::loadFromXml (const juce::XmlElement& xml)
{
    uids.clear();
    names.clear();

    if (! xml.getTagName().equalsIgnoreCase ("EventsMap"))
        return;

    for (const auto* event : xml.getChildWithTagNameIterator ("event"))
        addEvent (event->getStringAttribute ("name"), event->getIntAttribute ("uid"));
}

int EventsMap::getUid (const juce::String& name) const
{
    return findUid (name).value_or (0);
}

std::optional<int> EventsMap::findUid (const juce::String& name) const
{
    const auto found = uids.find (name);
    return found != uids.end() ? std::optional<int> (found->second) : std::nullopt;
}

juce::String EventsMap::getName (int uid) const
{
    const auto found = names.find (uid);
    return found != names.end() ? found->second : juce::String();
}

juce::String EventsMap::getDisplayName (int uid) const
{
    const auto name = getName (uid);
    return name.substring (0, 1).toUpperCase() + name.substring (1).toLowerCase();
}

} // namespace K7R
