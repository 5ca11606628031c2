// SPDX-License-Identifier: GPL-3.0-or-later

// Runs the host program as its users do, on files that each test makes. The build gives the paths of the
// program and of the plug-in as QUILVANE_HOST_PROGRAM and QUILVANE_PLUGIN_FILE.

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_graphics/juce_graphics.h>

namespace
{

constexpr double sampleRate = 44100.0;
constexpr int patience = 60000; // ms

struct Result
{
    int exitCode;
    juce::String output; // of both streams
};

struct Audio
{
    juce::AudioBuffer<float> samples;
    double rate;
};

bool areEqual (const Audio& a, const Audio& b, int start, int numSamples)
{
    for (int channel = 0; channel < 2; ++channel)
        if (! std::equal (a.samples.getReadPointer (channel, start),
                          a.samples.getReadPointer (channel, start) + numSamples,
                          b.samples.getReadPointer (channel, start)))
            return false;

    return true;
}

bool areEqual (const Audio& a, const Audio& b)
{
    return a.samples.getNumSamples() == b.samples.getNumSamples() && areEqual (a, b, 0, a.samples.getNumSamples());
}

class HostProgram : public testing::Test
{
protected:
    HostProgram()
    {
        formats.registerBasicFormats();
        EXPECT_TRUE (folder.createDirectory().wasOk());
    }

    ~HostProgram() override { folder.deleteRecursively(); }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    juce::String path (const juce::String& name) const { return file (name).getFullPathName(); }

    static Result run (juce::StringArray arguments)
    {
        arguments.insert (0, QUILVANE_HOST_PROGRAM);

        juce::ChildProcess process;
        EXPECT_TRUE (process.start (arguments));

        // In builds with assertions, JUCE says its name first.
        const auto output = process.readAllProcessOutput().replace ("JUCE v7.0.5\n", {});
        EXPECT_TRUE (process.waitForProcessToFinish (patience));

        return { static_cast<int> (process.getExitCode()), output };
    }

    /** Runs a command that loads the plug-in. */
    static Result runPlugin (juce::StringArray arguments)
    {
        arguments.addArray ({ "--plugin", QUILVANE_PLUGIN_FILE });
        return run (arguments);
    }

    Audio render (const juce::String& input, const juce::String& output, const juce::StringArray& options = {}) const
    {
        juce::StringArray arguments { "render", path (input), path (output) };
        arguments.addArray (options);

        const auto result = runPlugin (arguments);
        EXPECT_EQ (result.exitCode, 0) << result.output;
        return read (output);
    }

    Audio read (const juce::String& name) const
    {
        const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file (name)));

        if (reader == nullptr)
        {
            ADD_FAILURE() << name << " cannot be read";
            return { juce::AudioBuffer<float> (2, 0), 0.0 };
        }

        Audio audio { juce::AudioBuffer<float> (2, static_cast<int> (reader->lengthInSamples)), reader->sampleRate };
        reader->read (&audio.samples, 0, audio.samples.getNumSamples(), 0, true, true);
        return audio;
    }

    void write (const juce::String& name, const juce::AudioBuffer<float>& samples, double rate) const
    {
        auto stream = std::make_unique<juce::FileOutputStream> (file (name));
        const std::unique_ptr<juce::AudioFormatWriter> writer (juce::WavAudioFormat().createWriterFor (
            stream.release(), rate, static_cast<unsigned int> (samples.getNumChannels()), 16, {}, 0));
        ASSERT_NE (writer, nullptr);
        ASSERT_TRUE (writer->writeFromAudioSampleBuffer (samples, 0, samples.getNumSamples()));
    }

    void writeNoise (const juce::String& name, double seconds, int channels = 2) const
    {
        juce::Random random (1);
        juce::AudioBuffer<float> samples (channels, static_cast<int> (seconds * sampleRate));

        for (int channel = 0; channel < channels; ++channel)
            for (int i = 0; i < samples.getNumSamples(); ++i)
                samples.setSample (channel, i, random.nextFloat() * 0.5f - 0.25f);

        write (name, samples, sampleRate);
    }

    mutable juce::AudioFormatManager formats;

private:
    const juce::File folder = juce::File::createTempFile ({}).withFileExtension ({}).getNonexistentSibling();
};

} // namespace

