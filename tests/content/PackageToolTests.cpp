// SPDX-License-Identifier: GPL-3.0-or-later

// Packages as files: what the package tool makes of a folder. The build gives the path of its program as
// QUILVANE_PACKAGE_PROGRAM.

#include <cstdlib>
#include <ctime>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "Failure.h"
#include "PackageBuilder.h"
#include "PresetFolder.h"
#include "content/PackageFile.h"

namespace
{

using namespace K7R;
using namespace K7R::package;

constexpr auto manifestText = "<Package product=\"Quilvane 2\" name=\"Bank\" revision=\"7\"/>";

class PackageFolder : public testing::Test
{
protected:
    PackageFolder() { EXPECT_TRUE (sources.createDirectory().wasOk()); }
    ~PackageFolder() override { folder.deleteRecursively(); }

    void writeSources (bool backwards)
    {
        sources.deleteRecursively();
        EXPECT_TRUE (sources.createDirectory().wasOk());

        const juce::StringArray names { "Wide.qvprs2", "Slow.qvprs2", eteName };

        for (int i = 0; i < names.size(); ++i)
            write (names[backwards ? names.size() - 1 - i : i], "<Preset author=\"A\"/>");

        write ("manifest.xml", manifestText);
        write ("notes.txt", "not part of it");
    }

    void write (const juce::String& name, const juce::String& text)
    {
        EXPECT_TRUE (sources.getChildFile (name).replaceWithText (text));
    }

    juce::MemoryBlock build() const { return signArchive (makeArchive (readPresetFolder (sources))); }

    /** Runs the program.
        @returns its exit code and both streams */
    static std::pair<int, juce::String> run (juce::StringArray arguments)
    {
        arguments.insert (0, QUILVANE_PACKAGE_PROGRAM);

        juce::ChildProcess process;
        EXPECT_TRUE (process.start (arguments));
        auto text = process.readAllProcessOutput();
        EXPECT_TRUE (process.waitForProcessToFinish (60000));

        // JUCE's greeting in a debug build.
        if (text.startsWith ("JUCE v"))
            text = text.fromFirstOccurrenceOf ("\n", false, false);

        return { static_cast<int> (process.getExitCode()), text };
    }

    const juce::String eteName { juce::CharPointer_UTF8 ("\xc3\x89t\xc3\xa9.qvprs2") };
    const juce::File folder = juce::File::createTempFile ({}).withFileExtension ({}).getNonexistentSibling();
    const juce::File sources = folder.getChildFile ("sources");
    const juce::File output = folder.getChildFile ("Bank.k7rpkg");
};

} // namespace

//==============================================================================
TEST_F (PackageFolder, TheSameSourcesGiveTheSameBytes)
{
    writeSources (false);
    const auto first = build();
    ASSERT_TRUE (PackageFile (std::make_unique<juce::MemoryInputStream> (first, false)).isOpen());

    // In another order, at another time, in another part of the world.
    writeSources (true);
    sources.getChildFile ("Slow.qvprs2").setLastModificationTime (juce::Time (2001, 5, 5, 5, 5));
    setenv ("TZ", "Asia/Kathmandu", 1);
    tzset();
    const auto second = build();
    unsetenv ("TZ");
    tzset();

    EXPECT_EQ (first, second);

    write ("Slow.qvprs2", "<Preset author=\"B\"/>");
    EXPECT_NE (first, build());
}

TEST_F (PackageFolder, HoldsTheManifestAndThePresetsInTheOrderOfTheirNames)
{
    writeSources (false);
    const auto data = build();
    const PackageFile package (std::make_unique<juce::MemoryInputStream> (data, false));

    juce::StringArray names;

    for (int i = 0; i < package.getNumEntries(); ++i)
        names.add (package.getEntryName (i));

    EXPECT_EQ (names, (juce::StringArray { "__desc__", "Slow.qvprs2", "Wide.qvprs2", eteName }));
    EXPECT_EQ (package.readEntryText (0), manifestText);
}

