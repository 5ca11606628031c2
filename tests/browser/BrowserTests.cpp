// SPDX-License-Identifier: GPL-3.0-or-later

// The browser's rules without its window: what is listed, selected, filtered, tagged, saved, imported and exported.

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "browser/PackageExport.h"
#include "browser/PackageImportExport.h"
#include "browser/rules/CategoryFilters.h"
#include "browser/rules/ResultList.h"
#include "browser/rules/TagAssignment.h"
#include "content/PresetsDirectoryContent.h"
#include "support/LyingArchive.h"
#include "support/MessageLoop.h"
#include "support/PackageInTest.h"
#include "support/PresetFiles.h"
#include "support/TestDesktop.h"

using namespace K7R;
using namespace K7R::test;

namespace
{

using How = ResultList::How;

/** Items in memory: "Name" or "Name=Category:tag|tag;Category:tag". */
class ListedSource final : public ContentSource
{
public:
    ListedSource (const juce::String& sourceName, const juce::StringArray& theItems) :
        ContentSource (sourceName),
        texts (theItems)
    {
    }

    bool loadItem (const juce::String&) override { return true; }
    bool isReadOnly() const override { return false; }

    juce::StringArray texts;

private:
    std::vector<Listing> listItems() const override
    {
        std::vector<Listing> list;

        for (const auto& text : texts)
            list.push_back ({ text.upToFirstOccurrenceOf ("=", false, false),
                              TagSet::fromText (text.fromFirstOccurrenceOf ("=", false, false)) });

        return list;
    }
};

std::vector<ContentItem*> itemsOf (const ContentSource& source)
{
    std::vector<ContentItem*> items;

    for (const auto& item : source.getItems())
        items.push_back (item.get());

    return items;
}

juce::String namesOf (const std::vector<ContentItem*>& items)
{
    juce::StringArray names;

    for (const auto* item : items)
        names.add (item->name);

    return names.joinIntoString (" ");
}

/** The selected items, and the current one. */
juce::String describe (const ResultList& list)
{
    const auto* current = list.getCurrentItem();
    const auto selected = list.getSelectedItems();
    EXPECT_EQ (static_cast<int> (selected.size()), list.getNumSelected());
    return namesOf (selected) + " @" + (current != nullptr ? current->name : juce::String());
}

} // namespace

//==============================================================================
TEST (ResultSelection, OfOneOfMoreAndOfRanges)
{
    ListedSource source ("S", { "a", "b", "c", "d", "e", "f" });
    source.reload();

    ResultList list;
    list.setItems (itemsOf (source));
    list.multiSelect = true;
    list.select (2, How::range);
    EXPECT_EQ (describe (list), "c @c") << "without an anchor it's one alone";

    struct Step
    {
        int index;
        How how;
        const char* result;
    };

    const Step steps[] {
        { 1, How::single, "b @b" },     { 3, How::toggle, "b d @d" },    { 3, How::toggle, "b @d" },
        { 1, How::toggle, "b @b" },     { 4, How::range, "b c d e @e" }, { 0, How::range, "a b @a" },
        { 5, How::toggle, "a b f @f" }, { 3, How::range, "d e f @d" },   { 6, How::single, "d e f @d" },
        { -1, How::range, "d e f @d" }, { 5, How::range, "f @f" },       { 0, How::toggle, "a f @a" },
    };

    for (const auto& step : steps)
    {
        list.select (step.index, step.how);
        EXPECT_EQ (describe (list), step.result) << step.index;
    }

    list.selectAll();
    EXPECT_EQ (list.getNumSelected(), 6);

    list.multiSelect = false;
    list.select (4, How::range);
    list.select (2, How::toggle);
    EXPECT_EQ (describe (list), "c @c");

    // Steps don't go beyond the ends, and begin at the first one.
    EXPECT_EQ (list.getStep (1), 3);
    EXPECT_EQ (list.getStep (-7), 0);
    EXPECT_EQ (list.getStep (7), 5);
    list.clearSelection();
    EXPECT_EQ (list.getStep (-1), 0);
    list.setItems ({});
    EXPECT_EQ (list.getStep (1), -1);
    list.select (0, How::single);
    EXPECT_EQ (describe (list), " @");
}

