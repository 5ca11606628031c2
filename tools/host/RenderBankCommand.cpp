// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "MessageLoop.h"
#include "Options.h"
#include "PresetBank.h"
#include "Progress.h"
#include "Rendering.h"

namespace K7R::host
{

namespace
{

/** Plays one input through every preset; on the audio thread beside the message loop. */
void renderAll (const PresetBank& bank, RenderSettings settings, const juce::File& folder, const juce::File& pluginFile)
{
    const auto entries = bank.list();
    Progress progress ("Rendering " + juce::String (entries.size()) + " presets", static_cast<double> (entries.size()));
    double finished = 0.0;

    for (const auto& entry : entries)
    {
        settings.output = folder.getChildFile (juce::File::createLegalFileName (entry.name) + ".wav");
        settings.preset = bank.read (entry.name);
        std::unique_ptr<Rendering> rendering;

        runOnMessageThread ([&] { rendering = std::make_unique<Rendering> (settings, pluginFile); });
        rendering->run ([&] (double fraction) { progress.update (finished + fraction); });
        runOnMessageThread (
            [&]
            {
                rendering->commit();
                rendering.reset();
            });
        progress.update (++finished);
    }
}

void runRenderBank (const juce::ArgumentList& arguments)
{
    using Kind = Options::Kind;

    const Options options (arguments,
                           { { "--plugin", Kind::single }, { "--bpm", Kind::single }, { "--tail", Kind::single } });
    const auto& files = options.requirePositional (2, 2, "an audio file IN and a folder DIR");
    const auto folder = resolveFile (files[1]);

    RenderSettings settings;
    settings.input = resolveFile (files[0]);
    settings.bpm = options.getNumber ("--bpm", { 20.0, 999.0 }, " BPM", settings.bpm);
    settings.tailSeconds = options.getNumber ("--tail", { 0.0, 60.0 }, " s", settings.tailSeconds);

    if (! folder.isDirectory() && ! folder.createDirectory())
        throw Failure ("cannot make the folder " + folder.getFullPathName());

    const auto pluginFile = HostedPlugin::findFile (options);
    const PresetBank bank (pluginFile);

    runBesideMessageLoop ([&] { renderAll (bank, settings, folder, pluginFile); });
    std::cout << bank.list().size() << " presets rendered to " << folder.getFullPathName() << std::endl;
}

constexpr auto helpText =
    R"(Plays IN through every preset of the factory and the user, each into a file of its name in DIR.

  --bpm N                the host's tempo, 120 if not given
  --tail SECONDS         goes on with silence after the input
  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program)";

} // namespace

juce::ConsoleApplication::Command makeRenderBankCommand()
{
    return { "render-bank", "render-bank IN DIR", "Plays an audio file through every preset", helpText, runRenderBank };
}

} // namespace K7R::host
