// SPDX-License-Identifier: GPL-3.0-or-later

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "content/PresetsDirectoryContent.h"
#include "content/PresetsPackageContent.h"
#include "content/TagMap.h"
#include "support/PackageInTest.h"
#include "support/PresetFiles.h"

using namespace quilvane;
using namespace quilvane::test;

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
    EXPECT_EQ (content.uniqueItemName ("Kick"), "Kick (1)");
    EXPECT_EQ (content.uniqueItemName ("New"), "New");

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
    EXPECT_EQ (static_cast<int> (content.getItems().size()), listFolder().size());

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

    // Where names of different case are two files, a change of case takes neither.
    file ("case").replaceWithText ("<Preset author='small'/>");
    file ("Case").replaceWithText ("<Preset author='large'/>");
    EXPECT_FALSE (content.renameItemFile ("case", "Case"));
    EXPECT_TRUE (file ("Case").loadFileAsString().contains ("large"));
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

//==============================================================================
TEST_F (PresetFiles, OfAPackageAreReadOnlyAndTakeTheAuthorOfTheManifest)
{
    auto members = makeMembers();
    members.insert (members.begin() + 1, { "readme.txt", bytes ("Thanks!") });
    members.push_back ({ "Folder/Deep.qvprs2", bytes ("<Preset author=\"Ben\"/>") });
    members.push_back ({ "Own.qvprs2", bytes ("<Preset author=\"Cy\"><Parameters><param name=\"P1\" value=\"7\"/>"
                                              "</Parameters></Preset>") });
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
        ASSERT_EQ (content.getItems().size(), 4u); // and no readme
        EXPECT_EQ (content.getItems()[0]->name, "Slow");
        EXPECT_EQ (content.getItems()[2]->name, "Deep");

        EXPECT_EQ (content.readPreset ("Slow")->author, "Ada");
        EXPECT_EQ (content.readPreset ("Own")->author, "Cy");
        EXPECT_EQ (content.readPreset ("Folder/Deep")->name, "Deep");
        EXPECT_EQ (content.readPreset ("readme"), nullptr);

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
}
