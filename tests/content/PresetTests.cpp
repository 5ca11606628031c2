// SPDX-License-Identifier: GPL-3.0-or-later

#include <csignal>
#include <fstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "content/PresetsDirectoryContent.h"
#include "content/PresetsPackageContent.h"
#include "content/TagMap.h"
#include "support/PackageInTest.h"
#include "support/PresetFiles.h"
#include "support/SafeFile.h"

using namespace K7R;
using namespace K7R::test;

//==============================================================================
TEST (Tags, KeepTheirTextAndTheirOrder)
{
    for (const auto* text : { "", "A:b|c;D:e", "A:", "Z:y|x;A:b", "A:b;C:" })
        EXPECT_EQ (TagSet::fromText (text).toText(), text);

    EXPECT_EQ (TagSet::fromText ("A;B:x:y|z|z").toText(), "A:;B:x:y|z");

    auto set = TagSet::fromText ("A:b");
    set.merge (TagSet::fromText ("C:d;A:b|a"));
    EXPECT_EQ (set.toText(), "A:b|a;C:d");
    set.remove ("A", "b");
    set.remove ("A", "a");
    EXPECT_EQ (set.toText(), "A:;C:d");
    EXPECT_TRUE (set.contains ("C", "d"));
    EXPECT_FALSE (set.contains ("C", "D"));
    EXPECT_EQ (set.getSubset (1).toText(), "C:d");
    EXPECT_TRUE (set.getSubset (2).isEmpty());
}

TEST (TagIds, OnceGivenStay)
{
    TagMap map;
    map.merge (TagSet::fromText ("A:x|y;B:z"));
    EXPECT_EQ (map.getId ("A", ""), 1000);
    EXPECT_EQ (map.getId ("A", "y"), 1002);
    EXPECT_EQ (map.getId ("B", "z"), 2001);

    map.merge (TagSet::fromText ("C:new;A:w"));
    EXPECT_EQ (map.getId ("A", "y"), 1002);
    EXPECT_EQ (map.getId ("A", "w"), 1003);
    EXPECT_EQ (map.getId ("C", "new"), 3001);
    EXPECT_EQ (map.getId ("A", "unknown"), TagMap::unknownId);
    EXPECT_EQ (map.getCategoryName (2001), "B");
    EXPECT_EQ (map.getNames (1003).tag, "w");
    EXPECT_EQ (map.getNames (5).id, -1);

    // More tags than a category has numbers for take none of another's.
    TagSet many;

    for (int i = 0; i < 1500; ++i)
        many.add ("A", juce::String (i));

    map.merge (many);
    EXPECT_EQ (map.getId ("B", "z"), 2001);
    EXPECT_EQ (map.getNames (2001).category, "B");
}

//==============================================================================
TEST_F (PresetFiles, TakeTheirNameFromTheFileAndTheRestFromTheDocument)
{
    file ("Y").replaceWithText ("<preset name='X' author='me' version='1.0' rating='5' tags='A:b'>"
                                "<param name='P1' value='7'/><param name='gone' value='1'/></preset>");
    Preset preset;
    preset.loadFromFile (file ("Y"), manager);
    EXPECT_EQ (preset.name, "Y");
    EXPECT_EQ (preset.author, "me");
    EXPECT_EQ (preset.rating, 5);
    ASSERT_EQ (preset.getEntries().size(), 1u);
    EXPECT_EQ (preset.getEntries()[0].value, "7");

    // The older layout is read, and never written.
    ASSERT_TRUE (preset.saveToFile (file ("Z"), manager));
    const auto xml = juce::parseXML (file ("Z"));
    EXPECT_NE (xml->getChildByName ("Parameters"), nullptr);
    EXPECT_FALSE (xml->hasAttribute ("name"));
    EXPECT_EQ (xml->getStringAttribute ("tags"), "A:b");
    EXPECT_EQ (xml->getStringAttribute ("rating"), "5");

    Preset header;
    header.loadFromFile (file ("Z"), manager, Preset::Extent::header);
    EXPECT_EQ (header.tags.toText(), "A:b");
    EXPECT_TRUE (header.getEntries().empty());

    for (const auto* rating : { "0", "6", "x" })
        EXPECT_FALSE (read ("<Preset rating='" + juce::String (rating) + "'/>").rating.has_value());

    for (const auto* text : { "", "<Other/>", "<Preset", "rubbish" })
    {
        file ("broken").replaceWithText (text);
        Preset broken;
        broken.loadFromFile (file ("broken"), manager);
        EXPECT_EQ (broken.name, "broken");
        EXPECT_TRUE (broken.getEntries().empty());
    }
}