TEST_F (PackageFolder, SourcesThatMakeNoPackageAreRefused)
{
    struct Case
    {
        const char* file;
        juce::String text;
    };

    const std::vector<Case> cases {
        { "manifest.xml", "no XML" },
        { "manifest.xml", "<Package name=\"Bank\"/>" },
        { "Slow.qvprs2", "" },
        { "Slow.qvprs2", "<Preset" },
        { "Slow.qvprs2", "<Other/>" },
        { "Slow.qvprs2", "<Preset>" + juce::String::repeatedString (" ", 1024 * 1024) + "</Preset>" },
        { "sLOW.qvprs2", "<Preset/>" },
    };

    for (const auto& [name, text] : cases)
    {
        writeSources (false);
        write (name, text);
        EXPECT_THROW (readPresetFolder (sources), Failure) << name << ": " << text.substring (0, 40);
    }

    for (const auto* missing : { "manifest.xml", "Slow.qvprs2" })
    {
        writeSources (false);
        sources.getChildFile (missing).deleteFile();
        sources.getChildFile ("Wide.qvprs2").deleteFile();
        sources.getChildFile (eteName).deleteFile();
        EXPECT_THROW (readPresetFolder (sources), Failure) << missing;
    }
}

TEST_F (PackageFolder, WhatIsNoFileOpensNothing)
{
    const auto pipe = folder.getChildFile ("pipe");
    const auto empty = folder.getChildFile ("empty");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_TRUE (empty.create().wasOk());

    for (const auto& file : { juce::File(), folder, folder.getChildFile ("missing"), empty, pipe })
        EXPECT_FALSE (PackageFile (file).isOpen()) << file.getFullPathName();

    EXPECT_FALSE (PackageFile (nullptr).isOpen());
}

//==============================================================================
TEST_F (PackageFolder, TheProgramBuildsVerifiesAndLists)
{
    writeSources (false);
    const auto other = folder.getChildFile ("Other.k7rpkg");

    for (const auto& file : { output, other })
    {
        const auto [exitCode, text] = run ({ "build", sources.getFullPathName(), file.getFullPathName() });
        ASSERT_EQ (exitCode, 0) << text;
        EXPECT_EQ (text.trim(), file.getFileName() + ": \"Bank\" revision 7, 3 presets");
    }

    EXPECT_TRUE (output.hasIdenticalContentTo (other));
    EXPECT_EQ (PackageFile (output).getManifest().name, "Bank");
    EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFiles), 2) << "nothing else is left";

    EXPECT_EQ (run ({ "verify", output.getFullPathName() }).first, 0);

    const auto [exitCode, text] = run ({ "list", output.getFullPathName() });
    EXPECT_EQ (exitCode, 0);
    EXPECT_TRUE (text.contains ("Slow") && text.contains (eteName.upToFirstOccurrenceOf (".", false, false))) << text;
}

TEST_F (PackageFolder, AFailureOfTheProgramIsOneSentenceAndLeavesThePackageAsItWas)
{
    writeSources (false);
    ASSERT_TRUE (output.replaceWithText ("old"));
    write ("Slow.qvprs2", "no preset");

    const std::vector<juce::StringArray> commands {
        { "build", sources.getFullPathName(), output.getFullPathName() },
        { "build", folder.getChildFile ("missing").getFullPathName(), output.getFullPathName() },
        { "build", sources.getFullPathName(), folder.getChildFile ("a.zip").getFullPathName() },
        { "verify", output.getFullPathName() },
        { "list", output.getFullPathName() },
        { "verify" },
        { "sign", output.getFullPathName() },
    };

    for (const auto& command : commands)
    {
        const auto [exitCode, text] = run (command);
        EXPECT_EQ (exitCode, 1) << command.joinIntoString (" ");
        EXPECT_TRUE (text.startsWith ("quilvane-package: ") && text.trim().indexOfChar ('\n') < 0) << text;
    }

    EXPECT_EQ (output.loadFileAsString(), "old");
    EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFiles), 1);
}
