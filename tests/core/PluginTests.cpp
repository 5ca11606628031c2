// SPDX-License-Identifier: GPL-3.0-or-later

// The plug-in as its processor shows it: host parameters and their map, quality, state, bad input.

#include <limits>

#include <gtest/gtest.h>

#include "core/FrameworkIds.h"
#include "support/BoundedXml.h"
#include "support/PluginInTest.h"
#include "support/Signals.h"
#include "support/TestEffect.h"

using namespace K7R;
using namespace quilvane;

namespace
{

/** Hears what the host hears. */
struct HostListener : juce::AudioProcessorListener
{
    void audioProcessorParameterChanged (juce::AudioProcessor*, int index, float value) override
    {
        changes.emplace_back (index, value);
    }

    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override { ++displayUpdates; }
    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int index) override { begun = index; }
    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int index) override { ended = index; }

    std::vector<std::pair<int, float>> changes;
    int displayUpdates = 0;
    int begun = -1;
    int ended = -1;
};

class PluginFrame : public testing::Test
{
protected:
    PluginFrame() { plugin.processor.addListener (&host); }
    ~PluginFrame() override { plugin.processor.removeListener (&host); }

    BasePlugin& base() { return plugin.processor.getPlugin(); }

    void loadMap (const juce::String& assigns, const juce::String& name = "quilvane 2")
    {
        const auto xml = parseBoundedXml ("<hostparametersmap name='" + name + "'>" + assigns + "</hostparametersmap>");
        base().loadHostMapXml (*xml);
    }

    PluginInTest plugin;
    HostListener host;
};

} // namespace

TEST_F (PluginFrame, TellsTheHostOfChangesButNotOfItsOwn)
{
    plugin.set (parameterIds::feedback, 0.25f);
    EXPECT_TRUE (host.changes.empty());

    plugin.parameter (parameterIds::feedback).setFloat (50.0f, true);
    EXPECT_EQ (host.changes, (std::vector<std::pair<int, float>> { { parameterIds::feedback, 0.5f } }));

    // The quality isn't the host's.
    plugin.parameter (parameterIds::processingQuality).setInt (1, true);
    EXPECT_EQ (host.changes.size(), 1u);

    plugin.parameter (parameterIds::fx).beginGesture();
    plugin.parameter (parameterIds::processingQuality).beginGesture();
    plugin.parameter (parameterIds::fx).endGesture();
    EXPECT_EQ (host.begun, parameterIds::fx);
    EXPECT_EQ (host.ended, parameterIds::fx);
}

TEST_F (PluginFrame, AnswersNeutrallyBeyondItsParameters)
{
    auto& processor = plugin.processor;

    for (int index : { -1, 18, 127, 128, 256, 100000, std::numeric_limits<int>::max() })
    {
        EXPECT_EQ (base().getHostParameterName (index), juce::String());
        EXPECT_EQ (base().getHostParameterText (index), juce::String());
        EXPECT_EQ (base().getHostParameterValue (index), 0.0f);
        EXPECT_EQ (base().getHostParameterDefault (index), 0.0f);
        EXPECT_FALSE (processor.isParameterAutomatable (index));
        EXPECT_FALSE (processor.isMetaParameter (index));
        base().setHostParameterValue (index, 1.0f);
    }

    EXPECT_EQ (processor.getNumParameters(), 18);
    EXPECT_NEAR (base().getHostParameterDefault (parameterIds::centerFrequency), 0.3387f, 1.0e-4f);
    EXPECT_EQ (processor.getTailLengthSeconds(), 0.0);
    EXPECT_EQ (processor.getLatencySamples(), 0);
}

