// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "HostedPlugin.h"
#include "Options.h"
#include "PresetBank.h"

namespace K7R::host
{

namespace
{

void runPresets (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--plugin", Options::Kind::single } });
    options.requirePositional (0, 0, "no files");

    const auto entries = PresetBank (HostedPlugin::findFile (options)).list();
    int width = 0;

    for (const auto& entry : entries)
        width = juce::jmax (width, entry.name.length());

    for (const auto& entry : entries)
        std::cout << (entry.isUsers ? "User     " : "Factory  ") << entry.name.paddedRight (' ', width + 2)
                  << entry.tags << "\n";

    std::cout << entries.size() << " presets" << std::endl;
}

constexpr auto helpText =
    R"(Lists the presets that the plug-in finds, the factory's and the user's, with their tags.

  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program)";

} // namespace

juce::ConsoleApplication::Command makePresetsCommand()
{
    return { "presets", "presets", "Lists the presets with their tags", helpText, runPresets };
}

} // namespace K7R::host