TEST (ResultSelection, StaysOverARebuildAsFarAsItsItemsDo)
{
    ListedSource source ("S", { "a", "b", "c", "d" }), other ("O", { "b", "c" });
    source.reload();
    other.reload();

    ResultList list;
    list.multiSelect = true;
    list.setItems (itemsOf (source));
    list.select (1, How::single);
    list.select (2, How::toggle);

    // Read anew, with one of the two gone; the other source's item is another one.
    list.releaseItems();
    source.texts = { "0", "a", "c", "d" };
    source.reload();
    auto all = itemsOf (source);
    all.insert (all.begin(), other.getItems()[0].get());
    list.setItems (all);
    EXPECT_EQ (describe (list), "c @c");
    list.select (list.size() - 1, How::range);
    EXPECT_EQ (describe (list), "c d @d") << "the current one is the anchor";

    // A list that is empty for a while forgets nothing, unless it's told to.
    list.setItems ({});
    list.setItems (itemsOf (source));
    EXPECT_EQ (describe (list), "c d @d");
    list.setItems ({});
    list.clearSelection();
    list.setItems (itemsOf (source));
    EXPECT_EQ (describe (list), " @");

    list.selectKeys ({ { &source, "d" }, { &other, "c" }, { &source, "gone" }, { &source, "a" } });
    EXPECT_EQ (describe (list), "a d @a");
}

//==============================================================================
TEST (BrowserLists, TickedSourcesInNaturalOrder)
{
    ListedSource factory ("Factory", { "pad 10", "Zoo=B:z;M:x", "Pad 2" }), user ("User", { "apple=A:a", "Pad 3" });
    BrowserContent content ({ "M", "S" });
    EXPECT_TRUE (content.addSource (&factory));
    EXPECT_TRUE (content.addSource (&user));
    EXPECT_FALSE (content.addSource (&user));
    EXPECT_FALSE (content.addSource (nullptr));

    const auto rebuilt = [&]
    {
        content.rebuild (nullptr);
        return namesOf (content.getItems());
    };

    EXPECT_EQ (rebuilt(), "apple Pad 2 Pad 3 pad 10 Zoo");
    EXPECT_EQ (content.getTags().toText(), "M:x;B:z;A:a");
    EXPECT_EQ (content.getVocabulary().toText(), "M:x;S:;B:z;A:a");

    user.texts.add ("Pad 4");
    user.selected = true;
    EXPECT_EQ (rebuilt(), "apple Pad 3") << "it was shown before, and isn't read again";
    EXPECT_TRUE (factory.getItems().empty());
    EXPECT_EQ (content.find ({ &factory, "Zoo" }), nullptr);

    factory.selected = true;
    user.selected = false;
    EXPECT_EQ (rebuilt(), "Pad 2 pad 10 Zoo");
    user.selected = true;
    EXPECT_EQ (rebuilt(), "apple Pad 2 Pad 3 Pad 4 pad 10 Zoo");
    factory.selected = user.selected = false;
    EXPECT_EQ (rebuilt(), "apple Pad 2 Pad 3 Pad 4 pad 10 Zoo");

    content.rebuild (&user);
    EXPECT_EQ (namesOf (content.getItems()), "apple Pad 3 Pad 4");
    EXPECT_EQ (content.find ({ &factory, "Zoo" }), nullptr) << "it isn't listed";

    // One comes, goes, and has another name.
    user.texts = { "Pad 1", "Pad 1 (1)", "PAD 1 (3)" };
    user.reload();
    content.rebuild (&user);
    content.remove (*user.findItem ("pad 1 (3)"));
    content.insert (*user.findItem ("pad 1 (3)"));
    EXPECT_EQ (namesOf (content.getItems()), "Pad 1 Pad 1 (1) PAD 1 (3)");
}

