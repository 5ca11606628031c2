// SPDX-License-Identifier: GPL-3.0-or-later

// The program that draws, packs, unpacks and verifies skins, run as people run it. The build gives its path as
// QUILVANE_SKIN_PROGRAM, and the sources of the product's skins as QUILVANE_SKINS_FOLDER.

#include <gtest/gtest.h>

#include "support/GalleryImages.h"

namespace
{

using namespace K7R::test;

struct Result
{
    int exitCode;
    juce::String output; // of both streams
};

class SkinTool : public testing::Test
{
protected:
    SkinTool() { EXPECT_TRUE (folder.createDirectory().wasOk()); }
    ~SkinTool() override { folder.deleteRecursively(); }

    juce::File file (const juce::String& name) const { return folder.getChildFile (name); }
    juce::String path (const juce::String& name) const { return file (name).getFullPathName(); }

    static Result run (juce::StringArray arguments)
    {
        arguments.insert (0, QUILVANE_SKIN_PROGRAM);

        juce::ChildProcess process;
        EXPECT_TRUE (process.start (arguments));
        const auto output = process.readAllProcessOutput().replace ("JUCE v7.0.5\n", {});
        EXPECT_TRUE (process.waitForProcessToFinish (60000));
        return { static_cast<int> (process.getExitCode()), output };
    }

    static void expectRefusal (const juce::StringArray& arguments)
    {
        const auto result = run (arguments);
        EXPECT_EQ (result.exitCode, 1) << result.output;
        EXPECT_TRUE (result.output.startsWith ("quilvane-skin: ")) << result.output;
        EXPECT_EQ (juce::StringArray::fromLines (result.output.trim()).size(), 1) << result.output;
    }

    /** A folder with a document that names one image in a folder of its own. */
    void writeSources() const
    {
        file ("Plain/images").createDirectory();
        file ("Plain/skin.xml")
            .replaceWithText (makeDocument ({}, "<gfx resource=\"images/back.png\"/><size width=\"9\"/>"));
        const auto image = pngBytes (makeStrip (20, 10, 1));
        file ("Plain/images/back.png").replaceWithData (image.getData(), image.getSize());
    }

    void writeSkin (const juce::String& name, const SkinMembers& members) const
    {
        const auto skin = makeSkinFile (name, makeZip (members));
        file (name + ".k7rskin").replaceWithData (skin.getData(), skin.getSize());
    }

    static juce::MemoryBlock contentOf (const juce::File& f)
    {
        juce::MemoryBlock data;
        EXPECT_TRUE (f.loadFileAsData (data)) << f.getFullPathName();
        return data;
    }

    const juce::File folder = juce::File::createTempFile ({}).withFileExtension ({}).getNonexistentSibling();
};

} // namespace

TEST_F (SkinTool, PacksVerifiesAndUnpacksAFolder)
{
    writeSources();
    file ("Plain/.hidden").replaceWithText ("left out");

    for (const auto* name : { "A.k7rskin", "B.k7rskin" })
        EXPECT_EQ (run ({ "pack", path ("Plain"), path (name) }).exitCode, 0);

    const auto verified = run ({ "verify", path ("A.k7rskin") });
    EXPECT_EQ (verified.exitCode, 0) << verified.output;
    EXPECT_TRUE (verified.output.contains ("2 members, 1 images")) << verified.output;

    EXPECT_EQ (run ({ "unpack", path ("A.k7rskin"), path ("Again") }).exitCode, 0);
    EXPECT_EQ (contentOf (file ("Again/skin.xml")), contentOf (file ("Plain/skin.xml")));
    EXPECT_EQ (contentOf (file ("Again/images/back.png")), contentOf (file ("Plain/images/back.png")));
    EXPECT_FALSE (file ("Again/.hidden").exists());

    // The same files give the same bytes under the same name, and a renamed skin is none.
    const auto first = contentOf (file ("A.k7rskin"));
    file ("Plain/skin.xml").setLastModificationTime (juce::Time (2001, 1, 1, 1, 1));
    EXPECT_EQ (run ({ "pack", path ("Again"), path ("A.k7rskin") }).exitCode, 0);
    EXPECT_EQ (contentOf (file ("A.k7rskin")), first);
    file ("A.k7rskin").moveFileTo (file ("C.k7rskin"));
    expectRefusal ({ "verify", path ("C.k7rskin") });
}

