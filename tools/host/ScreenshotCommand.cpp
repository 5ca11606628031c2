// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdlib>
#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "Options.h"
#include "OutputFile.h"
#include "ParameterText.h"
#include "PluginFolders.h"
#include "PresetBank.h"
#include "ShownPlugin.h"
#include "content/Preset.h"
#include "core/BasePlugin.h"

namespace quilvane::host
{

namespace
{

constexpr double secondsBefore = 1.5; // of sound, so that lights and meters show something

void runScreenshot (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--data", Options::Kind::single },
                                        { "--plugin", Options::Kind::single },
                                        { "--preset", Options::Kind::single },
                                        { "--set", Options::Kind::many },
                                        { "--silent", Options::Kind::toggle },
                                        { "--skin", Options::Kind::single } });
    const auto output = resolveFile (options.requirePositional (1, 1, "one file, OUT.png")[0]);
    OutputFile::check (output);

    // No display is looked for, and none that goes away can end the work.
    setenv ("DISPLAY", ":65535", 1); // NOLINT(concurrency-mt-unsafe): no other thread reads it yet

    const auto data = options.getValue ("--data");
    const auto dataFolder =
        data.has_value() ? resolveFile (*data) : PluginFolders::getData (HostedPlugin::findFile (options));

    ShownPlugin shown (dataFolder, options.getValue ("--skin").value_or (""));
    shown.open();
    auto& plugin = shown.getPlugin();

    if (const auto name = options.getValue ("--preset"))
    {
        Preset preset;
        preset.readXml (PresetBank (dataFolder, {}).read (*name).get(), plugin.getParameters());
        plugin.loadPreset (preset);
    }

    for (const auto& text : options.getValues ("--set"))
    {
        const auto [name, value] = splitSetting (text);

        if (auto* parameter = plugin.getParameters().getParameterByName (name))
            parameter->setString (value, true);
        else
            throw Failure ("there is no parameter \"" + name + "\"");
    }

    shown.play (options.has ("--silent") ? 0.0 : secondsBefore);

    const auto picture = shown.takePicture();
    OutputFile::write (output, [&] (juce::OutputStream& out)
                       { return juce::PNGImageFormat().writeImageToStream (picture, out); });

    std::cout << output.getFileName() << ": " << picture.getWidth() << " x " << picture.getHeight() << std::endl;
}

constexpr auto helpText =
    R"(Paints the plug-in's editor into a picture. It needs no display and leaves the user's settings alone.

  --skin NAME            the skin; else the one that a new user sees
  --preset NAME          loads a preset first, by its name or from a file
  --set "Name=value"     sets a parameter first; the value is written as in a preset's file
  --silent               plays nothing; else noise plays, so that lights and meters show something
  --data FOLDER          where "Skins" and "Presets" lie; else the folder that the plug-in uses
  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program)";

} // namespace

juce::ConsoleApplication::Command makeScreenshotCommand()
{
    return { "screenshot", "screenshot OUT.png [options]", "Paints the editor into a picture", helpText,
             runScreenshot };
}

} // namespace quilvane::host