TEST (Filters, NarrowFromLeftToRight)
{
    ListedSource source ("S", { "1=A:x;B:p", "2=A:y;B:q", "3=A:x|y;B:p|q", "4=B:r", "5=A:z" });
    BrowserContent content ({});
    content.addSource (&source);
    content.rebuild (nullptr);

    CategoryFilters filters (content);
    filters.rebuild();

    /** What is shown; what each category offers, and in brackets what is ticked. */
    const auto shown = [&]
    {
        std::vector<ContentItem*> items;

        for (auto* item : content.getItems())
            if (! item->hidden)
                items.push_back (item);

        auto text = namesOf (items);

        for (const auto& filter : filters.getFilters())
            text << " " << filter.category << ":" << filters.getOffered (filter).joinIntoString ("|") << "("
                 << filter.selected.joinIntoString ("|") << ")";

        return text;
    };

    EXPECT_EQ (shown(), "1 2 3 4 5 A:x|y|z() B:p|q|r()");

    filters.setSelected ("A", "x", true);
    EXPECT_EQ (shown(), "1 3 A:x|y|z(x) B:p|q()");
    filters.setSelected ("A", "y", true);
    EXPECT_EQ (shown(), "1 2 3 A:x|y|z(x|y) B:p|q()");
    filters.setNeedsAll ("A", true);
    EXPECT_EQ (shown(), "3 A:x|y|z(x|y) B:p|q()");

    // A ticked tag that isn't offered any more is unticked for good.
    filters.setNeedsAll ("A", false);
    filters.setSelected ("A", "x", false);
    filters.setSelected ("B", "p", true);
    EXPECT_EQ (shown(), "3 A:x|y|z(y) B:p|q(p)");
    filters.setSelected ("A", "y", false);
    filters.setSelected ("A", "z", true);
    EXPECT_EQ (shown(), "5 A:x|y|z(z) B:()");
    filters.setSelected ("A", "z", false);
    EXPECT_EQ (shown(), "1 2 3 4 5 A:x|y|z() B:p|q|r()");

    // The left one of two decides what the right one offers.
    filters.setSelected ("B", "r", true);
    filters.move ("B", 1);
    EXPECT_EQ (shown(), "4 A:x|y|z() B:p|q|r(r)");
    filters.move ("B", -1);
    EXPECT_EQ (shown(), "4 B:p|q|r(r) A:()");

    filters.setEnabled (false);
    EXPECT_EQ (shown(), "1 2 3 4 5 B:p|q|r(r) A:x|y|z()");
    filters.setEnabled (true);
    EXPECT_TRUE (filters.hasSelection());

    // A click that comes late may be for a category that isn't there any more.
    filters.setSelected ("gone", "x", true);
    filters.setNeedsAll ("gone", true);
    filters.move ("gone", 1);
    EXPECT_EQ (shown(), "4 B:p|q|r(r) A:()");

    // Over a rebuild only the columns' order stays; what has gone goes, what is new comes last.
    source.texts = { "1=C:n;A:x;B:p", "2=B:p" };
    source.reload();
    content.rebuild (nullptr);
    filters.rebuild();
    EXPECT_EQ (shown(), "1 2 B:p() A:x() C:n()");
    EXPECT_FALSE (filters.hasSelection());
}

