// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>
#include <optional>

#include <juce_core/juce_core.h>

namespace K7R
{

/** Named commands and their numbers ("Options" is 1000), which skins and maps refer to.

    Filled while the plug-in is built and only read afterwards. Owned by the BasePlugin.
*/
class EventsMap
{
public:
    /** Adds an event; false, and nothing changes, if the name or the number is taken. */
    bool addEvent (const juce::String& name, int uid);

    /** Replaces all events by the children "event" (`name`, `uid`) of a root "EventsMap"; another
        root leaves the map empty. */
    void loadFromXml (const juce::XmlElement&);

    /** The number of an event; 0 for an unknown name. */
    int getUid (const juce::String& name) const;

    /** The number of an event, if there is one of this name. */
    std::optional<int> findUid (const juce::String& name) const;

    /** The name of an event; empty for an unknown number. */
    juce::String getName (int uid) const;

    /** The name as a sentence begins: "Save preset as". */
    juce::String getDisplayName (int uid) const;

private:
    std::map<juce::String, int> uids;
    std::map<int, juce::String> names;
};

} // namespace K7R
