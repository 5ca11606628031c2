// SPDX-License-Identifier: GPL-3.0-or-later

// The browser's contents and its ways back: many categories, edit mode, a folder that others write to, and the way
// to what was heard before.

#include "EditorBrowser.h"

namespace
{

/** The browser where there are more columns than fit: the results keep a third of it. */
namespace narrow
{

constexpr int results = layout::content.width / 3, resultsLeft = layout::right - results;
constexpr int columnsLeft = layout::content.x + layout::sourcesWidth + layout::gap;
constexpr int columnsRight = resultsLeft - layout::gap;
constexpr int scrollBar = layout::content.y + layout::content.height - 35 - layout::scrollBar / 2;
constexpr Place expandButton { resultsLeft, layout::content.y, 20, 20 };

constexpr Place row (int index)
{
    return { resultsLeft + 5, layout::row (index).y, 100, layout::rowHeight };
}

/** A tag of the last column, once it's scrolled to. */
constexpr Place lastTag { columnsRight - layout::columnWidth + 10, layout::tag (0, 0).y, layout::columnWidth - 20, 20 };

} // namespace narrow

/** The same with the results expanded. */
namespace expanded
{

constexpr Place button { narrow::columnsLeft, layout::content.y, 20, 20 };

constexpr Place row (int index)
{
    return { narrow::columnsLeft + 5, layout::row (index).y, 100, layout::rowHeight };
}

} // namespace expanded

class EditorBrowserList : public EditorBrowser
{
protected:
    /** Takes the columns' scroll bar to its right end. */
    void scrollToLastColumn()
    {
        window->moveTo (narrow::columnsLeft + 4, narrow::scrollBar);
        window->press();

        for (auto x = narrow::columnsLeft; x < layout::right; x += 40)
        {
            window->moveTo (x, narrow::scrollBar);
            window->idle();
        }

        window->settle();
        window->release();
        window->settle();
    }
};

} // namespace

//==============================================================================
TEST_F (EditorBrowserList, ManyCategoriesLeaveRoomForTheResultsAndTheWaysOut)
{
    std::string categories = "Modulation:Slow";

    for (int i = 10; i < 70; ++i)
    {
        categories += ";Kind " + std::to_string (i) + ":";

        for (int tag = 100; tag < 110; ++tag)
            categories += (tag > 100 ? "|t" : "t") + std::to_string (tag);
    }

    write ("Cedar", 30, categories);
    browseUser();
    click (narrow::row (1));
    EXPECT_TRUE (waitForFeedback ("20"));

    // The last column's first tag leaves the one preset that has it.
    scrollToLastColumn();
    click (narrow::lastTag);
    click (narrow::row (0));
    EXPECT_TRUE (waitForFeedback ("30"));

    // The filters can be hidden and come back with their tick.
    click (narrow::expandButton);
    click (expanded::row (0));
    click (expanded::button);
    click (narrow::lastTag);
    click (narrow::row (0));
    EXPECT_TRUE (waitForFeedback ("10"));

    // So can the tags in edit mode, which is left while they're hidden.
    click (layout::editButton);
    scrollToLastColumn();
    click (narrow::lastTag);
    EXPECT_EQ (tagsOf ("Ash"), "Modulation:Fast;Kind 69:t100");
    click (narrow::expandButton);
    click (expanded::row (4));
    EXPECT_TRUE (waitForFeedback ("50"));
    click (layout::editButton);
    type ({ "Delete" });
    click (expanded::row (1));
    EXPECT_TRUE (waitForFeedback ("20")) << "there's no question";
    click (expanded::button);
    click (narrow::row (2));
    EXPECT_TRUE (waitForFeedback ("30"));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
    EXPECT_EQ (getFiles(), initialFiles);
}

TEST_F (EditorBrowserList, EditModeEndsWithTheWindowAndKeepsWhatIsTicked)
{
    // The first and the last of the user's presets are Fast, the second and the fourth are Slow.
    browseUser();
    click (layout::tag (0, 1));
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("40"));

    // A click on another preset ends the writing of a name, and is for that other one.
    click (layout::editButton);
    window->doubleClick (layout::row (1));
    type ({ "a", "s" });
    click (layout::row (0));
    EXPECT_TRUE (waitForFiles ("Ash=10 Birch=20 Cedar=30 Fir=50 as=40"));
    EXPECT_TRUE (waitForFeedback ("20"));
    EXPECT_EQ (getSelectedRows(), "1") << "it stands behind the new name";

    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
    browse();
    type ({ "Delete" });
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("40")) << "neither edit mode nor a question";
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("20"));
    click (layout::tag (0, 1));
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("10")) << "nothing else was ticked";
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
}

