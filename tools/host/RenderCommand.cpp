// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <cmath>
#include <exception>
#include <functional>
#include <iostream>
#include <thread>

#include "AudioFiles.h"
#include "Commands.h"
#include "Failure.h"
#include "HostedPlugin.h"
#include "Options.h"
#include "Progress.h"
#include "RenderSettings.h"

namespace quilvane::host
{

namespace
{

constexpr int numChannels = 2;
constexpr int midiChannel = 1;
constexpr int quartersPerBar = 4;

/** Where a playing host is: at a constant tempo in 4/4, from position 0 on. */
class Transport : public juce::AudioPlayHead
{
public:
    Transport (double rateToUse, double tempo) : sampleRate (rateToUse), bpm (tempo) {}

    void setPosition (juce::int64 newPosition) noexcept { position = newPosition; }

    /** The position in seconds. */
    double getSeconds() const noexcept { return static_cast<double> (position) / sampleRate; }

    juce::Optional<PositionInfo> getPosition() const override
    {
        const auto quarters = getSeconds() * bpm / 60.0;
        const auto bar = std::floor (quarters / quartersPerBar);

        PositionInfo info;
        info.setTimeInSamples (position);
        info.setTimeInSeconds (getSeconds());
        info.setBpm (bpm);
        info.setTimeSignature (TimeSignature { quartersPerBar, 4 });
        info.setPpqPosition (quarters);
        info.setPpqPositionOfLastBarStart (bar * quartersPerBar);
        info.setBarCount (static_cast<juce::int64> (bar));
        info.setIsPlaying (true);
        return info;
    }

private:
    const double sampleRate, bpm;
    juce::int64 position = 0;
};

/** Runs a function on a thread of its own, as hosts run their audio, while the calling message thread
    serves messages; returns or throws when the function does. Once in the program's life, since a
    message loop that was stopped stays stopped. */
void runBesideMessageLoop (const std::function<void()>& function)
{
    auto& messages = *juce::MessageManager::getInstance();
    std::exception_ptr failure;

    std::thread thread (
        [&]
        {
            try
            {
                function();
            }
            catch (...)
            {
                failure = std::current_exception();
            }

            messages.stopDispatchLoop();
        });

    messages.runDispatchLoop();
    thread.join();

    if (failure != nullptr)
        std::rethrow_exception (failure);
}

//==============================================================================
/** One rendering from its files to its result. Created and prepared on the message thread, run on the
    audio thread. */
class Rendering
{
public:
    Rendering (const RenderSettings& settingsToUse, const juce::File& pluginFile) :
        settings (settingsToUse),
        input (settings.input),
        sampleRate (settings.sampleRate > 0.0 ? settings.sampleRate : input.getFileRate()),
        plugin (pluginFile, sampleRate, settings.blockSize),
        transport (sampleRate, settings.bpm)
    {
        input.setSampleRate (sampleRate);
        length = input.getLength() + static_cast<juce::int64> (std::ceil (settings.tailSeconds * sampleRate));

        if (settings.stateToLoad)
            plugin.loadState (*settings.stateToLoad);

        for (const auto& [name, text] : settings.values)
            plugin.set (name, text);

        for (const auto& lane : settings.lanes)
            lanes.emplace_back (&lane, &plugin.findParameter (lane.parameterName));

        output.emplace (settings.output, sampleRate);
        automate();
        plugin.getInstance().setPlayHead (&transport);
        plugin.prepare (settings.isOffline);
    }

    ~Rendering() { plugin.getInstance().setPlayHead (nullptr); }

    void run()
    {
        Progress progress ("Rendering " + settings.output.getFileName(), static_cast<double> (length));

        const juce::int64 largestBlock = settings.blockSize;

        for (juce::int64 position = 0; position < length;)
        {
            const auto numSamples = static_cast<int> (std::min (largestBlock, length - position));
            renderBlock (position, numSamples);
            position += numSamples;
            progress.update (static_cast<double> (position));
        }
    }

    /** Puts the results in their places. The state is taken first: if it fails, no file has changed. */
    void commit()
    {
        if (settings.stateToSave)
            plugin.saveState (*settings.stateToSave);

        output->commit();
    }

    juce::String getSummary() const
    {
        const auto seconds = static_cast<double> (length) / sampleRate;
        const auto level = peak > 0.0f ? juce::String (juce::Decibels::gainToDecibels (peak), 1) + " dBFS" : "silence";

        return settings.output.getFileName() + ": " + juce::String (seconds, 2) + " s at " + juce::String (sampleRate)
               + " Hz, peak " + level + (peak > 1.0f && output->isFixedPoint() ? ", cut off at full scale" : "");
    }

private:
    void automate()
    {
        for (const auto& [lane, parameter] : lanes)
            parameter->setValue (lane->getValueAt (transport.getSeconds()));
    }

    void addControllers (juce::int64 start, int numSamples)
    {
        for (; nextController < settings.controllers.size(); ++nextController)
        {
            const auto& event = settings.controllers[nextController];
            const auto offset = std::llround (event.seconds * sampleRate) - start;

            if (offset >= numSamples)
                return;

            midi.addEvent (juce::MidiMessage::controllerEvent (midiChannel, event.controller, event.value),
                           static_cast<int> (offset));
        }
    }

    void renderBlock (juce::int64 start, int numSamples)
    {
        auto& instance = plugin.getInstance();

        buffer.setSize (numChannels, numSamples, false, false, true);
        input.read (buffer);
        midi.clear();
        addControllers (start, numSamples);
        transport.setPosition (start);
        automate();

        if (settings.isBypassed)
            instance.processBlockBypassed (buffer, midi);
        else
            instance.processBlock (buffer, midi);

        peak = juce::jmax (peak, buffer.getMagnitude (0, numSamples));
        output->write (buffer);
    }

    const RenderSettings& settings;
    AudioInput input;
    const double sampleRate; // Hz
    HostedPlugin plugin;
    Transport transport;
    std::vector<std::pair<const AutomationLane*, juce::AudioProcessorParameter*>> lanes;
    std::optional<AudioOutput> output;

    juce::int64 length = 0; // samples, with the tail
    size_t nextController = 0;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer midi;
    float peak = 0.0f;
};

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
                                        { "--state", Kind::single },
                                        { "--save-state", Kind::single },
                                        { "--tail", Kind::single } });

    const auto settings = RenderSettings::parse (options);
    Rendering rendering (settings, HostedPlugin::findFile (options));

    runBesideMessageLoop ([&rendering] { rendering.run(); });
    rendering.commit();
    std::cout << rendering.getSummary() << std::endl;
}

constexpr auto helpText =
    R"(Plays IN through the plug-in and writes what comes out to OUT. IN is mono or stereo audio (WAV, AIFF,
FLAC, Ogg, MP3) of up to an hour; a mono file feeds both sides. OUT is stereo: .wav in 32-bit float, .aif
and .flac in 24 bit. The same input gives the same bytes.

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

} // namespace quilvane::host
