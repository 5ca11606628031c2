// SPDX-License-Identifier: GPL-3.0-or-later

// What a plug-in finds when it starts and leaves when it ends: folders, settings, presets, maps.

#include <gtest/gtest.h>

#include "core/FrameworkIds.h"
#include "core/PluginAudioProcessor.h"
#include "support/BoundedXml.h"
#include "support/MessageLoop.h"
#include "support/PluginInTest.h"
#include "support/PortableEffect.h"
#include "support/Ticker.h"

using namespace K7R;
using namespace quilvane;

namespace
{

class Start : public testing::Test
{
protected:
    Start() : folder (juce::File::createTempFile ("start"))
    {
        folder.getChildFile ("Portable_user").createDirectory();
        folder.getChildFile ("Portable_data").createDirectory();
    }

    ~Start() override { folder.deleteRecursively(); }

    std::unique_ptr<PluginInTest> start (const juce::String& channel = "test") const
    {
        return std::make_unique<PluginInTest> (48000.0, 512, std::make_unique<PortableEffect> (folder, channel));
    }

    static BasePlugin& pluginOf (PluginInTest& instance) { return instance.processor.getPlugin(); }

    juce::File settingsFile() const { return folder.getChildFile ("Portable_user/Portable.ini"); }

    juce::File folder;
};

} // namespace

TEST_F (Start, FindsItsFoldersBesideItselfUnlessItIsARelease)
{
    const auto portable = start();
    auto& directories = pluginOf (*portable).getDirectories();
    EXPECT_EQ (directories.get ("UserData"), folder.getChildFile ("Portable_user"));
    EXPECT_EQ (directories.get ("AppData"), folder.getChildFile ("Portable_data"));
    EXPECT_TRUE (folder.getChildFile ("Portable_user/UserStore/Presets").isDirectory());
    EXPECT_FALSE (directories.add ("UserData", folder, false));
    EXPECT_EQ (directories.get ("nothing"), juce::File());

    const auto home = juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory);
    const auto release = start ("MASTER");
    EXPECT_EQ (pluginOf (*release).getDirectories().get ("UserData"), home.getChildFile ("K7R Group/Portable"));
    EXPECT_EQ (pluginOf (*release).getDirectories().get ("AppData"), juce::File ("/opt/K7R Group/Portable"));

    // Each of the two is chosen by itself.
    folder.getChildFile ("Portable_data").deleteRecursively();
    const auto half = start();
    EXPECT_EQ (pluginOf (*half).getDirectories().get ("UserData"), folder.getChildFile ("Portable_user"));
    EXPECT_EQ (pluginOf (*half).getDirectories().get ("AppData"), juce::File ("/opt/K7R Group/Portable"));
}

TEST_F (Start, NothingHearsOfAnInstanceBeforeItIsWhole)
{
    /** Changes a parameter while it's built, and lets messages run in between, as another instance's host may. */
    class Slow final : public TestEffect, private Ticker::Listener
    {
    public:
        Slow() : TestEffect (Quilvane::loadEmbeddedText) { ticker->add (*this); }
        ~Slow() override { ticker->remove (*this); }

        void createDspCore() override
        {
            TestEffect::createDspCore();
            auto& parameter = *getParameters().getParameter (parameterIds::feedback);
            parameter.addAsyncListener (&listener);
            parameter.setFloat (30.0f, true);

            // The relay's own ticks come no later than the second.
            const auto first = numTicks;
            EXPECT_TRUE (runMessageLoopUntil ([&] { return numTicks >= first + 4; }));
            callsWhileBuilt = listener.calls;
        }

        void tick() override { ++numTicks; }

        struct Listener final : Parameter::Listener
        {
            void parameterChanged (Parameter&) override { ++calls; }
            int calls = 0;
        };

        juce::SharedResourcePointer<Ticker> ticker;
        Listener listener;
        int numTicks = 0, callsWhileBuilt = 0;
    };

    auto effect = std::make_unique<Slow>();
    auto& slow = *effect;
    const PluginInTest instance (48000.0, 512, std::move (effect));
    EXPECT_EQ (slow.callsWhileBuilt, 0);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return slow.listener.calls > 0; }));
}