TEST_F (PluginFrame, AHostMapMovesParametersAndKeepsValuesOfEmptyIndexes)
{
    loadMap ("<assign hostParam='6' pluginParam='Feedback'/><assign hostParam='7' pluginParam='FX'/>"
             "<assign hostParam='1' pluginParam='FX'/><assign hostParam='0' pluginParam='LFO 1 Sync'/>"
             "<assign hostParam='19' pluginParam='LFO 1 Rate'/><assign hostParam='6' pluginParam='no such'/>"
             "<assign hostParam='3' pluginParam='Preset Name'/><assign pluginParam='LFO 2 Rate'/>"
             "<assign hostParam='-2147483648' pluginParam='LFO 1 Sync'/>");

    EXPECT_EQ (base().getHostParameterName (0), "FX");
    EXPECT_EQ (base().getHostParameterName (6), "Parameter 7"); // FX moved on
    EXPECT_EQ (base().getHostParameterName (5), "Parameter 6"); // cleared by an unknown name
    EXPECT_EQ (base().getHostParameterName (2), "Parameter 3"); // not automatable
    EXPECT_EQ (base().getHostIndex (plugin.parameter (parameterIds::lfo1Sync)), HostParameterMap::unmapped);
    EXPECT_EQ (base().getHostIndex (plugin.parameter (parameterIds::lfo1Rate)), HostParameterMap::unmapped);
    EXPECT_GT (host.displayUpdates, 0);

    plugin.set (0, 0.25f);
    EXPECT_EQ (plugin.parameter (parameterIds::fx).getNormalised(), 0.25f);
    plugin.set (5, 0.123456789f);
    EXPECT_EQ (base().getHostParameterValue (5), 0.123456789f);
    EXPECT_EQ (base().getHostParameterText (5), "0.12345679");

    // Maps of others are ignored.
    loadMap ("<assign hostParam='1' pluginParam='Feedback'/>", "Other");
    EXPECT_EQ (base().getHostParameterName (0), "FX");
    base().loadHostMapXml (*parseBoundedXml ("<MidiControlMap name='Quilvane 2'/>"));
    EXPECT_EQ (base().getHostParameterName (0), "FX");

    loadMap ({});
    EXPECT_EQ (base().getHostParameterName (0), "Parameter 1");
}

//==============================================================================
TEST_F (PluginFrame, QualityFollowsTheModeAtTheRightMoments)
{
    auto& quality = plugin.parameter (parameterIds::processingQuality);
    auto& realTime = plugin.parameter (frameworkIds::realTimeQuality);
    auto& offline = plugin.parameter (frameworkIds::offlineQuality);
    std::vector<float> left (64), right (64);

    // The live quality takes effect at once, that of new instances never, the offline one with the mode.
    realTime.setInt (1, true);
    EXPECT_EQ (quality.getString(), "High");
    realTime.setInt (0, true);
    EXPECT_EQ (quality.getString(), "Normal");
    plugin.parameter (frameworkIds::defaultRealTimeQuality).setInt (1, true);
    plugin.parameter (frameworkIds::defaultOfflineQuality).setInt (1, true);
    offline.setInt (1, true);
    plugin.process (left, right);
    EXPECT_EQ (quality.getString(), "Normal");

    // A bypassed block in between doesn't look, and loses nothing.
    plugin.processor.setNonRealtime (true);
    plugin.process (left, right, true);
    EXPECT_EQ (quality.getString(), "Normal");
    plugin.process (left, right);
    EXPECT_EQ (quality.getString(), "High");

    // A change of the offline quality while offline waits for the next preparation.
    offline.setInt (0, true);
    plugin.process (left, right);
    EXPECT_EQ (quality.getString(), "High");
    plugin.prepare();
    EXPECT_EQ (quality.getString(), "Normal");

    offline.setInt (1, true);
    plugin.prepare();
    plugin.processor.setNonRealtime (false);
    plugin.process (left, right);
    EXPECT_EQ (quality.getString(), "Normal");
}

TEST (EmbeddedTable, MissingOrMalformedLeavesAPluginThatPassesAudio)
{
    struct Bare : TestEffect
    {
        explicit Bare (const juce::String& table) :
            TestEffect ([table] (const juce::String& name)
                        { return name == "parameters.xml" ? table : juce::String(); })
        {
        }

        int getNumPresetParameters() const override { return 1; }
    };

    const std::pair<const char*, int> tables[] {
        { "", 0 },
        { "<PluginParameters><param index='0' name='a'", 0 },
        { "<Other/>", 0 },
        { "<PluginParameters><param index='0' name='a'/></PluginParameters>", 0 }, // not automatable
        { "<PluginParameters><param index='0' name='a' auto='true'/>"
          "<param index='1' name='b' auto='true'/></PluginParameters>",
          1 },
        { "<PluginParameters><param index='3' name='Processing Quality' type='enum' enum='a;b' value='a'/>"
          "<param index='4' name='Offline Processing Quality' type='string'/></PluginParameters>",
          0 },
    };

    for (const auto& [table, numParameters] : tables)
    {
        SCOPED_TRACE (table);
        PluginInTest plugin (48000.0, 64, std::make_unique<Bare> (table));
        EXPECT_EQ (plugin.processor.getNumParameters(), numParameters);
        EXPECT_EQ (plugin.parameter (frameworkIds::presetName).getString(), "Init");

        const auto input = signals::noise (256, 2);
        EXPECT_EQ (plugin.render (input), input);

        juce::MemoryBlock chunk;
        plugin.processor.getStateInformation (chunk);
        plugin.processor.setStateInformation (chunk.getData(), static_cast<int> (chunk.getSize()));
    }
}