//==============================================================================
TEST_F (HostProgram, RenderChangesTheSoundAndRepeatsItToTheByte)
{
    writeNoise ("in.wav", 1.0);
    const juce::StringArray options { "--set", "LFO 1 Depth=70", "--set", "Feedback=50" };

    const auto dry = read ("in.wav");
    const auto wet = render ("in.wav", "a.wav", options);
    render ("in.wav", "b.wav", options);

    EXPECT_EQ (wet.samples.getNumSamples(), dry.samples.getNumSamples());
    EXPECT_FALSE (areEqual (wet, dry));
    EXPECT_GT (wet.samples.getMagnitude (0, wet.samples.getNumSamples()), 0.01f);
    EXPECT_TRUE (file ("a.wav").hasIdenticalContentTo (file ("b.wav")));
}

TEST_F (HostProgram, BypassGivesTheInputBackBitForBit)
{
    writeNoise ("in.wav", 0.5);
    writeNoise ("mono.wav", 0.5, 1);

    EXPECT_TRUE (areEqual (render ("in.wav", "out.wav", { "--bypass" }), read ("in.wav")));
    EXPECT_TRUE (areEqual (render ("in.wav", "out.flac", { "--bypass", "--block", "37" }), read ("in.wav")));
    EXPECT_TRUE (areEqual (render ("in.wav", "out.aif", { "--bypass" }), read ("in.wav")));
    EXPECT_TRUE (areEqual (render ("mono.wav", "out.wav", { "--bypass" }), read ("mono.wav"))) << "on both sides";
}

TEST_F (HostProgram, AnotherRateKeepsTheSoundInTimeAndInTune)
{
    constexpr double frequency = 1000.0;
    juce::AudioBuffer<float> tone (2, static_cast<int> (sampleRate));
    const auto sine = [] (int sample, double rate)
    { return 0.5 * std::sin (juce::MathConstants<double>::twoPi * frequency * sample / rate); };

    for (int i = 0; i < tone.getNumSamples(); ++i)
        for (int channel = 0; channel < 2; ++channel)
            tone.setSample (channel, i, static_cast<float> (sine (i, sampleRate)));

    write ("in.wav", tone, sampleRate);

    for (const auto rate : { 96000.0, 88200.0, 22050.0 })
    {
        const auto result =
            render ("in.wav", "out.wav", { "--bypass", "--rate", juce::String (rate), "--tail", "0.5" });
        EXPECT_EQ (result.rate, rate);
        ASSERT_EQ (result.samples.getNumSamples(), static_cast<int> (rate * 1.5));

        for (int i = static_cast<int> (rate * 0.4); i < static_cast<int> (rate * 0.6); ++i)
            ASSERT_NEAR (static_cast<double> (result.samples.getSample (0, i)), sine (i, rate), 0.001) << rate;
    }
}

TEST_F (HostProgram, AutomationMovesTheSoundFromItsTimeOn)
{
    writeNoise ("in.wav", 1.0);
    const auto still = render ("in.wav", "still.wav", { "--set", "FX=0" });
    const auto moved = render ("in.wav", "moved.wav", { "--automate", "FX=0:0,0.5:0,0.5:1" });
    const auto jump = static_cast<int> (0.5 * sampleRate);

    EXPECT_TRUE (areEqual (still, moved, 0, jump));
    EXPECT_FALSE (areEqual (still, moved, jump + 512, 4096));

    // A slope has begun by then.
    const auto sloped = render ("in.wav", "sloped.wav", { "--automate", "fx=0:0,1:1" });
    EXPECT_FALSE (areEqual (still, sloped, 512, jump));
}

TEST_F (HostProgram, TempoReachesASynchronisedOscillator)
{
    writeNoise ("in.wav", 1.0);
    const juce::StringArray options { "--set", "LFO 1 Sync=On", "--set", "LFO 1 Depth=100" };
    const auto with = [&options] (const juce::String& tempo)
    {
        auto all = options;
        all.addArray ({ "--bpm", tempo });
        return all;
    };

    const auto slow = render ("in.wav", "slow.wav", with ("60"));

    EXPECT_FALSE (areEqual (slow, render ("in.wav", "fast.wav", with ("180"))));
    EXPECT_TRUE (areEqual (slow, render ("in.wav", "again.wav", with ("60"))));
}

