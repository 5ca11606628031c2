// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include "parameters/FloatParameter.h"
#include "parameters/MidiControlMap.h"
#include "parameters/ParameterManager.h"

using namespace K7R;

namespace
{

class ControlMap : public testing::Test, private MidiControlMap::Listener
{
protected:
    ControlMap()
    {
        for (int id = 0; id < 4; ++id)
        {
            auto parameter = std::make_unique<FloatParameter> (id, "P" + juce::String (id), 0.0f, 1.0f, 0.25f);
            parameter->setAutomatable (id != 3);
            manager.addParameter (std::move (parameter));
        }

        map.setName ("Product");
        map.addListener (this);
    }

    Parameter& p (int id) { return *manager.getParameter (id); }
    void control (int number, int value)
    {
        map.handleController (juce::MidiMessage::controllerEvent (5, number, value));
    }

    /** The ids at the controllers 10 to 13; -1 for none. */
    std::vector<int> places() const
    {
        std::vector<int> result;

        for (int i = 10; i < 14; ++i)
            result.push_back (map.getParameter (i) != nullptr ? map.getParameter (i)->getId() : -1);

        return result;
    }

    bool load (const juce::String& xml) { return map.loadFromXml (juce::parseXML (xml).get()); }

    ParameterManager manager;
    MidiControlMap map { manager };
    int moved = 0;

private:
    void controllerMoved (MidiControlMap&, Parameter&) override { ++moved; }
};

using Places = std::vector<int>;

} // namespace

TEST_F (ControlMap, MovesTheParameterAtTheController)
{
    control (10, 127);
    EXPECT_EQ (moved, 0);
    EXPECT_TRUE (map.takeActivity());
    EXPECT_FALSE (map.takeActivity());

    map.assign (p (0), 10);
    control (10, 127);
    EXPECT_EQ (p (0).getNormalised(), 1.0f);
    control (10, 0);
    EXPECT_EQ (p (0).getNormalised(), 0.0f);
    control (10, 64);
    EXPECT_FLOAT_EQ (p (0).getNormalised(), 64.0f / 127.0f);
    EXPECT_EQ (moved, 3);

    // A parameter sits at one controller, and a controller has one parameter.
    map.assign (p (0), 11);
    EXPECT_EQ (places(), (Places { -1, 0, -1, -1 }));
    map.assign (p (1), 11);
    EXPECT_EQ (places(), (Places { -1, 1, -1, -1 }));
    EXPECT_EQ (map.getController (p (0)), MidiControlMap::noController);
    map.assign (p (1), MidiControlMap::noController);
    EXPECT_EQ (places(), (Places { -1, -1, -1, -1 }));

    const juce::uint8 beyond[] { 0xb0, 200, 127 };
    map.handleController (juce::MidiMessage (beyond, 3));
    EXPECT_EQ (moved, 3);
    EXPECT_EQ (places(), (Places { -1, -1, -1, -1 }));
}

TEST_F (ControlMap, LearnsTheLastControllerMoved)
{
    map.assign (p (1), 10);
    map.startLearn (p (0));
    EXPECT_EQ (map.getLearnParameter(), &p (0));

    control (10, 127);
    EXPECT_EQ (places(), (Places { 0, -1, -1, -1 }));
    EXPECT_EQ (p (0).getNormalised(), 1.0f);
    control (11, 0);
    EXPECT_EQ (places(), (Places { 1, 0, -1, -1 }));
    control (11, 64);
    EXPECT_EQ (places(), (Places { 1, 0, -1, -1 }));

    map.stopLearn();
    control (12, 64);
    EXPECT_EQ (places(), (Places { 1, 0, -1, -1 }));

    // Learning anew starts from where the parameter sits.
    map.startLearn (p (0));
    control (12, 1);
    EXPECT_EQ (places(), (Places { 1, -1, 0, -1 }));
}