//==============================================================================
TEST_F (PluginFrame, AStateThatLacksAParameterGivesItsDefault)
{
    const auto restore = [this] (const juce::String& xml)
    {
        juce::MemoryBlock chunk;
        juce::AudioProcessor::copyXmlToBinary (*juce::parseXML (xml), chunk);
        plugin.processor.setStateInformation (chunk.getData(), static_cast<int> (chunk.getSize()));
    };

    plugin.set (parameterIds::feedback, 0.9f);
    plugin.set (parameterIds::fx, 0.1f);
    plugin.parameter (frameworkIds::realTimeQuality).setInt (1, true);

    restore ("<pluginstate application='QUILVANE 2'><ParametersState><Preset name='Mine'><Parameters>"
             "<param name='FX' value='40'/><param name='unknown' value='1'/>"
             "<param name='Processing Quality' value='Normal'/><param name='Preset Name' value='x'/>"
             "</Parameters></Preset></ParametersState></pluginstate>");

    EXPECT_EQ (plugin.parameter (parameterIds::fx).getFloat(), 40.0f);
    EXPECT_EQ (plugin.parameter (parameterIds::feedback).getFloat(), 0.0f);
    EXPECT_EQ (plugin.parameter (frameworkIds::presetName).getString(), "Mine");
    EXPECT_EQ (plugin.parameter (frameworkIds::realTimeQuality).getString(), "High");
    EXPECT_EQ (plugin.parameter (parameterIds::processingQuality).getString(), "High");

    restore ("<PluginState application='Other'><ParametersState><Preset/></ParametersState></PluginState>");
    EXPECT_EQ (plugin.parameter (parameterIds::fx).getFloat(), 40.0f);
}

TEST_F (PluginFrame, AnybodyMayAskWhetherAPresetIsBeingLoaded)
{
    struct Witness : Parameter::Listener
    {
        explicit Witness (BasePlugin& p) : plugin (p) {}

        void parameterChanged (Parameter&) override { sawLoad = plugin.isLoadingPreset(); }

        BasePlugin& plugin;
        bool sawLoad = false;
    } witness (plugin.processor.getPlugin());

    auto& parameter = plugin.parameter (parameterIds::fx);
    parameter.addListener (&witness);
    parameter.setNormalised (0.25f, true);
    EXPECT_FALSE (witness.sawLoad);

    auto& owner = plugin.processor.getPlugin();
    owner.loadPreset (owner.getDefaultPreset());
    EXPECT_TRUE (witness.sawLoad);
    EXPECT_FALSE (owner.isLoadingPreset());
    parameter.removeListener (&witness);
}

TEST_F (PluginFrame, RecoversFromInputThatIsNotFiniteWithTheNextPreparation)
{
    plugin.set (parameterIds::feedback, 1.0f);
    plugin.set (parameterIds::stagesNumber, 1.0f);

    for (auto poison : { std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                         -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::max() })
    {
        for (auto* quality : { "Normal", "High" })
        {
            plugin.setText (frameworkIds::realTimeQuality, quality);
            auto input = signals::noise (4096, 4);
            input[1000] = poison;
            plugin.render (input);

            // At the same rate, so that nothing but the broken states is cleared.
            plugin.prepare();
            const auto output = plugin.render (signals::noise (48000, 5));

            for (auto sample : output)
                ASSERT_TRUE (std::isfinite (sample)) << poison;

            EXPECT_NEAR (signals::rms (output, 24000, 24000), 0.3, 0.2) << poison;
        }
    }
}

TEST_F (PluginFrame, AFreshPreparationAtTheSameRateDoesNotDisturbTheSound)
{
    PluginInTest other;

    for (auto* p : { &plugin, &other })
        p->set (parameterIds::lfo1Depth, 0.5f);

    // The states are looked at and go on, which can round the network's output the other way.
    const auto input = signals::noise (8192, 6);
    EXPECT_EQ (plugin.render (input), other.render (input));
    other.prepare();
    const auto undisturbed = plugin.render (input), output = other.render (input);

    for (size_t i = 0; i < input.size(); ++i)
        ASSERT_LE (signals::ulpDistance (output[i], undisturbed[i]), 1) << i;
}