//==============================================================================
TEST_F (HostProgram, SettingsAreFoundByTextAndByNumber)
{
    struct Case
    {
        const char *setting, *name, *text;
    };

    const std::vector<Case> cases {
        { "Feedback=60", "Feedback", "60%" },
        { "FEEDBACK=60%", "Feedback", "60%" },
        { "Feedback=0.6", "Feedback", "60%" },
        { "Feedback=1", "Feedback", "1%" },
        { "Feedback=1n", "Feedback", "100%" },
        { "LFO 1 Waveform=hyper triangle", "LFO 1 Waveform", "Hyper Triangle" },
        { "LFO 1 Waveform=Sample/Hold", "LFO 1 Waveform", "Sample/Hold" },
        { "LFO 1 Note Rate=1/4", "LFO 1 Note Rate", "1/4" },
        { "LFO 1 Note Rate=4", "LFO 1 Note Rate", "4" },
        { "LFO 2 Sync=on", "LFO 2 Sync", "On" },
        { "LFO 1 Rate=0.1", "LFO 1 Rate", "0.10Hz" },
        { "Center Frequency=1.25kHz", "Center Frequency", "1.25kHz" },
        { "Center Frequency=1250", "Center Frequency", "1.25kHz" },
        { "Center Frequency=440Hz", "Center Frequency", "440Hz" },
        { "FX=60", "FX", "40/60% (Dry/Wet)" },
        { "Output Volume=3", "Output Volume", "+3.0dB" },
        { "Output Volume=0", "Output Volume", "0dB" },
        { "Output Volume=-inf.", "Output Volume", "-inf." },
    };

    for (const auto& [setting, name, text] : cases)
    {
        const auto result = runPlugin ({ "info", "--set", setting });
        ASSERT_EQ (result.exitCode, 0) << result.output;

        const auto lines = juce::StringArray::fromLines (result.output);
        const auto isShown =
            std::any_of (lines.begin(), lines.end(),
                         [&, n = name, t = text] (const juce::String& line)
                         { return line.contains (juce::String (n) + " ") && line.endsWith (juce::String ("  ") + t); });
        EXPECT_TRUE (isShown) << setting << "\n" << result.output;
    }
}

TEST_F (HostProgram, ASavedStateBringsTheSettingsBack)
{
    writeNoise ("in.wav", 0.3);
    const auto first = render ("in.wav", "a.wav", { "--set", "Feedback=60", "--save-state", path ("state.fxb") });
    const auto second = render ("in.wav", "b.wav", { "--state", path ("state.fxb") });
    EXPECT_TRUE (areEqual (first, second));

    const auto info = runPlugin ({ "info", "--state", path ("state.fxb") });
    EXPECT_TRUE (info.output.contains (" 60%")) << info.output;

    juce::MemoryBlock state;
    ASSERT_TRUE (file ("state.fxb").loadFileAsData (state));
    ASSERT_TRUE (file ("short.fxb").replaceWithData (state.getData(), state.getSize() / 2));
    state[19] = static_cast<char> (state[19] ^ 1); // the last byte of the plug-in's identity
    ASSERT_TRUE (file ("other.fxb").replaceWithData (state.getData(), state.getSize()));

    for (const auto* name : { "short.fxb", "other.fxb", "in.wav" })
        EXPECT_EQ (runPlugin ({ "info", "--state", path (name) }).exitCode, 1) << name;
}

