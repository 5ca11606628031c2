// SPDX-License-Identifier: GPL-3.0-or-later

#include "PluginFolders.h"

namespace K7R::host
{

namespace
{

juce::File findFolder (const juce::File& pluginFile, const char* suffix, juce::File::SpecialLocationType location)
{
    const auto beside = pluginFile.getSiblingFile (juce::String (PluginFolders::product) + suffix);

    return beside.isDirectory() ? beside
                                : juce::File::getSpecialLocation (location)
                                      .getChildFile ("K7R Group")
                                      .getChildFile (PluginFolders::product);
}

} // namespace

juce::File PluginFolders::getData (const juce::File& pluginFile)
{
    return findFolder (pluginFile, "_data", juce::File::commonApplicationDataDirectory);
}

juce::File PluginFolders::getUser (const juce::File& pluginFile)
{
    return findFolder (pluginFile, "_user", juce::File::userApplicationDataDirectory);
}

} // namespace K7R::host
