// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

namespace K7R::host
{

/** The presets of a plug-in: a factory package and the user's files, in the folders beside it if they are there,
    else in the system's for application data. */
class PresetBank
{
public:
    struct Entry
    {
        juce::String name;
        juce::String tags; // in their text form
        bool isUsers;
    };

    explicit PresetBank (const juce::File& pluginFile);

    /** @param dataFolder with "Presets" in it
        @param userFolder with "UserStore" in it, or none */
    PresetBank (const juce::File& dataFolder, const juce::File& userFolder);

    /** The factory's presets in their order, then the user's. A factory preset that the user has under the same
        name is listed twice. */
    std::vector<Entry> list() const;

    /** A preset, as an element "Preset" with its name: the file if a path of one is given, else the factory's
        or the user's of that name, in whatever case. Throws a Failure if there is none. */
    std::shared_ptr<const juce::XmlElement> read (const juce::String& nameOrPath) const;

private:
    struct Preset
    {
        Entry entry;
        std::shared_ptr<const juce::XmlElement> xml;
    };

    void addPackage (const juce::File&);
    void add (const juce::String& name, std::unique_ptr<juce::XmlElement>, bool isUsers);

    std::vector<Preset> presets;
};

} // namespace K7R::host