TEST (Tagging, OfSeveralItemsGoesThroughAllNoneAndAsItWas)
{
    ListedSource source ("S", { "1=A:x|y;B:old", "2=A:y" });
    source.reload();
    TagAssignment assignment;
    assignment.reset (itemsOf (source), {});

    /** The tags that both would get. */
    const auto result = [&]
    {
        return assignment.tagsFor (source.getItems()[0]->tags).toText() + " / "
               + assignment.tagsFor (source.getItems()[1]->tags).toText();
    };

    using State = TagAssignment::State;
    EXPECT_EQ (result(), "A:x|y;B:old / A:y");
    EXPECT_EQ (assignment.getState ("A", "x"), State::mixed);

    struct Click
    {
        const char *category, *tag;
        State state;
        const char* result;
    };

    // What some have is mixed; what all have, and what none has, only goes on and off.
    for (const auto& click :
         { Click { "A", "x", State::on, "B:old;A:y|x / A:y|x" }, Click { "A", "x", State::off, "B:old;A:y / A:y" },
           Click { "A", "x", State::mixed, "A:x|y;B:old / A:y" }, Click { "A", "y", State::off, "A:x;B:old / " },
           Click { "A", "y", State::on, "A:x|y;B:old / A:y" },
           Click { "C", "n", State::on, "A:x|y;B:old;C:n / A:y;C:n" },
           Click { "C", "n", State::off, "A:x|y;B:old / A:y" } })
    {
        const auto initial = assignment.getInitialState (click.category, click.tag);
        assignment.toggle (click.category, click.tag);
        EXPECT_EQ (assignment.getState (click.category, click.tag), click.state) << click.result;
        EXPECT_EQ (assignment.getInitialState (click.category, click.tag), initial) << click.result;
        EXPECT_EQ (result(), click.result);
    }

    // Without items it's the tags of what will be saved.
    assignment.reset ({}, TagSet::fromText ("A:x|y"));
    assignment.toggle ("A", "x");
    assignment.toggle ("B", "z");
    EXPECT_EQ (assignment.getCommonTags().withoutEmptyCategories().toText(), "A:y;B:z");
}

//==============================================================================
namespace
{

/** While it lives, no file grows beyond a few bytes. */
class FullDisk
{
public:
    FullDisk()
    {
        getrlimit (RLIMIT_FSIZE, &before);
        const rlimit none { 10, before.rlim_max };
        setrlimit (RLIMIT_FSIZE, &none);
    }

    ~FullDisk()
    {
        setrlimit (RLIMIT_FSIZE, &before);
        signal (SIGXFSZ, handler);
    }

private:
    rlimit before {};
    void (*handler) (int) = signal (SIGXFSZ, SIG_IGN);
};

juce::MemoryBlock presetBy (const juce::String& author)
{
    return bytes ("<Preset author=\"" + author + "\" tags=\"A:" + author + "\"/>");
}

/** A user's source in a folder within the test's folder, and an importer into it. */
class ImportAndExport : public PresetFiles, public PackageImportExport::Listener
{
protected:
    ImportAndExport()
    {
        presets.createDirectory();
        source.setTagMap (&map);
    }

    void itemImported (ContentItem& item, bool) override { EXPECT_EQ (source.findItem (item.name), &item); }
    void importProgressed (int, int) override { ++numProgress; }

    void importFinished (const ImportCounts& result, bool) override
    {
        counts = result;
        isFinished = true;
    }

    void write (const juce::String& name, const juce::String& author) const
    {
        presets.getChildFile (name + ".qvprs2").replaceWithText (presetBy (author).toString());
    }

    bool start (const juce::MemoryBlock& data)
    {
        archive.replaceWithData (data.getData(), data.getSize());
        isFinished = false;
        return importer.startImport (archive, source);
    }

    bool waitForEnd()
    {
        return runMessageLoopUntil ([&] { return isFinished; }, 60000);
    }

    static bool exportItems (const std::vector<ContentItem*>& items, const juce::File& target)
    {
        PackageExport result (target);

        for (const auto* item : items)
            result.add (*item);

        return result.write();
    }

    /** Presses a button of the question; "Rename:NAME" gives the name. */
    void answer (const juce::String& text)
    {
        press (text.upToFirstOccurrenceOf (":", false, false));

        if (text.containsChar (':'))
        {
            ASSERT_TRUE (runMessageLoopUntil ([&] { return ! allOf<juce::TextEditor> (desktop).empty(); }));
            allOf<juce::TextEditor> (desktop)[0]->setText (text.fromFirstOccurrenceOf (":", false, false));
            press ("OK");
        }
    }

    /** Each file with its author. */
    juce::String getFiles() const
    {
        juce::StringArray files;

        for (const auto& entry : juce::RangedDirectoryIterator (presets, false))
            files.add (entry.getFile().getFileNameWithoutExtension() + "="
                       + juce::parseXML (entry.getFile())->getStringAttribute ("author"));

        files.sort (false);
        return files.joinIntoString (" ");
    }