TEST_F (SkinTool, WritesNothingOutsideTheFolder)
{
    for (const auto* name : { "../out.txt", "/quilvane-out.txt", "a/../../out.txt", "~out", "a\\..\\out", ".hidden", "",
                              "a//b", "C:out", "skin.xml/..", "SKIN.XML" })
    {
        writeSkin ("Bad", { { "skin.xml", textBytes ("<PluginEditor/>") }, { name, textBytes ("x") } });
        expectRefusal ({ "unpack", path ("Bad.k7rskin"), path ("Bad") });
        EXPECT_FALSE (file ("Bad").exists()) << name; // not even a part
        EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1) << name;
    }

    // Nor over what is there.
    writeSources();
    EXPECT_EQ (run ({ "pack", path ("Plain"), path ("A.k7rskin") }).exitCode, 0);
    file ("Mine").createDirectory();
    file ("Mine/skin.xml").replaceWithText ("mine");
    expectRefusal ({ "unpack", path ("A.k7rskin"), path ("Mine") });
    EXPECT_EQ (file ("Mine/skin.xml").loadFileAsString(), "mine");
}

TEST_F (SkinTool, VerifyNamesWhatIsWrong)
{
    const auto good = textBytes (makeDocument ({}, "<gfx resource=\"a.png\"/>"));
    const auto image = pngBytes (makeStrip (20, 10, 1));
    auto cutOff = image;
    cutOff.setSize (image.getSize() / 2);

    const std::pair<SkinMembers, const char*> cases[] {
        { { { "a.png", image } }, "skin.xml" },
        { { { "skin.xml", textBytes ("<PluginEditor") } }, "document" },
        { { { "skin.xml", textBytes ("<Other/>") } }, "document" },
        { { { "skin.xml", good } }, "a.png" },
        { { { "skin.xml", good }, { "a.png", cutOff } }, "a.png" },
        { { { "skin.xml", good }, { "a.png", textBytes ("no image") } }, "a.png" },
    };

    for (const auto& [members, expected] : cases)
    {
        writeSkin ("Bad", members);
        const auto result = run ({ "verify", path ("Bad.k7rskin") });
        EXPECT_EQ (result.exitCode, 1) << expected;
        EXPECT_TRUE (result.output.contains (expected)) << result.output;
    }

    writeSkin ("Bad", { { "skin.xml", good }, { "a.png", image } });
    EXPECT_EQ (run ({ "verify", path ("Bad.k7rskin") }).exitCode, 0);
    auto bytes = contentOf (file ("Bad.k7rskin"));
    ++bytes[bytes.getSize() / 2];
    file ("Bad.k7rskin").replaceWithData (bytes.getData(), bytes.getSize());
    expectRefusal ({ "verify", path ("Bad.k7rskin") });
    expectRefusal ({ "verify", path ("missing.k7rskin") });
    expectRefusal ({ "pack", path ("missing"), path ("A.k7rskin") });
    expectRefusal ({ "draw", path ("missing"), path ("Out"), "--size", "Big" });
}