//==============================================================================
TEST_F (HostProgram, BadInputIsRefusedInOneSentenceAndHarmsNoFile)
{
    writeNoise ("in.wav", 0.1);
    ASSERT_TRUE (file ("text.wav").replaceWithText ("This is no audio."));
    ASSERT_TRUE (file ("empty.wav").replaceWithText ({}));

    const auto in = path ("in.wav");
    const auto out = path ("out.wav");
    const auto withOption = [&] (const char* option, const char* value) {
        return juce::StringArray { "render", in, out, option, value };
    };

    const std::vector<juce::StringArray> cases {
        { "rendre", in, out },
        { "render", in },
        { "render", in, out, out },
        { "render", path ("missing.wav"), out },
        { "render", path ("text.wav"), out },
        { "render", path ("empty.wav"), out },
        { "render", in, in },
        { "render", in, path ("out.mp3") },
        { "render", in, path ("nowhere/out.wav") },
        { "render", in, out, "--frobnicate" },
        { "render", in, out, "--bypass=1" },
        { "render", in, out, "--bpm" },
        { "render", in, out, "--bpm", "90", "--bpm", "91" },
        withOption ("--plugin", "/dev/null"),
        withOption ("--set", "Feedback"),
        withOption ("--set", "No Such Name=1"),
        withOption ("--set", "Feedback=lots"),
        withOption ("--set", "Feedback=101"),
        withOption ("--set", "Feedback=12.5"),
        withOption ("--set", "Feedback=60Hz"),
        withOption ("--set", "Feedback=60n"),
        withOption ("--automate", "Feedback=1"),
        withOption ("--automate", "Feedback=0:2"),
        withOption ("--automate", "Feedback=1:0,0:1"),
        withOption ("--automate", "No Such Name=0:1"),
        withOption ("--cc", "7=64"),
        withOption ("--cc", "128@0=64"),
        withOption ("--cc", "7@-1=64"),
        withOption ("--rate", "100"),
        withOption ("--rate", "1e9"),
        withOption ("--rate", "nan"),
        withOption ("--block", "0"),
        withOption ("--block", "1.5"),
        withOption ("--bpm", "fast"),
        withOption ("--tail", "-1"),
        withOption ("--state", "missing.fxb"),
        withOption ("--save-state", "/nowhere/state.fxb"),
        { "plot", in, out },
        { "plot", path ("text.wav"), path ("out.png") },
        { "plot", in, path ("out.png"), "--ratio" },
        { "plot", in, path ("out.png"), "--channel", "middle" },
        { "score", out },
        { "score", path ("nowhere/out.mid") },
    };

    constexpr auto old = "what was there before";
    const auto numFiles = [this] { return file ({}).getNumberOfChildFiles (juce::File::findFiles); };
    const auto numFilesBefore = numFiles();

    for (const auto& arguments : cases)
    {
        for (const auto isOutThere : { false, true })
        {
            file ("out.wav").deleteFile();
            ASSERT_TRUE (! isOutThere || file ("out.wav").replaceWithText (old));

            const auto isPluginGiven = arguments[0] != "render" || arguments.contains ("--plugin");
            const auto result = isPluginGiven ? run (arguments) : runPlugin (arguments);
            const auto what = arguments.joinIntoString (" ") + "\n" + result.output;

            EXPECT_EQ (result.exitCode, 1) << what;
            EXPECT_TRUE (result.output.startsWith ("quilvane-host: ")) << what;
            EXPECT_EQ (result.output.indexOfChar ('\n'), result.output.length() - 1) << what;
            EXPECT_EQ (numFiles(), numFilesBefore + (isOutThere ? 1 : 0)) << what;

            EXPECT_EQ (file ("out.wav").loadFileAsString(), isOutThere ? old : "") << what;
        }
    }
}

TEST_F (HostProgram, HelpIsThereForAllAndForEachCommand)
{
    const auto all = run ({ "--help" });
    EXPECT_EQ (all.exitCode, 0);

    for (const auto* command : { "info", "render", "plot", "score" })
    {
        EXPECT_TRUE (all.output.contains (juce::String ("quilvane-host ") + command)) << all.output;

        const auto help = run ({ command, "--help" });
        EXPECT_EQ (help.exitCode, 0) << command;
        EXPECT_TRUE (help.output.contains (juce::String ("quilvane-host ") + command)) << help.output;
    }
}