    juce::String getCounts() const
    {
        return juce::String (counts.imported) + " " + juce::String (counts.renamed) + " "
               + juce::String (counts.skipped) + " " + juce::String (counts.failed);
    }

    /** Expects in memory what lies there, with its tags. */
    void expectItemsToBeTheFiles() const
    {
        for (const auto& item : source.getItems())
        {
            const auto tag = juce::parseXML (source.getItemFile (item->name))->getStringAttribute ("author");
            EXPECT_EQ (item->tags.toText(), "A:" + tag) << item->name;
            EXPECT_EQ (item->tagIds, std::vector<int> { map.getId ("A", tag) }) << item->name;
        }

        EXPECT_EQ (static_cast<int> (source.getItems().size()), presets.getNumberOfChildFiles (juce::File::findFiles));
    }

    const juce::File presets = folder.getChildFile ("a/b"), archive = folder.getChildFile ("archive.qvzip");
    TagMap map;
    PresetsDirectoryContent source { *this, "User", presets, ".qvprs2" };
    TestDesktop desktop;
    SlicedTask task;
    PackageImportExport importer { desktop, task, *this };
    int numProgress = 0;
    ImportCounts counts;
    bool isFinished = false;

private:
    juce::TextButton* findButton (const juce::String& text)
    {
        for (auto* button : allOf<juce::TextButton> (desktop))
            if (button->getButtonText() == text)
                return button;

        return nullptr;
    }

    void press (const juce::String& text)
    {
        ASSERT_TRUE (runMessageLoopUntil ([&] { return findButton (text) != nullptr; })) << text;
        const juce::Component::SafePointer<juce::TextButton> button (findButton (text));
        button->triggerClick();
        runMessageLoopUntil ([&] { return button == nullptr || text == "Rename"; });
    }
};

} // namespace

TEST_F (ImportAndExport, ASaveTakesThePlaceOfTheOldOneOrLeavesIt)
{
    ASSERT_NE (source.saveItem ("Kick", TagSet::fromText ("A:b")), nullptr);
    manager.setValueString (0, "9");
    const auto* saved = source.saveItem ("KICK", TagSet::fromText ("A:c"));
    ASSERT_NE (saved, nullptr);
    EXPECT_EQ (saved->name, "KICK");
    EXPECT_EQ (saved->tagIds, std::vector<int> { map.getId ("A", "c") });
    EXPECT_EQ (source.getItems().size(), 1u);
    EXPECT_EQ (source.getTags().toText(), "A:c");
    EXPECT_EQ (getFiles(), "KICK=");

    manager.setValueString (0, "1");
    ASSERT_TRUE (source.loadItem ("KICK"));
    EXPECT_EQ (manager.getValueString (0), "9");

    // A folder in the new file's place, a file in the folder's, a disk without room.
    const auto text = presets.getChildFile ("KICK.qvprs2").loadFileAsString();
    const auto expectFailure = [&] (const juce::String& name, const char* why)
    {
        manager.setValueString (0, "3");
        EXPECT_EQ (source.saveItem (name, TagSet::fromText ("A:d")), nullptr) << why;
        EXPECT_EQ (namesOf (itemsOf (source)), "KICK") << why;
        EXPECT_EQ (source.getTags().toText(), "A:c") << why;
    };

    const auto obstacle = presets.getChildFile ("kick.qvprs2");
    obstacle.createDirectory();
    expectFailure ("kick", "a folder");
    EXPECT_EQ (presets.getChildFile ("KICK.qvprs2").loadFileAsString(), text);
    obstacle.deleteRecursively();

    {
        const FullDisk full;
        expectFailure ("kick", "full");
        expectFailure ("KICK", "full");
    }

    EXPECT_EQ (presets.getChildFile ("KICK.qvprs2").loadFileAsString(), text);
    EXPECT_EQ (getFiles(), "KICK=");

    presets.moveFileTo (folder.getChildFile ("away"));
    presets.replaceWithText ("no folder");
    expectFailure ("New", "no folder");
    EXPECT_FALSE (source.renameItem (*source.findItem ("Kick"), "New"));
    EXPECT_FALSE (source.assignTags (*source.findItem ("Kick"), {}));
    EXPECT_FALSE (source.removeItem (*source.findItem ("Kick")));
    EXPECT_EQ (namesOf (itemsOf (source)), "KICK");
    EXPECT_EQ (presets.loadFileAsString(), "no folder");
}

