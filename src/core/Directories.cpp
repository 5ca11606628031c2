// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/Directories.h"

#include "core/SoftwareDesignation.h"

namespace K7R
{

namespace
{

constexpr const char* organisation = "K7R Group";

juce::File choose (const SoftwareDesignation& product, const juce::String& suffix,
                   juce::File::SpecialLocationType systemLocation)
{
    const auto name = product.getProductName();
    auto local = juce::File (product.getPluginFile()).getSiblingFile (name + suffix);

    if (! product.isRelease() && local.isDirectory())
        return local;

    return juce::File::getSpecialLocation (systemLocation).getChildFile (organisation).getChildFile (name);
}

} // namespace

void Directories::resolve (const SoftwareDesignation& product)
{
    const auto user = choose (product, "_user", juce::File::userApplicationDataDirectory);

    add (appData, choose (product, "_data", juce::File::commonApplicationDataDirectory), false);
    add (userData, user, true);
    add (userStore, user.getChildFile ("UserStore"), true);
}

bool Directories::add (const juce::String& name, const juce::File& folder, bool create)
{
    if (! folders.emplace (name, folder).second)
        return false;

    if (create && ! folder.isDirectory())
        folder.createDirectory();

    return true;
}

juce::File Directories::get (const juce::String& name) const
{
    const auto found = folders.find (name);
    return found != folders.end() ? found->second : juce::File();
}

} // namespace K7R