//==============================================================================
TEST_F (HostProgram, PlotShowsWhereTheEnergyIs)
{
    juce::AudioBuffer<float> tone (2, static_cast<int> (sampleRate));

    for (int i = 0; i < tone.getNumSamples(); ++i)
        for (int channel = 0; channel < 2; ++channel)
            tone.setSample (channel, i, 0.5f * std::sin (static_cast<float> (i) * 0.142476f)); // 1000 Hz

    write ("tone.wav", tone, sampleRate);
    writeNoise ("noise.wav", 2.0);

    const auto one = run ({ "plot", path ("tone.wav"), path ("one.png") });
    ASSERT_EQ (one.exitCode, 0) << one.output;
    const auto three = run ({ "plot", path ("tone.wav"), path ("noise.wav"), path ("three.png"), "--ratio", "--title",
                              "A", "--title", "B", "--channel", "left" });
    ASSERT_EQ (three.exitCode, 0) << three.output;

    const auto picture = juce::PNGImageFormat::loadFrom (file ("one.png"));
    const auto higher = juce::PNGImageFormat::loadFrom (file ("three.png"));
    ASSERT_TRUE (picture.isValid() && higher.isValid());
    EXPECT_EQ (picture.getWidth(), 1600);
    EXPECT_EQ (higher.getWidth(), 1600);
    EXPECT_GT (higher.getHeight(), 2 * picture.getHeight());

    // The brightest line across the middle is the tone, at its place of the logarithmic axis.
    std::vector<float> brightness;

    for (int y = 0; y < picture.getHeight(); ++y)
        brightness.push_back (picture.getPixelAt (801, y).getPerceivedBrightness());

    const auto brightest = std::max_element (brightness.begin(), brightness.end());
    const auto place = static_cast<double> (std::distance (brightness.begin(), brightest));
    EXPECT_GT (*brightest, 0.8f);
    EXPECT_NEAR (place, 72.0 + 400.0 * (1.0 - std::log (1000.0 / 40.0) / std::log (18000.0 / 40.0)), 4.0);
}

TEST_F (HostProgram, PresetsAreListedRenderedAndRefused)
{
    writeNoise ("in.wav", 0.5);

    // A preset file by its path; the plug-in under test finds no factory package.
    file ("Half.qvprs2").replaceWithText ("<Preset><Parameters><param name='FX' value='50'/></Parameters></Preset>");
    const auto plain = render ("in.wav", "plain.wav");
    const auto half = render ("in.wav", "half.wav", { "--preset", path ("Half.qvprs2") });
    const auto same = render ("in.wav", "same.wav", { "--set", "FX=50" });
    const auto length = half.samples.getNumSamples();
    EXPECT_FALSE (areEqual (plain, half, 0, length));
    EXPECT_TRUE (areEqual (same, half, 0, length));

    file ("Damaged.qvprs2").replaceWithText ("<Preset");

    for (const auto& name : { juce::String ("No Such Preset"), path ("Damaged.qvprs2"), path ("missing.qvprs2") })
    {
        const auto result = runPlugin ({ "render", path ("in.wav"), path ("out.wav"), "--preset", name });
        EXPECT_EQ (result.exitCode, 1) << result.output;
        EXPECT_TRUE (result.output.startsWith ("quilvane-host: ")) << result.output;
        EXPECT_FALSE (file ("out.wav").exists());
    }

    // Beside a plug-in with the folders of a portable one, the bank is there.
    const auto plugin = file ("Portable.so");
    ASSERT_TRUE (juce::File (QUILVANE_PLUGIN_FILE).copyFileTo (plugin));
    const auto package = file ("Quilvane 2_data/Presets/Factory.k7rpkg");
    package.getParentDirectory().createDirectory();
    ASSERT_TRUE (juce::File (QUILVANE_FACTORY_BANK).copyFileTo (package));
    file ("Quilvane 2_user/UserStore/Presets").createDirectory();
    file ("Half.qvprs2").copyFileTo (file ("Quilvane 2_user/UserStore/Presets/Half.qvprs2"));

    const auto list = run ({ "presets", "--plugin", plugin.getFullPathName() });
    EXPECT_EQ (list.exitCode, 0) << list.output;
    EXPECT_TRUE (list.output.contains ("Factory  Colorful")) << list.output;
    EXPECT_TRUE (list.output.contains ("User     Half"));

    package.deleteFile();
    const auto bank = run ({ "render-bank", path ("in.wav"), path ("bank"), "--plugin", plugin.getFullPathName() });
    EXPECT_EQ (bank.exitCode, 0) << bank.output;
    EXPECT_TRUE (areEqual (read ("bank/Half.wav"), half, 0, length));
}