TEST_F (SkinTool, VerifyTellsEachThingThatThePluginCantShowAndWhereItIs)
{
    const char* document = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- A comment of <two>
     lines. --><PluginEditor>
  <Fonts><font typeface="Face" file="skin.xml"/></Fonts>
  <Panel name="MainPanel">
    <controls>
      <Knbo name="Rate"/>
      <Knob name="Depth" parmReset="true"><gfx resource="missing.png"/><Pos/>
        <links>
          <link param="Dpeth" as="connectedTo"/>
          <link param="FX"/>
        </links>
      </Knob>
      <Button>
        <actions><action type="onClick" event="Optoins"/>
          <action type="onclick" event="Options"/></actions>
      </Button>
      <Switch><gfx resource="one.png" framesNum="11"/></Switch>
      <Display><gfx resource="one.png" fontHeight="6"/></Display>
      <Mixer background="back.png"><gfx><image strip="slider" name="slider.png"/></gfx>
        <parameters><param name="Volume"/></parameters></Mixer>
      <ImageComboBox><Size width="9"/><gfx resource="box.png"/></ImageComboBox>
      <MidiKeyboard><Keys><Key>
        <gfx resource="key.png"/></Key></Keys></MidiKeyboard>
      <PatternNumberDisplay name="Pattern"><gfx thirdDigit="digit.png"/></PatternNumberDisplay>
      <NumericDisplay><gfx>
        <digits resource="broken.png"/></gfx></NumericDisplay>
      <Knob name="Good"><size width="9" height="9"/><gfx framesNum="8"/></Knob>
    </controls>
  </Panel>
</PluginEditor>)";

    const auto image = pngBytes (makeStrip (20, 10, 1));
    auto broken = image;
    broken.setSize (image.getSize() - 20);
    writeSkin ("Bad", { { "skin.xml", textBytes (document) }, { "one.png", image }, { "broken.png", broken } });

    const auto result = run ({ "verify", path ("Bad.k7rskin") });
    auto lines = juce::StringArray::fromLines (result.output.trim());
    EXPECT_EQ (result.exitCode, 1);

    const std::pair<const char*, const char*> expected[] {
        { ":4: font: ", "\"skin.xml\"" },
        { ":5: Panel \"MainPanel\": ", "size" },
        { ":7: Knbo \"Rate\": ", "no such control" },
        { ":8: Knob \"Depth\": ", "\"parmReset\"" },
        { ":8: Knob \"Depth\", gfx: ", "\"missing.png\"" },
        { ":10: Knob \"Depth\", link: ", "no parameter \"Dpeth\"" },
        { ":11: Knob \"Depth\", link: ", "connectedTo" },
        { ":15: Panel \"MainPanel\", action: ", "no event \"Optoins\"" },
        { ":16: Panel \"MainPanel\", action: ", "\"onclick\"" },
        { ":18: Panel \"MainPanel\", gfx: ", "11 frames" },
        { ":19: Panel \"MainPanel\", gfx: ", "\"fontHeight\"" },
        { ":20: Panel \"MainPanel\", Mixer: ", "\"back.png\"" },
        { ":20: image \"slider.png\": ", "no image" },
        { ":21: param \"Volume\": ", "no parameter" },
        { ":22: Panel \"MainPanel\", Size: ", "nothing" },
        { ":22: Panel \"MainPanel\", gfx: ", "\"box.png\"" },
        { ":24: Panel \"MainPanel\", gfx: ", "\"key.png\"" },
        { ":25: PatternNumberDisplay \"Pattern\", gfx: ", "\"digit.png\"" },
        { ":27: Panel \"MainPanel\", digits: ", "\"broken.png\" is damaged" },
    };

    // Debug builds of the framework tell of a tag in another case.
    for (int i = lines.size(); --i >= 0;)
        if (lines[i].startsWith ("JUCE Assertion"))
            lines.remove (i);

    ASSERT_EQ (lines.size(), static_cast<int> (std::size (expected)) + 1) << result.output;

    for (int i = 0; i < lines.size() - 1; ++i)
    {
        EXPECT_TRUE (lines[i].startsWith (juce::String ("skin.xml") + expected[i].first)) << lines[i];
        EXPECT_TRUE (lines[i].contains (expected[i].second)) << lines[i];
    }

    EXPECT_EQ (lines[lines.size() - 1], "quilvane-skin: Bad.k7rskin has 19 problems");
}