TEST_F (PresetFiles, ChangeTheirTagsInPlace)
{
    file ("A").replaceWithText ("<Preset author='me' other='kept'><Parameters><param name='gone' value='1'/>"
                                "</Parameters><Unknown/></Preset>");
    EXPECT_TRUE (Preset::writeTagsToFile (file ("A"), TagSet::fromText ("X:y")));
    const auto xml = juce::parseXML (file ("A"));
    EXPECT_EQ (xml->getStringAttribute ("tags"), "X:y");
    EXPECT_EQ (xml->getStringAttribute ("other"), "kept");
    EXPECT_NE (xml->getChildByName ("Unknown"), nullptr);
    EXPECT_NE (xml->getChildByName ("Parameters")->getChildByName ("param"), nullptr);

    file ("B").replaceWithText ("<Other/>");
    EXPECT_FALSE (Preset::writeTagsToFile (file ("B"), {}));
    EXPECT_EQ (file ("B").loadFileAsString(), "<Other/>");
    EXPECT_FALSE (Preset::writeTagsToFile (file ("missing"), {}));
    EXPECT_FALSE (Preset::writeTagsToFile (folder, {}));
}

//==============================================================================
TEST_F (PresetFiles, OfAFolderAreListedSavedRenamedAndDeleted)
{
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    content.reload();
    EXPECT_TRUE (content.getItems().empty());

    file ("other").getSiblingFile ("no preset.txt").create();
    folder.getChildFile ("sub").createDirectory();
    EXPECT_TRUE (content.createItemFile ("Kick", TagSet::fromText ("A:b")));
    manager.setValueString (0, "9");
    EXPECT_TRUE (content.createItemFile ("Snare", TagSet::fromText ("A:c")));
    content.reload();
    ASSERT_EQ (content.getItems().size(), 2u);
    EXPECT_TRUE (content.containsItem ("KICK"));

    TagMap map;
    content.setTagMap (&map);
    EXPECT_EQ (content.findItem ("Snare")->tagIds.size(), 1u);

    EXPECT_TRUE (content.loadItem ("Kick"));
    EXPECT_EQ (loaded, "Kick");
    EXPECT_EQ (manager.getValueString (0), "0");
    EXPECT_FALSE (content.loadItem ("missing"));

    EXPECT_FALSE (content.renameItemFile ("Kick", "Snare"));
    EXPECT_FALSE (content.renameItemFile ("missing", "x"));
    EXPECT_TRUE (content.renameItemFile ("Kick", "kick"));
    EXPECT_TRUE (file ("kick").existsAsFile());

    juce::MemoryInputStream text ("<Preset tags='New:tag'/>", 24, false);
    EXPECT_EQ (content.addItemFromStream (text, "snare"), nullptr);
    auto* added = content.addItemFromStream (text, "Added");
    ASSERT_NE (added, nullptr);
    EXPECT_TRUE (content.getTags().contains ("New", "tag"));
    EXPECT_TRUE (content.removeItem (*added));
    EXPECT_FALSE (content.getTags().contains ("New", "tag"));
    EXPECT_FALSE (file ("Added").exists());
}