TEST_F (Start, KeepsTheSettingsOfTheInstanceThatClosedLast)
{
    {
        const auto first = start();
        first->parameter (frameworkIds::defaultRealTimeQuality).setInt (1, true);
        const auto second = start();
        second->parameter (frameworkIds::defaultOfflineQuality).setInt (1, true);
        EXPECT_EQ (second->parameter (frameworkIds::realTimeQuality).getInt(), 0);
    }

    // The order of destruction is the reverse: the first instance closed last.
    const auto third = start();
    EXPECT_EQ (third->parameter (frameworkIds::realTimeQuality).getString(), "High");
    EXPECT_EQ (third->parameter (parameterIds::processingQuality).getString(), "High");
    EXPECT_EQ (third->parameter (frameworkIds::offlineQuality).getString(), "Normal");

    const auto xml = parseBoundedXml (settingsFile());
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getStringAttribute ("application"), "Portable");
    EXPECT_EQ (xml->getChildByName ("MidiControlMap")->getStringAttribute ("default"), "no");
}

TEST_F (Start, LeavesSettingsThatItCannotReadUntilSomethingIsSet)
{
    for (const auto* unreadable : { "<UserSettings application='Portable'><", "<UserSettings application='Other'/>" })
    {
        settingsFile().replaceWithText (unreadable);
        start();
        EXPECT_EQ (settingsFile().loadFileAsString(), unreadable);

        start()->parameter (frameworkIds::defaultRealTimeQuality).setInt (1, true);
        EXPECT_EQ (start()->parameter (frameworkIds::realTimeQuality).getString(), "High");

        const auto kept = settingsFile().getSiblingFile ("Portable.ini.unreadable");
        EXPECT_EQ (kept.loadFileAsString(), unreadable);
        kept.deleteFile();
    }
}

TEST_F (Start, LoadsTheMapsThatTheSettingsPutInForce)
{
    const auto midi = folder.getChildFile ("a.ptccmap"), host = folder.getChildFile ("a.pthpmap");
    midi.replaceWithText ("<MidiControlMap name='Portable'><assign CC='7' param='FX'/></MidiControlMap>");
    host.replaceWithText ("<HostParametersMap name='Portable'><assign hostParam='1' pluginParam='FX'/>"
                          "</HostParametersMap>");

    const auto write = [&] (const juce::String& inForce, const juce::String& midiPath)
    {
        settingsFile().replaceWithText ("<UserSettings application='portable'><MidiControlMap default='" + inForce
                                        + "' file='" + midiPath + "'/><HostParametersMap default='" + inForce
                                        + "' file='" + host.getFullPathName() + "'/></UserSettings>");
    };

    write ("YES", midi.getFullPathName());
    {
        const auto instance = start();
        EXPECT_EQ (pluginOf (*instance).getMidiControlMap().getController (instance->parameter (parameterIds::fx)), 7);
        EXPECT_EQ (pluginOf (*instance).getHostParameterName (0), "FX");
    }

    // Written back as they were.
    EXPECT_TRUE (settingsFile().loadFileAsString().contains (midi.getFullPathName()));

    for (const auto& [inForce, path] : { std::pair { juce::String ("no"), midi.getFullPathName() },
                                         std::pair { juce::String ("yes"), juce::String ("relative") },
                                         std::pair { juce::String ("yes"), folder.getFullPathName() } })
    {
        write (inForce, path);
        const auto instance = start();
        EXPECT_EQ (pluginOf (*instance).getMidiControlMap().getController (instance->parameter (parameterIds::fx)), -1);
    }

    for (const auto& damaged : { std::string(), std::string ("<UserSettings application='Other'/>"),
                                 std::string ("<UserSettings"), std::string ("\xff\xfe\x3c"), std::string ("<a>\xf1") })
    {
        settingsFile().replaceWithData (damaged.data(), damaged.size());
        EXPECT_EQ (pluginOf (*start()).getHostParameterName (0), "LFO 1 Sync");
    }
}