TEST_F (ImportAndExport, EveryAnswerToATakenName)
{
    struct Case
    {
        juce::StringArray answers;
        const char* files;
        const char* counts;
    };

    const Case cases[] {
        { { "Replace", "Replace" }, "Free=3 Second=2 TAKEN=1", "3 0 0 0" },
        { { "Skip", "Skip" }, "Free=3 Second=old TAKEN=old", "1 0 2 0" },
        { { "Skip", "Replace" }, "Free=3 Second=2 TAKEN=old", "2 0 1 0" },
        { { "Replace All" }, "Free=3 Second=2 TAKEN=1", "3 0 0 0" },
        { { "Skip All" }, "Free=3 Second=old TAKEN=old", "1 0 2 0" },
        { { "Rename:Mine", "Skip All" }, "Free=3 Mine=1 Second=old TAKEN=old", "2 1 1 0" },
        { { "Rename:second", "Rename:Mine", "Skip" }, "Free=3 Mine=1 Second=old TAKEN=old", "2 1 1 0" },
        { { "Rename:second", "Replace" }, "Free=3 Second=1 TAKEN=old second (1)=2", "3 2 0 0" },
        { { "Rename:../Up", "Cancel" }, "Second=old TAKEN=old _Up=1", "1 1 0 0" },
        { { "Rename:", "Rename: . ", "Skip All" }, "Free=3 Second=old TAKEN=old", "1 0 2 0" },
        { { "Replace", "Cancel" }, "Second=old TAKEN=1", "1 0 0 0" },
    };

    for (const auto& c : cases)
    {
        const auto which = c.answers.joinIntoString (", ");
        presets.deleteRecursively();
        presets.createDirectory();
        write ("TAKEN", "old");
        write ("Second", "old");
        source.reload();

        ASSERT_TRUE (start (package::makeArchive ({ { "Taken.qvprs2", presetBy ("1") },
                                                    { "second.qvprs2", presetBy ("2") },
                                                    { "Free.qvprs2", presetBy ("3") } })));
        EXPECT_FALSE (importer.startImport (archive, source)) << "one at a time";

        for (const auto& text : c.answers)
            answer (text);

        ASSERT_TRUE (waitForEnd()) << which;
        EXPECT_EQ (getFiles(), c.files) << which;
        EXPECT_EQ (getCounts(), c.counts) << which;
        expectItemsToBeTheFiles();
    }
}

TEST_F (ImportAndExport, NamesThatMeetAreDifferentItems)
{
    const auto data = package::makeArchive ({ { "Bass 2.5.qvprs2", presetBy ("1") },
                                              { "Bass 2.7.qvprs2", presetBy ("2") },
                                              { "A?B.qvprs2", presetBy ("3") },
                                              { "A_B.qvprs2", presetBy ("4") },
                                              { "x/Same.qvprs2", presetBy ("5") },
                                              { "y/same.qvprs2", presetBy ("6") },
                                              { "Late.qvprs2", presetBy ("7") } });
    write ("Bass 2", "old");
    source.reload();
    write ("Late", "old"); // which isn't listed

    // Again, and each finds the one that it was.
    for (const auto& [text, question] : { std::pair { "Replace", "'Late' already exists." },
                                          { "Replace All", "'Bass 2_5' and 6 more already exist." } })
    {
        ASSERT_TRUE (start (data));
        ASSERT_TRUE (runMessageLoopUntil ([&] { return ! allOf<K7R::AlertWindow> (desktop).empty(); })) << text;
        EXPECT_TRUE (allOf<K7R::AlertWindow> (desktop)[0]->getText().startsWith (question)) << text;
        answer (text);
        ASSERT_TRUE (waitForEnd()) << text;
        EXPECT_EQ (getFiles(), "A_B (1)=4 A_B=3 Bass 2=old Bass 2_5=1 Bass 2_7=2 Late=7 Same=5 same (1)=6") << text;
        EXPECT_EQ (getCounts(), "7 5 0 0") << text;
        expectItemsToBeTheFiles();
    }
}