TEST_F (PresetFiles, ThatAreListedCanBeLoaded)
{
    const auto write = [this] (const std::string& name, const char* value)
    {
        std::ofstream (folder.getFullPathName().toStdString() + "/" + name)
            << "<Preset tags='A:" << value << "'><Parameters><param name='P1' value='" << value
            << "'/></Parameters></Preset>";
    };

    write ("Up.QVPRS2", "1");
    write ("Two.QVPRS2", "2");
    write ("Two.qvprs2", "3");
    write ("Mixed.QvPrs2", "4");
    write ("Gr\xfc\xdf"
           "e.qvprs2",
           "5");
    write ("Cut\xf1.qvprs2", "6");
    ASSERT_EQ (mkfifo (file ("pipe").getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_EQ (symlink ("nowhere", file ("dangling").getFullPathName().toRawUTF8()), 0);

    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    content.reload();
    ASSERT_EQ (content.getItems().size(), 2u);

    for (const auto& item : content.getItems())
    {
        ASSERT_TRUE (content.loadItem (item->name)) << item->name;
        EXPECT_EQ ("A:" + manager.getValueString (1), item->tags.toText()) << item->name;
    }

    // Each change reaches the item's own file.
    EXPECT_TRUE (content.loadItem ("Two"));
    EXPECT_EQ (manager.getValueString (1), "3");
    EXPECT_TRUE (content.assignTags (*content.findItem ("Up"), TagSet::fromText ("A:new")));
    EXPECT_NE (content.saveItem ("Up", TagSet::fromText ("A:saved")), nullptr);
    EXPECT_FALSE (file ("Up").existsAsFile());
    EXPECT_TRUE (folder.getChildFile ("Up.QVPRS2").loadFileAsString().contains ("A:saved"));
    EXPECT_TRUE (content.renameItem (*content.findItem ("Up"), "Down"));
    EXPECT_TRUE (file ("Down").existsAsFile() && ! folder.getChildFile ("Up.QVPRS2").existsAsFile());
}

TEST_F (PresetFiles, NeverLeaveTheirFolderOrOverwriteAnother)
{
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    const auto outside = folder.getSiblingFile (folder.getFileName() + "-outside.qvprs2");

    for (const juce::String& name :
         { "../" + outside.getFileNameWithoutExtension(), juce::String ("/etc/x"), juce::String ("a/b"),
           juce::String ("c\\d"), juce::String ("..\\..\\x"), juce::String::fromUTF8 ("\xf0\x9f\x8e\xb9 piano"),
           juce::String::repeatedString ("long", 75), juce::String ("new\nline"), juce::String ("~/x"),
           juce::String (" spaced "), juce::String ("CON"), juce::String ("v1.5") })
    {
        EXPECT_TRUE (content.getItemFile (name).isAChildOf (folder)) << name;
        EXPECT_EQ (content.getItemFile (name).getParentDirectory(), folder) << name;
        EXPECT_TRUE (content.createItemFile (name, {})) << name;
    }

    // Whatever was saved is listed, and each item is its own file.
    for (const auto* copiedIn : { "what?", "~x", ".hid", " lead", "a.b.c", "a " })
        juce::File (folder.getFullPathName() + "/" + copiedIn + ".qvprs2").replaceWithText ("<Preset/>");

    content.reload();
    EXPECT_EQ (static_cast<int> (content.getItems().size()), listFolder().size() - 1) << "all but the hidden one";

    for (const auto& item : content.getItems())
    {
        EXPECT_EQ (content.getItemFile (item->name).getFileNameWithoutExtension(), item->name);
        EXPECT_TRUE (content.loadItem (item->name)) << item->name;
        EXPECT_EQ (loaded, item->name);
        EXPECT_TRUE (content.writeItemTags (item->name, TagSet::fromText ("Own:" + item->name.substring (0, 3))));
    }

    while (! content.getItems().empty())
    {
        const auto numFiles = listFolder().size();
        EXPECT_TRUE (content.removeItem (*content.getItems().front()));
        ASSERT_EQ (listFolder().size(), numFiles - 1);
    }

    EXPECT_FALSE (outside.exists());

    for (const auto* nothing : { "", ".", "..", "...", "  ", "./.." })
    {
        const auto path = content.getItemFile (nothing);
        EXPECT_TRUE (path == juce::File() || path.getParentDirectory() == folder) << nothing;
    }

    // Names whose paths meet: the later one doesn't take the file of the earlier.
    manager.setValueString (0, "1");
    ASSERT_TRUE (content.createItemFile ("v2", {}));
    const auto before = file ("v2").loadFileAsString();
    manager.setValueString (0, "2");
    EXPECT_FALSE (content.createItemFile ("v2.1", {}));
    EXPECT_EQ (file ("v2").loadFileAsString(), before);
    EXPECT_FALSE (content.writeItemTags ("v2.1", TagSet::fromText ("A:b")));
    EXPECT_FALSE (content.deleteItemFile ("v2.1"));
    EXPECT_EQ (file ("v2").loadFileAsString(), before);
    EXPECT_TRUE (content.createItemFile ("v2", {}));
    EXPECT_NE (file ("v2").loadFileAsString(), before);

    content.reload();
    EXPECT_EQ (content.saveItem ("V2.1", {}), nullptr) << "nor in another case";

    // Where names of different case are two files, a change of case takes neither.
    file ("case").replaceWithText ("<Preset author='small'/>");
    file ("Case").replaceWithText ("<Preset author='large'/>");
    EXPECT_FALSE (content.renameItemFile ("case", "Case"));
    EXPECT_TRUE (file ("Case").loadFileAsString().contains ("large"));
}

TEST_F (PresetFiles, TellWhatANameStandsForBeforeItIsTaken)
{
    using Kind = ContentPlacement::Kind;

    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    const auto longName = juce::String::repeatedString ("l", 250), longest = longName.substring (0, 200);

    for (const auto& name :
         { juce::String ("Bass 2"), juce::String ("A_B"), juce::String (" Pad"), juce::String ("a.b.c"), longest })
        folder.getChildFile (name + ".qvprs2").replaceWithText ("<Preset/>");

    content.reload();
    file ("Late").replaceWithText ("<Preset/>"); // which isn't listed
    file ("Folder").createDirectory();

    struct Case
    {
        juce::String name;
        Kind kind;
        juce::String standing, proposed;
    };

    const Case cases[] {
        { "New", Kind::free, "New", "New" },
        { "New.1", Kind::free, "New", "New_1" },
        { "BASS 2", Kind::sameItem, "Bass 2", "BASS 2 (1)" },
        { "Bass 2.5", Kind::otherItem, "Bass 2", "Bass 2_5" },
        { "bass 2.5", Kind::otherItem, "Bass 2", "bass 2_5" },
        { "A/B", Kind::otherItem, "A_B", "A_B (1)" },
        { " Pad", Kind::sameItem, " Pad", "Pad" },
        { "Pad", Kind::free, "Pad", "Pad" },
        { "a.b.c", Kind::sameItem, "a.b.c", "a_b_c" },
        { "Late", Kind::sameItem, "Late", "Late (1)" },
        { "Late.x", Kind::otherItem, "Late", "Late_x" },
        { longName, Kind::otherItem, longest, longest.substring (4) + " (1)" },
        { "Folder", Kind::impossible, "", "Folder (1)" },
        { "...", Kind::impossible, "", "" },
    };

    for (const auto& c : cases)
    {
        const auto placement = content.place (c.name);
        EXPECT_EQ (placement.kind, c.kind) << c.name;
        EXPECT_EQ (placement.name, c.standing) << c.name;
        EXPECT_EQ (content.uniqueItemName (c.name), c.proposed) << c.name;
    }

    // A listed name is the one that is saved to, and a saved one is free no more.
    ASSERT_NE (content.saveItem (" Pad", TagSet::fromText ("A:b")), nullptr);
    EXPECT_EQ (content.readItemTags (" Pad").toText(), "A:b");
    EXPECT_FALSE (file ("Pad").exists());
    ASSERT_NE (content.saveItem (content.uniqueItemName ("Bass 2.5"), {}), nullptr);
    EXPECT_EQ (content.uniqueItemName ("Bass 2.5"), "Bass 2_5 (1)");
}

TEST_F (PresetFiles, KeepWhatElseTheyKnowWhenTheyAreOverwritten)
{
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    file ("Mine").replaceWithText ("<Preset author='me' id='7' category='c' rating='4' version='0.9' other='kept' "
                                   "tags='A:old'><Parameters><param name='P0' value='9'/></Parameters>"
                                   "<Unknown a='b'/></Preset>");
    content.reload();
    manager.setValueString (0, "5");

    for (const auto* name : { "Mine", "MINE" })
    {
        ASSERT_NE (content.saveItem (name, {}), nullptr);
        EXPECT_EQ (listFolder(), juce::StringArray (juce::String (name) + ".qvprs2"));
        const auto xml = juce::parseXML (file (name));

        for (const auto& [attribute, value] : { std::pair { "author", "me" },
                                                { "id", "7" },
                                                { "category", "c" },
                                                { "rating", "4" },
                                                { "other", "kept" },
                                                { "version", "1.0" },
                                                { "tags", "" } })
            EXPECT_EQ (xml->getStringAttribute (attribute), value) << name << attribute;

        EXPECT_NE (xml->getChildByName ("Unknown"), nullptr);
        EXPECT_EQ (xml->getNumChildElements(), 2);
        EXPECT_TRUE (content.loadItem (name));
        EXPECT_EQ (manager.getValueString (0), "5");
    }
}

TEST_F (PresetFiles, ThatAreDamagedAreListedAndNotLoaded)
{
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    const char* texts[] { "", "<Other/>", "<Preset><Parameters>", "rubbish" };

    for (int i = 0; i < 4; ++i)
        file (juce::String (i)).replaceWithText (texts[i]);

    content.reload();
    EXPECT_EQ (content.getItems().size(), 4u);

    for (const auto& item : content.getItems())
        EXPECT_FALSE (content.loadItem (item->name)) << item->name;

    EXPECT_EQ (loaded, "");
}

//==============================================================================
TEST_F (PresetFiles, StayWholeWhenTheDiskIsFull)
{
    Preset preset;
    fillPreset (preset);
    ASSERT_TRUE (preset.saveToFile (file ("A"), manager));
    const auto before = file ("A").loadFileAsString();
    const auto listing = listFolder();

    // In a process that can write no more than a few bytes to any file.
    const auto child = fork();

    if (child == 0)
    {
        signal (SIGXFSZ, SIG_IGN);
        const rlimit limit { 40, 40 };
        setrlimit (RLIMIT_FSIZE, &limit);
        preset.author = juce::String::repeatedString ("x", 10000);
        _exit (preset.saveToFile (file ("A"), manager) ? 1 : 0);
    }

    int status = -1;
    waitpid (child, &status, 0);
    EXPECT_TRUE (WIFEXITED (status));
    EXPECT_EQ (WEXITSTATUS (status), 0) << "the save should have failed";
    EXPECT_EQ (file ("A").loadFileAsString(), before);
    EXPECT_EQ (listFolder(), listing);
}

TEST_F (PresetFiles, StayWholeWhenTheFolderTakesNoNewName)
{
    Preset preset;
    fillPreset (preset);

    // A folder in the file's place: everything can be written, but nothing renamed over it.
    ASSERT_TRUE (file ("A").getChildFile ("inside").create().wasOk());
    EXPECT_FALSE (preset.saveToFile (file ("A"), manager));
    EXPECT_FALSE (preset.saveToFile (folder.getChildFile ("missing/A.qvprs2"), manager));
    EXPECT_TRUE (file ("A").getChildFile ("inside").existsAsFile());
    EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
}

TEST_F (PresetFiles, StayWholeWhenTheWriterIsKilled)
{
    Preset preset;
    fillPreset (preset);
    preset.author = juce::String::repeatedString ("x", 200000);
    ASSERT_TRUE (preset.saveToFile (file ("A"), manager));

    const auto sizeBefore = file ("A").getSize();
    bool hasWritten = false;

    for (int round = 0; round < 20; ++round)
    {
        const auto child = fork();

        if (child == 0)
            for (int i = 0;; ++i)
            {
                preset.version = juce::String (i);
                preset.saveToFile (file ("A"), manager);
            }

        // The first one gets to its first file, however slow the machine is.
        for (int wait = 0; wait < 5000 && ! hasWritten; ++wait)
        {
            usleep (1000);
            hasWritten = file ("A").getSize() != sizeBefore;
        }

        usleep (static_cast<useconds_t> (3000 + 977 * round));
        kill (child, SIGKILL);
        waitpid (child, nullptr, 0);

        const auto xml = juce::parseXML (file ("A"));
        ASSERT_NE (xml, nullptr) << round;
        EXPECT_EQ (xml->getStringAttribute ("author").length(), 200000) << round;
        EXPECT_NE (xml->getChildByName ("Parameters"), nullptr) << round;
    }

    EXPECT_TRUE (hasWritten);

    // What the killed writers left is no preset.
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    content.reload();
    EXPECT_EQ (content.getItems().size(), 1u);
}

TEST_F (PresetFiles, AreSavedWhereTheirLinksLeadWithThePermissionsTheyHad)
{
    const auto at = [this] (const char* name) { return folder.getChildFile (name).getFullPathName().toStdString(); };
    const auto modeOf = [&] (const char* name)
    {
        struct stat info
        {
        };
        EXPECT_EQ (lstat (at (name).c_str(), &info), 0) << name;
        return info.st_mode & 07777;
    };

    Preset preset;
    fillPreset (preset);
    const auto save = [&] (const char* name, const char* author)
    {
        preset.author = author;
        return preset.saveToFile (folder.getChildFile (name), manager);
    };
    const auto authorOf = [&] (const char* name)
    { return juce::parseXML (folder.getChildFile (name))->getStringAttribute ("author"); };

    // A chain through another folder, which is a link itself, to a file that only its owner may read.
    folder.getChildFile ("real/deep").createDirectory();
    folder.getChildFile ("real/target").replaceWithText ("<Preset author='old'/>");
    ASSERT_EQ (chmod (at ("real/target").c_str(), 0600), 0);
    ASSERT_EQ (symlink ("real/deep", at ("way").c_str()), 0);
    ASSERT_EQ (symlink ("../target", at ("real/deep/second").c_str()), 0);
    ASSERT_EQ (symlink ("way/second", at ("first.qvprs2").c_str()), 0);

    ASSERT_TRUE (save ("first.qvprs2", "new"));
    EXPECT_EQ (authorOf ("real/target"), "new");
    EXPECT_TRUE (folder.getChildFile ("first.qvprs2").isSymbolicLink());
    EXPECT_TRUE (folder.getChildFile ("real/deep/second").isSymbolicLink());
    EXPECT_EQ (modeOf ("real/target"), 0600u);
    ASSERT_EQ (chmod (at ("real/target").c_str(), 0664), 0);
    ASSERT_TRUE (save ("first.qvprs2", "newer"));
    EXPECT_EQ (modeOf ("real/target"), 0664u);

    // New files, also at the end of a link, have what the process gives.
    const auto before = umask (0027);
    ASSERT_EQ (symlink ("behind", at ("dangling").c_str()), 0);
    EXPECT_TRUE (save ("new", "me") && save ("dangling", "me"));
    umask (before);
    EXPECT_EQ (modeOf ("new"), 0640u);
    EXPECT_EQ (modeOf ("behind"), 0640u);

    // Nothing comes of links without end, or takes the place of what is no file.
    ASSERT_EQ (symlink ("loop b", at ("loop a").c_str()) + symlink ("loop a", at ("loop b").c_str()), 0);
    ASSERT_EQ (mkfifo (at ("pipe.qvprs2").c_str(), 0600), 0);
    EXPECT_FALSE (save ("loop a", "me") || save ("pipe.qvprs2", "me"));
    EXPECT_TRUE (folder.getChildFile ("loop a").isSymbolicLink());
    preset.loadFromFile (folder.getChildFile ("pipe.qvprs2"), manager); // doesn't wait for a writer
}

TEST_F (PresetFiles, LeftByAKilledWriterGoAnHourLater)
{
    const auto leave = [this] (const char* how)
    {
        const auto before = folder.findChildFiles (juce::File::findFiles, false);
        const auto child = fork();

        if (child == 0)
            replaceFileSafely (file (how), [] (juce::OutputStream& stream)
                               { return stream.writeText ("half", false, false, nullptr) && raise (SIGKILL) == 0; });

        waitpid (child, nullptr, 0);
        auto left = folder.findChildFiles (juce::File::findFiles, false);
        left.removeIf ([&] (const juce::File& there) { return before.contains (there); });
        EXPECT_EQ (left.size(), 1) << how;
        return left.getFirst();
    };

    const auto hoursAgo = [] (int hours) { return juce::Time::getCurrentTime() - juce::RelativeTime::hours (hours); };
    const auto old = leave ("old"), present = leave ("present");
    const auto similar = old.getSiblingFile (old.getFileName().replace (".quilvane-", ".other-"));
    similar.replaceWithText ("another program's");
    ASSERT_TRUE (old.setLastModificationTime (hoursAgo (2)) && similar.setLastModificationTime (hoursAgo (2)));

    Preset preset;
    fillPreset (preset);
    ASSERT_TRUE (preset.saveToFile (file ("A"), manager));
    EXPECT_FALSE (old.exists());
    EXPECT_TRUE (present.existsAsFile()) << "another instance may be writing it";
    EXPECT_TRUE (similar.existsAsFile());
}

//==============================================================================
TEST_F (PresetFiles, OfAPackageAreReadOnlyAndTakeTheAuthorOfTheManifest)
{
    auto members = makeMembers();
    members.insert (members.begin() + 1, { "readme.txt", bytes ("Thanks!") });
    members.insert (members.begin() + 1, { "Huge.qvprs2", juce::MemoryBlock (1024 * 1024 + 1, true) });
    members.push_back ({ "Folder/Deep.qvprs2", bytes ("<Preset author=\"Ben\"/>") });
    members.push_back ({ "Own.qvprs2", bytes ("<Preset author=\"Cy\"><Parameters><param name=\"P1\" value=\"7\"/>"
                                              "</Parameters></Preset>") });
    members.push_back ({ "Damaged.qvprs2", bytes ("<Other/>") });
    const auto writePackage = [&] (bool isWhole)
    {
        auto archive = package::makeArchive (members);

        if (! isWhole)
            archive[std::string (archive.begin(), archive.end()).find ("readme.txt") - 30] = 'X';

        const auto package = package::signArchive (archive);
        file ("Bank").replaceWithData (package.getData(), package.getSize());
    };

    {
        writePackage (true);
        PresetsPackageContent content (*this, "Factory", file ("Bank"), ".qvprs2");
        content.reload();
        ASSERT_EQ (content.getItems().size(), 5u); // neither the readme nor what is too large
        EXPECT_EQ (content.getItems()[0]->name, "Slow");
        EXPECT_EQ (content.getItems()[2]->name, "Deep");

        EXPECT_EQ (content.readPreset ("Slow")->author, "Ada");
        EXPECT_EQ (content.readPreset ("Own")->author, "Cy");
        EXPECT_EQ (content.readPreset ("Folder/Deep")->name, "Deep");
        EXPECT_EQ (content.readPreset ("readme"), nullptr);
        EXPECT_EQ (content.readPreset ("Damaged"), nullptr);

        EXPECT_TRUE (content.loadItem ("Own"));
        EXPECT_EQ (manager.getParameter (1)->getString(), "7");

        const auto before = file ("Bank").loadFileAsString();
        EXPECT_FALSE (content.deleteItemFile ("Own"));
        EXPECT_FALSE (content.renameItemFile ("Own", "Other"));
        EXPECT_EQ (file ("Bank").loadFileAsString(), before);
    }

    // The list ends where an entry, of whatever kind, can't be opened: the second one's header is none.
    writePackage (false);
    PresetsPackageContent cut (*this, "Factory", file ("Bank"), ".qvprs2");
    cut.reload();
    EXPECT_TRUE (cut.getItems().empty());
    EXPECT_NE (cut.readPreset ("Own"), nullptr);
}

TEST_F (PresetFiles, WithMoreTagsThanAnyoneUsesAreReadInNoTime)
{
    juce::StringArray tags;

    for (int i = 0; i < 100000; ++i)
        tags.add (juce::String (i));

    const auto set = TagSet::fromText ("A:" + tags.joinIntoString ("|") + ";" + tags.joinIntoString (";"));
    EXPECT_EQ (set.getCategories().size(), static_cast<size_t> (TagSet::maximumCategories));
    EXPECT_EQ (set.getCategories()[0].tags.size(), TagSet::maximumTagsPerCategory);

    // Two hundred with all their own: no list is searched for what is new, and what is known stays bounded.
    for (int i = 0; i < 200; ++i)
    {
        juce::MemoryOutputStream text;

        for (int category = 0; category < TagSet::maximumCategories; ++category)
        {
            text << "C" << (i * 64 + category) << ":";

            for (int tag = 0; tag < 200; ++tag)
                text << tag << "|";

            text << ";";
        }

        file (juce::String (i)).replaceWithText ("<Preset tags='" + text.toString() + "'/>");
    }

    TagMap map;
    PresetsDirectoryContent content (*this, "User", folder, ".qvprs2");
    content.setTagMap (&map);
    content.reload();
    content.rebuildTags();
    ASSERT_EQ (content.getItems().size(), 200u);

    const auto countTags = [] (const TagSet& counted)
    {
        int number = 0;

        for (const auto& category : counted.getCategories())
            number += category.tags.size();

        return number;
    };

    for (const auto* known : { &content.getTags(), &map.getAll() })
    {
        EXPECT_EQ (known->getCategories().size(), static_cast<size_t> (TagMap::maximumCategories));
        EXPECT_EQ (countTags (*known), TagMap::maximumTags);
    }

    EXPECT_EQ (countTags (content.getItems()[0]->tags), TagSet::maximumTags);

    // All together have a bound, too, also where the folder is read again.
    for (int reload = 0; reload < 2; ++reload)
    {
        size_t total = 0;

        for (const auto& item : content.getItems())
            total += static_cast<size_t> (countTags (item->tags));

        EXPECT_GT (total, TagBudget::maximumTags / 2);
        EXPECT_LE (total, TagBudget::maximumTags);
        content.reload();
    }
}
