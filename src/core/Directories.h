// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <map>

#include <juce_core/juce_core.h>

namespace K7R
{

class SoftwareDesignation;

/** The named folders of a product: shared data and the user's own.

    A release keeps both under the system's application data, in "K7R Group" and the product's name. A
    build of any other channel takes a folder beside its binary where there is one (the product's name
    with "_data" or "_user"), and so can run from a stick.

    A folder that can't be created isn't reported; what is done in it then fails on its own.
*/
class Directories
{
public:
    // The names that every product has.
    static constexpr const char* appData = "AppData";
    static constexpr const char* userData = "UserData";
    static constexpr const char* userStore = "UserStore";
    static constexpr const char* userPresets = "UserPresets";

    /** Resolves the folders of a product and creates the user's. */
    void resolve (const SoftwareDesignation&);

    /** Adds a folder under a name, and creates it if asked to; false, and nothing changes, if the name is
        taken. */
    bool add (const juce::String& name, const juce::File& folder, bool create);

    /** The folder of a name; none for an unknown one. */
    juce::File get (const juce::String& name) const;

    /** A file that the settings name; no file unless the path is a whole one. */
    static juce::File fileFromSetting (const juce::String& path)
    {
        return juce::File::isAbsolutePath (path) ? juce::File (path) : juce::File();
    }

private:
    std::map<juce::String, juce::File> folders;
};

} // namespace K7R