TEST_F (ImportAndExport, NothingIsWrittenOutsideTheFolderAndWhatLiesIsPassedOver)
{
    auto data = package::makeArchive ({ { "../../up.qvprs2", presetBy ("1") },
                                        { "/root.qvprs2", presetBy ("2") },
                                        { "..\\..\\back.qvprs2", presetBy ("3") },
                                        { "C:\\drive.qvprs2", presetBy ("4") },
                                        { "~/home.qvprs2", presetBy ("5") },
                                        { ".qvprs2", presetBy ("6") },
                                        { "...qvprs2", presetBy ("7") },
                                        { "upper.QVPRS2", presetBy ("8") },
                                        { "hash", presetBy ("9") },
                                        { "huge.qvprs2", presetBy ("10") },
                                        { "damaged.qvprs2", presetBy ("11") },
                                        { "twice.qvprs2", presetBy ("12") } });
    put (entryOf (data, 9) + storedBytesInEntry, 0xfffffff0, 4);
    put (entryOf (data, 9) + bytesInEntry, 0xfffffff0, 4);
    put (entryOf (data, 10) + methodInEntry, 8, 2); // no stream that inflates
    ASSERT_TRUE (start (data));
    ASSERT_TRUE (waitForEnd());
    EXPECT_EQ (getFiles(), "back=3 drive=4 home=5 root=2 twice=12 up=1");
    EXPECT_EQ (getCounts(), "6 0 0 4");

    auto all = folder.findChildFiles (juce::File::findFilesAndDirectories, true);
    EXPECT_EQ (all.size(), 9) << "the presets, the archive, and two folders";

    // No archive, one that isn't there, a folder.
    for (const auto& file : { presets.getChildFile ("up.qvprs2"), folder.getChildFile ("missing.qvzip"), presets })
        EXPECT_FALSE (importer.startImport (file, source)) << file.getFullPathName();

    // Replacing keeps the old one when the new one can't be written.
    ASSERT_TRUE (start (package::makeArchive ({ { "up.qvprs2", presetBy ("new") } })));
    ASSERT_TRUE (runMessageLoopUntil ([&] { return desktop.getNumChildComponents() > 0; }));

    {
        const FullDisk full;
        answer ("Replace");
        ASSERT_TRUE (waitForEnd());
    }

    EXPECT_EQ (getCounts(), "0 0 0 1");
    EXPECT_TRUE (getFiles().contains ("up=1"));
    EXPECT_TRUE (source.containsItem ("up"));
}

TEST_F (ImportAndExport, ThousandsComeInWhileMessagesRun)
{
    constexpr int number = 2000;
    std::vector<Member> members;

    for (int i = 0; i < number; ++i)
        members.push_back ({ "Preset " + juce::String (i) + ".qvprs2", presetBy (juce::String (i % 7)) });

    ASSERT_TRUE (start (package::makeArchive (members)));
    ASSERT_TRUE (waitForEnd());
    EXPECT_EQ (counts.imported, number);
    EXPECT_GT (numProgress, 3);
    EXPECT_EQ (presets.getNumberOfChildFiles (juce::File::findFiles), number);
    EXPECT_EQ (source.getTags().toText(), "A:0|1|2|3|4|5|6");

    // An end before its time leaves what has come in.
    presets.deleteRecursively();
    presets.createDirectory();
    source.reload();
    numProgress = 0;
    ASSERT_TRUE (start (package::makeArchive (members)));
    ASSERT_TRUE (runMessageLoopUntil ([&] { return numProgress > 1; }));
    task.stop();
    EXPECT_GT (counts.imported, 0);
    EXPECT_LT (counts.imported, number);
    runMessageLoopFor (50);
    EXPECT_EQ (presets.getNumberOfChildFiles (juce::File::findFiles), counts.imported);
}

