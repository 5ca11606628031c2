// SPDX-License-Identifier: GPL-3.0-or-later

// The skin "Light" as it is kept with the sources. The build packs and verifies it.

#include "skin/composite/ImageComboBox.h"
#include "support/BoundedXml.h"
#include "support/SkinInTest.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

constexpr int leastTarget = 16; // pixels that a mouse hits well

class LightSkin : public SkinTest
{
protected:
    LightSkin()
    {
        for (const auto& image : folder.findChildFiles (juce::File::findFiles, false, "*.png"))
        {
            juce::MemoryBlock bytes;
            EXPECT_TRUE (image.loadFileAsData (bytes));
            images.emplace_back (image.getFileName(), bytes);
        }

        for (const auto& name : names)
            parameter (name).setNormalised (0.5f, false);

        panel = buildDocument (document, images);
    }

    /** Notes which parameters change while something is done. */
    template <typename Action>
    void watch (Action action)
    {
        juce::Array<float> before;

        for (const auto& name : names)
            before.add (parameter (name).getNormalised());

        action();

        for (int i = 0; i < names.size(); ++i)
            if (parameter (names[i]).getNormalised() != before[i])
                moved.addIfNotAlreadyThere (names[i]);
    }

    /** Presses and drags every control but those that open a menu. */
    void moveAll (juce::Component& parent)
    {
        for (auto* child : parent.getChildren())
        {
            if (dynamic_cast<GFXPanel*> (child) != nullptr)
            {
                moveAll (*child);
                continue;
            }

            if (dynamic_cast<ImageComboBox*> (child) != nullptr)
            {
                boxes.push_back (child);
                continue;
            }

            const auto known = moved.size();
            watch ([&] { Mouse (*child).click(); });
            watch ([&] { Mouse (*child).dragBy ({ 40, -40 }); });

            for (const auto x : { child->getWidth() / 4, child->getWidth() * 3 / 4 }) // channels of a mixer
                watch (
                    [&]
                    {
                        Mouse (*child).press ({ x, child->getHeight() / 4 });
                        Mouse (*child).release ({ x, child->getHeight() / 4 });
                    });

            if (moved.size() > known)
            {
                EXPECT_GE (child->getWidth(), leastTarget) << child->getName();
                EXPECT_GE (child->getHeight(), leastTarget) << child->getName();
            }
        }
    }

    const juce::File folder = juce::File (QUILVANE_SKINS_FOLDER).getChildFile ("Light");
    const juce::String document = readBoundedText (folder.getChildFile ("skin.xml"));
    const juce::StringArray names {
        "LFO 1 Sync",    "LFO 1 Rate",         "LFO 1 Note Rate", "LFO 1 Note Scale", "LFO 1 Depth",
        "LFO 2 Sync",    "LFO 2 Rate",         "LFO 2 Note Rate", "LFO 2 Note Scale", "LFO 2 Depth",
        "Feedback",      "Stereo Phase",       "Stages Number",   "Center Frequency", "FX",
        "Output Volume", "Processing Quality",
    };
    SkinMembers images;
    juce::StringArray moved;
    std::vector<juce::Component*> boxes; // which open menus
};

} // namespace

TEST_F (LightSkin, ReachesEveryParameter)
{
    ASSERT_NE (panel, nullptr);
    EXPECT_EQ (panel->getBounds(), juce::Rectangle<int> (720, 320));

    moveAll (*panel);

    for (const auto& name : names)
        EXPECT_TRUE (moved.contains (name)) << name;

    ASSERT_EQ (boxes.size(), 2u);

    for (size_t i = 0; i < 2; ++i)
    {
        const auto before = pngBytes (paint (*boxes[i]));
        parameter (i == 0 ? "LFO 1 Waveform" : "LFO 2 Waveform").setInt (5, true);
        EXPECT_TRUE (runMessageLoopUntil ([&] { return pngBytes (paint (*boxes[i])) != before; })) << i;
    }
}

TEST_F (LightSkin, HasStripsOfWholeFrames)
{
    const auto tree = parseBoundedXml (document);
    ASSERT_NE (tree, nullptr);
    int strips = 0;

    const std::function<void (const juce::XmlElement&)> check = [&] (const juce::XmlElement& element)
    {
        const auto isOfMixer = element.hasTagName ("image");
        const auto name = element.getStringAttribute (isOfMixer ? "name" : "resource");

        if (name.isNotEmpty())
        {
            const auto image = juce::ImageFileFormat::loadFrom (folder.getChildFile (name));
            ASSERT_TRUE (image.isValid()) << name;
            const auto rows = element.hasAttribute ("fontHeight")
                                  ? 2 * element.getIntAttribute ("fontHeight")
                                  : element.getIntAttribute (isOfMixer ? "frames" : "framesNum", 1);
            EXPECT_EQ (image.getHeight() % rows, 0) << name;
            ++strips;
        }

        for (const auto* child : element.getChildIterator())
            check (*child);
    };

    check (*tree);
    EXPECT_GT (strips, 30);
}
