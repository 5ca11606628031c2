// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <cmath>
#include <iostream>
#include <vector>

#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "Options.h"

namespace K7R::host
{

namespace
{

constexpr double sampleRate = 44100.0;
constexpr int blockSize = 512;
constexpr int longestName = 256;

juce::String describeId (int id)
{
    juce::String letters;

    for (int shift = 24; shift >= 0; shift -= 8)
    {
        const auto letter = (id >> shift) & 0xff;
        letters << juce::String::charToString (letter > 31 && letter < 127 ? static_cast<juce::juce_wchar> (letter)
                                                                           : '?');
    }

    return "0x" + juce::String::toHexString (id) + " (" + letters + ")";
}

juce::String describeTail (double seconds)
{
    return std::isinf (seconds) ? juce::String ("endless") : juce::String (seconds) + " s";
}

juce::String describeMidi (const juce::AudioProcessor& processor)
{
    if (processor.acceptsMidi())
        return processor.producesMidi() ? "in and out" : "in";

    return processor.producesMidi() ? "out" : "none";
}

void printIdentity (const juce::File& file, const juce::AudioPluginInstance& instance)
{
    const auto description = instance.getPluginDescription();

    const auto line = [] (const char* label, const juce::String& text)
    { std::cout << juce::String (label).paddedRight (' ', 11) << text << "\n"; };

    line ("Name", description.descriptiveName);
    line ("Vendor", description.manufacturerName);
    line ("Version", description.version);
    line ("Unique ID", describeId (description.uniqueId));
    line ("Category", description.category);
    line ("Channels", juce::String (description.numInputChannels) + " in, "
                          + juce::String (description.numOutputChannels) + " out");
    line ("Latency", juce::String (instance.getLatencySamples()) + " samples");
    line ("Tail", describeTail (instance.getTailLengthSeconds()));
    line ("MIDI", describeMidi (instance));
    line ("File", file.getFullPathName());
}

//==============================================================================
using Row = std::array<juce::String, 4>;

std::vector<Row> makeParameterTable (const juce::AudioPluginInstance& instance)
{
    std::vector<Row> rows { { "#", "Parameter", "Value", "Text" } };

    for (const auto* parameter : instance.getParameters())
        rows.push_back ({ juce::String (parameter->getParameterIndex()), parameter->getName (longestName),
                          juce::String (parameter->getValue(), 6), parameter->getCurrentValueAsText() });

    return rows;
}

void printTable (const std::vector<Row>& rows)
{
    std::array<int, 4> widths {};

    for (const auto& row : rows)
        for (size_t i = 0; i < row.size(); ++i)
            widths[i] = juce::jmax (widths[i], row[i].length());

    for (const auto& row : rows)
        std::cout << row[0].paddedLeft (' ', widths[0]) << "  " << row[1].paddedRight (' ', widths[1]) << "  "
                  << row[2].paddedLeft (' ', widths[2]) << "  " << row[3] << "\n";
}

void runInfo (const juce::ArgumentList& arguments)
{
    const Options options (arguments, { { "--plugin", Options::Kind::single },
                                        { "--set", Options::Kind::many },
                                        { "--state", Options::Kind::single } });
    options.requirePositional (0, 0, "no files");

    const auto file = HostedPlugin::findFile (options);
    HostedPlugin plugin (file, sampleRate, blockSize);

    if (const auto state = options.getValue ("--state"))
        plugin.loadState (resolveFile (*state));

    for (const auto& text : options.getValues ("--set"))
    {
        const auto [name, value] = splitSetting (text);
        plugin.set (name, value);
    }

    plugin.prepare (false);

    printIdentity (file, plugin.getInstance());
    std::cout << "\n";
    printTable (makeParameterTable (plugin.getInstance()));
    std::cout << std::flush;
}

} // namespace

juce::ConsoleApplication::Command makeInfoCommand()
{
    return { "info", "info [options]", "Shows what the plug-in tells a host about itself",
             "Prints the plug-in's identity, and its parameters with their values and the texts that they show.\n"
             "\n"
             "  --state FILE           loads the plug-in's state first, from a bank file (.fxb)\n"
             "  --set \"Name=value\"     sets a parameter first, as \"render\" does\n"
             "  --plugin FILE          the plug-in; else the one in QUILVANE_PLUGIN, else the one beside this program",
             runInfo };
}

} // namespace K7R::host