TEST_F (EditorBrowserList, TheFolderIsReadAgainWhenItHasChanged)
{
    browseUser();
    click (layout::tag (0, 1));
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("40"));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));

    // Another program brings presets, and takes one away. What is ticked and selected stays.
    write ("Alder", 15, "Modulation:Slow");
    write ("Zelkova", 16, "Modulation:Fast");
    files::remove (file ("Birch"));
    browse();
    EXPECT_EQ (getSelectedRows(), "1");
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("15"));

    // The same when the user's presets are ticked again.
    write ("Aaron", 17, "Modulation:Slow");
    click (layout::userSource);
    click (layout::userSource);
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("17"));
    click (layout::row (6));
    EXPECT_TRUE (waitForFeedback ("16"));

    // And before a save, which must know what is there.
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
    write ("Yew", 18);
    openSaveAs();
    enter ("yew");
    type ({ "Escape", "Escape" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_EQ (getFiles(), "Aaron=17 Alder=15 Ash=10 Cedar=30 Elm=40 Fir=50 Yew=18 Zelkova=16");
}

TEST_F (EditorBrowserList, WhatIsLoadedIsMarkedAlsoInARestoredProject)
{
    const auto& next = testskin::nextPresetButton.place;

    browseUser();
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("20"));
    const auto birch = instance().getChunk();
    click (layout::row (2));
    EXPECT_TRUE (waitForFeedback ("30"));
    const auto cedar = instance().getChunk();
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));

    instance().setChunk (birch);
    EXPECT_TRUE (waitForFeedback ("20"));
    click (next);
    EXPECT_TRUE (waitForFeedback ("30"));

    // A preset that can't be loaded is no dead end.
    files::remove (file ("Elm"));
    click (next);
    click (next);
    EXPECT_TRUE (waitForFeedback ("50"));

    // In an instance whose browser hasn't been opened.
    window.reset();
    window.emplace (*screen, *library);
    instance().setChunk (cedar);
    ASSERT_TRUE (window->openAndSee());
    browseUser();
    EXPECT_EQ (getSelectedRows(), "2");
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
    click (next);
    EXPECT_TRUE (waitForFeedback ("50"));
}

TEST_F (EditorBrowserList, CancelBringsBackAllThatWas)
{
    const auto& next = testskin::nextPresetButton.place;

    browseUser();
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("20"));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));

    // A look at others from a changed sound: it's still changed, and what it came from is known.
    instance().set (feedback, 0.77f);
    instance().set (fx, 0.123456789f);
    const auto changed = getSound();
    browse();
    click (layout::row (3));
    EXPECT_TRUE (waitForFeedback ("40"));
    click (layout::cancelButton);
    ASSERT_TRUE (waitForCover (false));
    EXPECT_EQ (getSound(), changed);

    click (next);
    ASSERT_TRUE (waitForCover()) << "a question before what was changed is lost";
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
    click (testskin::revertButton.place);
    EXPECT_TRUE (waitForFeedback ("20"));

    // Where it was unchanged, it is again.
    browse();
    click (layout::row (3));
    click (layout::cancelButton);
    ASSERT_TRUE (waitForCover (false));
    click (next);
    EXPECT_TRUE (waitForFeedback ("30"));
    EXPECT_TRUE (waitForCover (false));

    // Without a look nothing is loaded: what the host moves meanwhile stays.
    browse();
    instance().set (feedback, 0.66f);
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.66f, near);

    // A state that the host restores meanwhile stands.
    const auto state = instance().getChunk();
    instance().set (feedback, 0.11f);
    browse();
    instance().setChunk (state);
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.66f, near);
}

TEST_F (EditorBrowserList, ThousandsAreTaggedAndDeletedInSlicesThatCanBeStopped)
{
    constexpr int number = 3000;
    const auto nameOf = [] (int i) { return "P" + std::to_string (i); };

    for (int i = 0; i < number; ++i)
        write (nameOf (i), i % 90);

    const auto count = [&] (const auto& condition)
    {
        int found = 0;

        for (int i = 0; i < number; ++i)
            found += condition (nameOf (i)) ? 1 : 0;

        return found;
    };

    const auto countTagged = [&] { return count ([&] (const auto& name) { return ! tagsOf (name).empty(); }); };
    const auto countFiles = [&] { return count ([&] (const auto& name) { return files::exists (file (name)); }); };

    browseUser();
    click (layout::editButton);
    selectAll();

    // Escape is heard long before the last one is tagged, and leaves what is done, and the window.
    window->click (layout::wideOfAll);
    ASSERT_TRUE (window->waitFor ([&] { return ! tagsOf ("P0").empty(); }));
    type ({ "Escape" });
    const auto numTagged = countTagged();
    EXPECT_GT (numTagged, 0);
    EXPECT_LT (numTagged, number);
    EXPECT_TRUE (waitForCover());

    // The same click once more does the rest.
    window->click (layout::wideOfAll);
    EXPECT_TRUE (window->waitFor ([&] { return ! tagsOf (nameOf (number - 1)).empty(); }));
    window->settle();
    EXPECT_EQ (countTagged(), number);

    click (layout::exportButton);
    enter ("a");
    EXPECT_TRUE (window->waitFor ([&] { return files::exists (desktop / "a.qvzip"); }));

    // The button stops it, too.
    click (layout::row (0));
    holding ("Control_L", [&] { type ({ "a" }); });
    type ({ "Delete" });
    type ({ "Left" });
    window->type ("Return");
    ASSERT_TRUE (window->waitFor ([&] { return ! files::exists (file ("Ash")); }));
    click (layout::stopButton);
    const auto numLeft = countFiles();
    EXPECT_GT (numLeft, 0);
    EXPECT_LT (numLeft, number);
    window->close();
    ASSERT_TRUE (window->openAndSee());
    EXPECT_EQ (countFiles(), numLeft);

    // The rest is listed, and goes the same way.
    browse();
    click (layout::editButton);
    selectAll();
    type ({ "Delete" });
    type (answers::yes);
    EXPECT_TRUE (window->waitFor ([&] { return countFiles() == 0; }));
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
}