TEST_F (SkinTool, VerifyFindsNothingInASkinWithEveryControl)
{
    auto members = GalleryImages::drawAll();
    members.emplace_back ("Gallery.ttf", contentOf (juce::File (QUILVANE_FONT)));
    members.emplace_back ("skin.xml", contentOf (juce::File (QUILVANE_GALLERY_FOLDER).getChildFile ("skin.xml")));
    writeSkin ("Gallery", members);

    const auto result = run ({ "verify", path ("Gallery.k7rskin") });
    EXPECT_EQ (result.exitCode, 0) << result.output;
}

TEST_F (SkinTool, VerifyKnowsTheBoundsOfTheWholeSkin)
{
    const auto document = [] (const juce::String& controls) {
        return textBytes (
            makeDocument ({}, "<size width=\"300\" height=\"200\"/><controls>" + controls + "</controls>"));
    };

    const auto countProblems = [&] (const SkinMembers& members, const char* expected)
    {
        writeSkin ("Large", members);
        const auto result = run ({ "verify", path ("Large.k7rskin") });
        EXPECT_EQ (result.exitCode, result.output.contains ("problem") ? 1 : 0);
        EXPECT_TRUE (result.output.contains (expected)) << result.output.substring (0, 1000);
        return juce::StringArray::fromLines (result.output.trim()).size() - 1;
    };

    // Two megapixels each: those of one name are one image, but of 24 that differ, two find no room.
    const auto strip = pngBytes (makeStrip (150, 150, 101));
    SkinMembers members;
    juce::String same, different;

    for (int i = 0; i < 24; ++i)
    {
        const juce::String name (i);
        members.emplace_back (name, strip);
        different << "<Knob><gfx resource=\"" << name << "\" framesNum=\"101\"/></Knob>";
        same << "<Knob><gfx resource=\"0\" framesNum=\"101\"/></Knob>";
    }

    auto fitting = members;
    fitting.emplace_back ("skin.xml", document (same));
    EXPECT_EQ (countProblems (fitting, "25 members, 1 images"), 0);
    members.emplace_back ("skin.xml", document (different));
    EXPECT_EQ (countProblems (members, "leave it no room"), 2);

    // Skins of few bytes that take much painting, or much building.
    const auto knobs = juce::String::repeatedString ("<Knob><size width=\"4096\" height=\"4096\"/></Knob>", 100);
    EXPECT_EQ (countProblems ({ { "skin.xml", document (knobs) } }, "cover the panel more than 16 times"), 84);

    const auto channels = juce::String::repeatedString ("<param name=\"FX\"/>", 2100);
    EXPECT_EQ (countProblems ({ { "skin.xml", document ("<Mixer><parameters>" + channels + "</parameters></Mixer>") } },
                              "more than 2000 controls"),
               1);

    juce::String tags;

    for (int i = 0; i < 40000; ++i)
        tags << "<t" << i << "x/>";

    EXPECT_EQ (countProblems ({ { "skin.xml", document (tags) } }, "holds more than may be read"), 1);
}

// The build has drawn both skins already, which takes minutes under sanitizers.
#if ! QUILVANE_SANITIZED

TEST_F (SkinTool, DrawsTheProductsSkinsAlikeEachTime)
{
    constexpr int least = 101; // frames of a knob

    for (const auto* out : { "Small", "Again" })
        ASSERT_EQ (run ({ "draw", QUILVANE_SKINS_FOLDER, path (out), "--size", "Small" }).exitCode, 0);

    const auto files = file ("Small").findChildFiles (juce::File::findFiles, false);
    EXPECT_GT (files.size(), 25);

    for (const auto& f : files)
        EXPECT_EQ (contentOf (f), contentOf (file ("Again").getChildFile (f.getFileName()))) << f.getFileName();

    const auto document = juce::parseXML (file ("Small/skin.xml"));
    ASSERT_NE (document, nullptr);

    for (const auto* control :
         document->getChildByName ("Panel")->getChildByName ("controls")->getChildWithTagNameIterator ("Knob"))
        EXPECT_GE (control->getChildByName ("gfx")->getIntAttribute ("framesNum"), least)
            << control->getStringAttribute ("name");

    expectRefusal ({ "draw", QUILVANE_SKINS_FOLDER, path ("Out"), "--size", "Huge" });
}

#endif