TEST_F (HostProgram, ScreenshotPaintsEachSkinAndFollowsTheSettings)
{
    const auto shoot = [&] (const juce::String& name, juce::StringArray options)
    {
        options.insert (0, path (name));
        options.insert (0, "screenshot");
        options.addArray ({ "--data", QUILVANE_DATA_FOLDER });
        const auto result = run (options);
        EXPECT_EQ (result.exitCode, 0) << result.output;
        return juce::ImageFileFormat::loadFrom (file (name));
    };

    const auto count = [] (const juce::Image& a, const juce::Image& b)
    {
        int different = 0;

        for (int y = 0; y < a.getHeight(); ++y)
            for (int x = 0; x < a.getWidth(); ++x)
                different += a.getPixelAt (x, y) == b.getPixelAt (x, y) ? 0 : 1;

        return different;
    };

    constexpr int statusBarHeight = 16;
    const auto big = shoot ("big.png", { "--skin", "Big", "--silent" });
    EXPECT_EQ (big.getBounds(), juce::Rectangle<int> (1000, 620 + statusBarHeight));
    EXPECT_EQ (shoot ("small.png", { "--skin", "Small", "--silent" }).getBounds(),
               juce::Rectangle<int> (700, 434 + statusBarHeight));
    EXPECT_EQ (shoot ("light.png", { "--skin", "Light", "--silent" }).getBounds(),
               juce::Rectangle<int> (720, 320 + statusBarHeight));

    EXPECT_EQ (count (big, shoot ("again.png", { "--silent" })), 0); // the one that a new user sees
    EXPECT_GT (count (big, shoot ("knob.png", { "--silent", "--set", "Center Frequency=5000" })), 2000);
    EXPECT_GT (count (big, shoot ("sync.png", { "--silent", "--set", "LFO 2 Sync=On" })), 500);
    EXPECT_GT (count (big, shoot ("loud.png", {})), 1000); // the meters

    for (const auto& options : { juce::StringArray { "--skin", "None" }, juce::StringArray { "--set", "None=1" } })
    {
        auto arguments = options;
        arguments.insert (0, path ("refused.png"));
        arguments.insert (0, "screenshot");
        arguments.addArray ({ "--data", QUILVANE_DATA_FOLDER });
        const auto result = run (arguments);
        EXPECT_EQ (result.exitCode, 1) << result.output;
        EXPECT_TRUE (result.output.startsWith ("quilvane-host: there is no ")) << result.output;
        EXPECT_FALSE (file ("refused.png").exists());
    }
}

TEST_F (HostProgram, ProgramsThatCloseAtOnceLeaveOneWholeSettingsFile)
{
    const auto home = juce::SystemStats::getEnvironmentVariable ("HOME", {});
    setenv ("HOME", path ("home").toRawUTF8(), 1);
    std::array<juce::ChildProcess, 6> programs;

    for (auto& program : programs)
        ASSERT_TRUE (program.start ({ QUILVANE_HOST_PROGRAM, "info", "--plugin", QUILVANE_PLUGIN_FILE }));

    for (auto& program : programs)
    {
        program.readAllProcessOutput();
        EXPECT_TRUE (program.waitForProcessToFinish (patience));
        EXPECT_EQ (program.getExitCode(), 0u);
    }

    setenv ("HOME", home.toRawUTF8(), 1);

    // One file, and nothing of theirs beside it.
    const auto files = file ("home/.config/K7R Group/Quilvane 2").findChildFiles (juce::File::findFiles, false);
    ASSERT_EQ (files.size(), 1);
    const auto settings = juce::parseXML (files[0]);
    ASSERT_NE (settings, nullptr);
    EXPECT_EQ (settings->getStringAttribute ("application"), "Quilvane 2");
}

TEST_F (HostProgram, ScoreIsAMidiFileOfPianoAndDrums)
{
    const auto result = run ({ "score", path ("demo.mid") });
    ASSERT_EQ (result.exitCode, 0) << result.output;

    juce::FileInputStream stream (file ("demo.mid"));
    juce::MidiFile midi;
    ASSERT_TRUE (midi.readFrom (stream));

    midi.convertTimestampTicksToSeconds();
    EXPECT_NEAR (midi.getLastTimestamp(), 20.0, 0.1);

    int pianoNotes = 0, drumNotes = 0, programs = 0;

    for (int track = 0; track < midi.getNumTracks(); ++track)
        for (const auto* event : *midi.getTrack (track))
        {
            const auto& message = event->message;

            if (message.isProgramChange())
                programs += message.getChannel() == 1 && message.getProgramChangeNumber() == 4 ? 1 : 0;

            if (! message.isNoteOn())
                continue;

            ASSERT_NE (event->noteOffObject, nullptr) << "a note without an end";
            (message.getChannel() == 10 ? drumNotes : pianoNotes) += 1;
        }

    EXPECT_EQ (programs, 1);
    EXPECT_GT (pianoNotes, 80);
    EXPECT_GT (drumNotes, 120);
}