TEST_F (ImportAndExport, TagsThatNoOtherHasCostNoMoreWithEachPreset)
{
    std::vector<Member> members;

    for (int i = 0; i < 300; ++i)
    {
        juce::String tags;

        for (int category = 0; category < TagSet::maximumCategories; ++category)
            tags << "Category " << (i * TagSet::maximumCategories + category) << ":a|b;";

        members.push_back ({ juce::String (i) + ".qvprs2", bytes ("<Preset tags=\"" + tags + "\"/>") });
    }

    // Each took longer than the one before, when all were collected anew for each.
    ASSERT_TRUE (start (package::makeArchive (members)));
    ASSERT_TRUE (runMessageLoopUntil ([this] { return isFinished; }, 10000));
    EXPECT_EQ (counts.imported, 300);
    EXPECT_EQ (source.getTags().getCategories().size(), static_cast<size_t> (TagMap::maximumCategories));

    // The tags that the browser doesn't know stay when others are assigned.
    TagAssignment assignment;
    assignment.reset (itemsOf (source), {});
    assignment.toggle ("A", "new");
    const auto& last = source.getItems().back()->tags;
    EXPECT_EQ (assignment.tagsFor (last).toText(), last.toText() + ";A:new");
}

TEST_F (ImportAndExport, AnExportIsAPlainArchiveOrLeavesWhatWasThere)
{
    for (const auto* name : { "One", "Two", "Gone" })
        write (name, name);

    source.reload();
    presets.getChildFile ("Gone.qvprs2").deleteFile();

    const auto items = itemsOf (source);
    archive.replaceWithText ("before");
    EXPECT_FALSE (exportItems ({ source.findItem ("Gone") }, archive));
    EXPECT_FALSE (exportItems ({}, archive));

    {
        const FullDisk full;
        EXPECT_FALSE (exportItems (items, archive));
    }

    EXPECT_EQ (archive.loadFileAsString(), "before");
    EXPECT_FALSE (exportItems (items, presets));
    EXPECT_FALSE (exportItems (items, archive.getChildFile ("in a file.qvzip")));
    EXPECT_FALSE (exportItems (items, folder.getChildFile ("missing/x.qvzip")));
    EXPECT_EQ (listFolder(), juce::StringArray ("archive.qvzip")) << "nothing beside it";

    ASSERT_TRUE (exportItems (items, archive));
    EXPECT_EQ (listFolder(), juce::StringArray ("archive.qvzip"));
    juce::ZipFile zip (archive);
    ASSERT_EQ (zip.getNumEntries(), 2);

    for (int i = 0; i < 2; ++i)
    {
        const auto& entry = *zip.getEntry (i);
        const std::unique_ptr<juce::InputStream> stream (zip.createStreamForEntry (i));
        EXPECT_EQ (stream->readEntireStreamAsString(), presets.getChildFile (entry.filename).loadFileAsString());
    }

    juce::ChildProcess unzip;

    if (unzip.start (juce::StringArray { "unzip", "-tqq", archive.getFullPathName() }))
    {
        unzip.readAllProcessOutput();
        EXPECT_EQ (unzip.getExitCode(), 0u);
    }

    // A link gives what it leads to, and what would wait for a writer nothing.
    presets.getChildFile ("Two.qvprs2").moveFileTo (folder.getChildFile ("two"));
    ASSERT_EQ (symlink ("../../two", presets.getChildFile ("Two.qvprs2").getFullPathName().toRawUTF8()), 0);
    ASSERT_EQ (mkfifo (presets.getChildFile ("Gone.qvprs2").getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_TRUE (exportItems (items, archive));
    EXPECT_EQ (juce::ZipFile (archive).getNumEntries(), 2);

    // And comes back as it went.
    presets.deleteRecursively();
    presets.createDirectory();
    source.reload();
    ASSERT_TRUE (importer.startImport (archive, source));
    ASSERT_TRUE (waitForEnd());
    EXPECT_EQ (getFiles(), "One=One Two=Two");
}
