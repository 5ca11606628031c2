// SPDX-License-Identifier: GPL-3.0-or-later

#include <iostream>

#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "MessageLoop.h"
#include "Options.h"
#include "PresetBank.h"
#include "Progress.h"
#include "RenderSettings.h"
#include "Rendering.h"

namespace K7R::host
{

namespace
{

void runRender (const juce::ArgumentList& arguments)
{
    using Kind = Options::Kind;

    const Options options (arguments, { { "--plugin", Kind::single },
                                        { "--set", Kind::many },
                                        { "--automate", Kind::many },
                                        { "--cc", Kind::many },
                                        { "--bpm", Kind::single },
                                        { "--rate", Kind::single },
                                        { "--block", Kind::single },
                                        { "--offline", Kind::toggle },
                                        { "--bypass", Kind::toggle },
                                        { "--preset", Kind::single },
                                        { "--state", Kind::single },
                                        { "--save-state", Kind::single },
                                        { "--tail", Kind::single } });

    auto settings = RenderSettings::parse (options);
    const auto pluginFile = HostedPlugin::findFile (options);

    if (const auto name = options.getValue ("--preset"))
        settings.preset = PresetBank (pluginFile).read (*name);

    Rendering rendering (settings, pluginFile);
    Progress progress ("Rendering " + settings.output.getFileName(), 1.0);

    runBesideMessageLoop ([&] { rendering.run ([&] (double fraction) { progress.update (fraction); }); });
    rendering.commit();
    std::cout << rendering.getSummary() << std::endl;
}

constexpr auto helpText =
    R"(Plays IN through the plug-in and writes what comes out to OUT. IN is mono or stereo audio (WAV, AIFF,
FLAC, Ogg, MP3) of up to an hour; a mono file feeds both sides. OUT is stereo: .wav in 32-bit float, .aif
and .flac in 24 bit. The same input gives the same bytes.

  --preset NAME          loads a preset of the factory or the user first, or a preset file by its path
  --set "Name=value"     sets a parameter, by its text or a number; as often as you like
  --automate "Name=0:0.1,4:0.9"
                         moves a parameter in straight lines between points of seconds:normalised value,
                         applied at the start of each block; one lane for each parameter
  --cc 7@1.5=64          sends controller 7 with the value 64 at 1.5 s, at its own sample
  --bpm N                the host's tempo, 120 if not given; the transport runs in 4/4 from the start
  --rate HZ              the sample rate of the processing and of OUT; IN's if not given
  --block N              samples in a block, 512 if not given
  --offline              tells the plug-in that the rendering isn't in real time
  --bypass               plays through the bypassed plug-in
  --state FILE           loads the plug-in's state first, from a bank file (.fxb)
  --save-state FILE      writes the plug-in's state after the rendering
  --tail SECONDS         goes on with silence after the input
  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program

In --set, a value is what the plug-in shows, in any case and with or without the unit ("Hyper Triangle",
60, 1.25kHz, -inf.; FX=60 is the wet part), and the parameter goes to the lowest value that shows it.
A number that is never shown but lies in 0 to 1 is a normalised value, and so is any with an "n" behind it:
"Feedback=0.6" is "Feedback=0.6n", which is 60 %.)";

} // namespace

juce::ConsoleApplication::Command makeRenderCommand()
{
    return { "render", "render IN OUT [options]", "Plays an audio file through the plug-in", helpText, runRender };
}

} // namespace K7R::host
