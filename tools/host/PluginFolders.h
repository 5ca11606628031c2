// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R::host
{

/** Where a plug-in finds its data and keeps the user's: in the folders beside it if they are there, else in the
    system's for application data. */
struct PluginFolders
{
    static juce::File getData (const juce::File& pluginFile);
    static juce::File getUser (const juce::File& pluginFile);

    static constexpr const char* product = "Quilvane 2";
};

} // namespace K7R::host