TEST_F (Start, PlaysTheDefaultPresetOfTheFactoryAndTellsTheHostItsValuesAsDefaults)
{
    const auto package = folder.getChildFile ("Portable_data/Presets/The Factory Bank.k7rpkg");
    package.getParentDirectory().createDirectory();
    ASSERT_TRUE (juce::File (QUILVANE_FACTORY_BANK).copyFileTo (package));

    const auto instance = start();
    auto& plugin = pluginOf (*instance);
    EXPECT_EQ (instance->parameter (frameworkIds::presetName).getString(), "Colorful");
    EXPECT_EQ (plugin.getCurrentPreset().name, "Colorful");
    EXPECT_EQ (plugin.getDefaultPreset().name, "Init");
    EXPECT_FALSE (plugin.isPresetChanged());

    for (int id = 0; id < parameterIds::numPresetParameters; ++id)
        EXPECT_EQ (plugin.getHostParameterDefault (id), instance->parameter (id).getNormalised()) << id;

    // Every preset of the bank is listed with its tags, and loads.
    auto& factory = *plugin.getFactoryPresets();
    factory.reload();
    EXPECT_GE (factory.getItems().size(), 96u);

    for (const auto& item : factory.getItems())
    {
        EXPECT_FALSE (item->tags.isEmpty()) << item->name;
        EXPECT_TRUE (factory.loadItem (item->name)) << item->name;
        EXPECT_EQ (plugin.getCurrentPreset().name, item->name);
    }

    EXPECT_FALSE (factory.deleteItemFile ("Colorful"));
    EXPECT_FALSE (factory.removeItem (*factory.getItems().front()));
    EXPECT_TRUE (package.existsAsFile());

    // The project restores what it saved, whatever the factory has by then.
    juce::MemoryBlock chunk;
    instance->processor.getStateInformation (chunk);
    const auto name = plugin.getCurrentPreset().name;
    package.deleteFile();
    const auto restored = start();
    restored->processor.setStateInformation (chunk.getData(), static_cast<int> (chunk.getSize()));
    EXPECT_EQ (pluginOf (*restored).getCurrentPreset().name, name);
}

TEST_F (Start, ADamagedFactoryPackageGivesTheTablesValues)
{
    const auto package = folder.getChildFile ("Portable_data/Presets/My Factory.k7rpkg");
    package.getParentDirectory().createDirectory();

    for (const auto* content : { "", "PK", "rubbish" })
    {
        package.replaceWithText (content);
        const auto instance = start();
        ASSERT_NE (pluginOf (*instance).getFactoryPresets(), nullptr);
        pluginOf (*instance).getFactoryPresets()->reload();
        EXPECT_TRUE (pluginOf (*instance).getFactoryPresets()->getItems().empty());
        EXPECT_EQ (instance->parameter (frameworkIds::presetName).getString(), "Init");
    }

    package.deleteFile();
    EXPECT_EQ (pluginOf (*start()).getFactoryPresets(), nullptr);
}

TEST_F (Start, KnowsWhetherThePresetHasChanged)
{
    const auto instance = start();
    auto& plugin = pluginOf (*instance);
    auto& feedback = instance->parameter (parameterIds::feedback);
    EXPECT_FALSE (plugin.isPresetChanged());

    feedback.setFloat (30.0f, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return plugin.isPresetChanged(); }));
    feedback.setFloat (0.0f, true);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! plugin.isPresetChanged(); }));

    // Names and qualities are no part of a preset.
    instance->setText (frameworkIds::presetName, "other");
    instance->setText (frameworkIds::realTimeQuality, "High");
    runMessageLoopFor (60);
    EXPECT_FALSE (plugin.isPresetChanged());

    feedback.setFloat (30.0f, true);
    ASSERT_TRUE (plugin.getUserPresets()->createItemFile ("Mine", {}));
    EXPECT_TRUE (plugin.getUserPresets()->loadItem ("Mine"));
    runMessageLoopFor (60);
    EXPECT_FALSE (plugin.isPresetChanged());
    EXPECT_EQ (plugin.getCurrentPreset().name, "Mine");
    EXPECT_EQ (plugin.getDefaultPreset().name, "Init");

    plugin.loadPreset (plugin.getDefaultPreset());
    EXPECT_EQ (feedback.getFloat(), 0.0f);
    EXPECT_EQ (instance->parameter (frameworkIds::presetName).getString(), "Init");
}