TEST_F (ControlMap, CancellingRestoresAllThatLearningOverwrote)
{
    map.assign (p (1), 10);
    map.assign (p (2), 11);
    map.startLearn (p (0));
    control (10, 1);
    map.startLearn (p (2)); // keeps the first snapshot
    control (12, 1);
    EXPECT_EQ (places(), (Places { 0, -1, 2, -1 }));

    map.cancelLearn();
    EXPECT_EQ (places(), (Places { 1, 2, -1, -1 }));
    EXPECT_EQ (map.getLearnParameter(), nullptr);

    // Learning the same parameter again is a new learn.
    map.startLearn (p (0));
    control (10, 1);
    EXPECT_EQ (places(), (Places { 0, 2, -1, -1 }));
    map.cancelLearn();

    // A map that comes in ends the learn, and cancelling doesn't take it away.
    map.startLearn (p (0));
    load ("<MidiControlMap name='Product'><assign CC='13' param='P1'/></MidiControlMap>");
    map.cancelLearn();
    EXPECT_EQ (places(), (Places { -1, -1, -1, 1 }));
    load ("<MidiControlMap name='Product'><assign CC='10' param='P1'/><assign CC='11' param='P2'/></MidiControlMap>");

    // Without a learn in progress there is nothing to restore.
    map.assign (p (0), 13);
    map.cancelLearn();
    EXPECT_EQ (places(), (Places { 1, 2, -1, 0 }));
}

TEST_F (ControlMap, ReadsItsOwnDocumentsAndNoOthers)
{
    load ("<midiccmap application='product'><assign CC='10' param='P0'/><assign CC='10' param='P1'/>"
          "<assign CC='11' param='P3'/><assign CC='128' param='P2'/><assign CC='-1' param='P2'/>"
          "<assign CC='12' param='nothing'/><assign param='P2'/></midiccmap>");
    EXPECT_EQ (places(), (Places { 1, -1, -1, -1 }));
    EXPECT_EQ (map.getController (p (2)), 0);

    for (const auto* other : { "<MidiControlMap name='Other'><assign CC='10' param='P0'/></MidiControlMap>",
                               "<HostParametersMap name='Product'/>", "<MidiControlMap/>", "" })
    {
        EXPECT_FALSE (load (other));
        EXPECT_EQ (places(), (Places { 1, -1, -1, -1 })) << other;
    }

    const auto xml = map.createXml();
    MidiControlMap copy (manager);
    copy.setName ("PRODUCT");
    copy.loadFromXml (xml.get());
    EXPECT_EQ (copy.getController (p (1)), 10);
    EXPECT_EQ (copy.getController (p (2)), 0);

    const juce::TemporaryFile file;

    for (const auto* text : { "", "<MidiControlMap name='Product'><assign", "<MidiControlMap name='Other'/>" })
    {
        file.getFile().replaceWithText (text);
        EXPECT_FALSE (map.loadFromFile (file.getFile())) << text;
        EXPECT_EQ (places(), (Places { 1, -1, -1, -1 })) << text;
    }

    EXPECT_FALSE (map.loadFromFile (juce::File()));
    file.getFile().replaceWithText ("<MidiControlMap name='Product'><assign CC='11' param='P0'/></MidiControlMap>");
    EXPECT_TRUE (map.loadFromFile (file.getFile()));
    EXPECT_EQ (places(), (Places { -1, 0, -1, -1 }));
    EXPECT_TRUE (load ("<MidiControlMap name='Product'/>"));
    EXPECT_EQ (places(), (Places { -1, -1, -1, -1 }));
}

TEST_F (ControlMap, GoesBackToASnapshotUnlessAWholeMapCameIn)
{
    map.assign (p (1), 10);
    map.assign (p (2), 11);
    const auto snapshot = map.takeSnapshot();

    map.startLearn (p (0));
    control (10, 1);
    map.assign (p (2), MidiControlMap::noController);
    map.restore (snapshot);
    EXPECT_EQ (places(), (Places { 1, 2, -1, -1 }));
    EXPECT_EQ (map.getLearnParameter(), nullptr);
    control (12, 1);
    EXPECT_EQ (places(), (Places { 1, 2, -1, -1 }));

    // What isn't a map changes nothing, and so doesn't count.
    load ("<MidiControlMap name='Other'/>");
    map.assign (p (0), 13);
    map.restore (snapshot);
    EXPECT_EQ (places(), (Places { 1, 2, -1, -1 }));

    load ("<MidiControlMap name='Product'><assign CC='13' param='P1'/></MidiControlMap>");
    map.startLearn (p (0));
    map.restore (snapshot);
    EXPECT_EQ (places(), (Places { -1, -1, -1, 1 }));
}
