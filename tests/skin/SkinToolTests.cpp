// SPDX-License-Identifier: GPL-3.0-or-later

// The program that draws, packs, unpacks and verifies skins, run as people run it. The build gives its path as
// QUILVANE_SKIN_PROGRAM, and the sources of the product's skins as QUILVANE_SKINS_FOLDER.

#include <gtest/gtest.h>

#include "support/SkinBytes.h"

namespace
{

using namespace quilvane::test;

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
