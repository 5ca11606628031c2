// SPDX-License-Identifier: GPL-3.0-or-later

// Which files the browser writes, and what it does where a name can't be kept or a file can't be written.

#include "EditorBrowser.h"

TEST_F (EditorBrowser, NamesThatMeetInOneFileLoseNoPreset)
{
    const auto save = [&] (const std::string& name, float value)
    {
        instance().set (feedback, value);
        openSaveAs();
        enter (name);
    };

    // Its file would be that of "Ash": another name is proposed, and what was typed stays meanwhile.
    save ("ash.5", 0.77f);
    EXPECT_EQ (getFiles(), initialFiles);
    type ({ "Escape" });
    type ({ "Return" });
    EXPECT_TRUE (waitForCover());
    type ({ "Return" });
    ASSERT_TRUE (waitForFiles (initialFiles + std::string (" ash_5=77")));
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.77f, near);

    save ("elm/fir", 0.66f);
    ASSERT_TRUE (waitForFiles (initialFiles + std::string (" ash_5=77 elm_fir=66")));
    EXPECT_TRUE (window->hasStatusText (testskin::wideHeight, testskin::wideWidth)) << "it has another name";
    save ("elm/fir", 0.55f);
    type ({ "Return" });
    const auto files = std::string (initialFiles) + " ash_5=77 elm_fir (1)=55 elm_fir=66";
    ASSERT_TRUE (waitForFiles (files));

    // A name that leads back to the preset's own file is refused, and stays to be changed.
    browseUser();
    click (layout::editButton);
    click (layout::row (0));
    holding ("Control_L", [&] { type ({ "Return" }); });
    enter ("ash.1");
    type (answers::ok);
    EXPECT_EQ (getFiles(), files);
    type ({ "End", "BackSpace", "BackSpace", "x", "Return" });
    ASSERT_TRUE (waitForFiles ("Birch=20 Cedar=30 Elm=40 Fir=50 ash_5=77 ashx=10 elm_fir (1)=55 elm_fir=66"));
}

TEST_F (EditorBrowser, AnImportGivesNamesThatMeetOnesOfTheirOwn)
{
    write ("Bass 2.5", 61);
    write ("Bass 2.7", 62);

    browseUser();
    click (layout::editButton);
    selectAll();
    click (layout::exportButton);
    enter ("a");
    ASSERT_TRUE (window->waitFor ([&] { return files::exists (desktop / "a.qvzip"); }, 5s));
    selectAll();
    type ({ "Delete" });
    type (answers::yes);
    ASSERT_TRUE (waitForFiles (""));

    // Another program's file, which isn't listed yet, can be replaced like any other.
    write ("Fir", 1);
    const auto imported = "Ash=10 Bass 2_5=61 Bass 2_7=62 Birch=20 Cedar=30 Elm=40 Fir=50";
    click (layout::importButton);
    enter ("a.qvzip");
    type (answers::replace);
    ASSERT_TRUE (waitForFiles (imported));
    EXPECT_EQ (getSelectedRows(), "0123456");

    // The same archive finds them again, though one has gone since.
    files::remove (file ("Cedar"));
    write ("Bass 2_5", 1);
    click (layout::importButton);
    enter ("a.qvzip");
    type (answers::replaceAll);
    ASSERT_TRUE (waitForFiles (imported));
}

TEST_F (EditorBrowser, ShowsWhatWasSavedAndWhatWasNot)
{
    constexpr uint32_t ticked = 0xb84a00;
    constexpr auto factorySource =
        Place { layout::userSource.x, layout::userSource.y - 21, layout::userSource.width, 20 };
    const auto isTicked = [&] (const Place& source)
    {
        window->moveTo (layout::content.x, layout::buttons - 5);
        return window->waitFor (
            [&] { return window->getPixel (source.x + source.width - 8, source.centreY()) == ticked; }, 2s);
    };

    // A name from the list is the file that is saved to, blanks and all.
    write (" pad", 5);
    instance().set (feedback, 0.77f);
    openSaveAs();
    click (layout::row (5));
    click (layout::saveButton);
    type (answers::yes);
    ASSERT_TRUE (waitForFiles (std::string (" pad=77 ") + initialFiles));
    ASSERT_TRUE (waitForCover (false));

    // Where the factory's presets alone are shown, what is saved comes to them.
    browse();
    click (factorySource);
    EXPECT_TRUE (isTicked (factorySource));
    click (layout::okButton);
    openSaveAs();
    enter ("aaa");
    ASSERT_TRUE (waitForCover (false));
    browse();
    EXPECT_TRUE (isTicked (factorySource) && isTicked (layout::userSource));
    EXPECT_EQ (getSelectedRows(), "0");
    click (factorySource);

    // Shift and a click where nothing is selected.
    click (layout::editButton);
    click (layout::row (0));
    type ({ "Delete" });
    type (answers::yes);
    EXPECT_EQ (getSelectedRows(), "");
    holding ("Shift_L", [&] { click (layout::row (1)); });
    EXPECT_EQ (getSelectedRows(), "1");

    // A tag that can't be written shows what it was.
    const auto& tag = layout::slowOfAll;
    const auto colourOfTag = [&]
    {
        window->moveTo (layout::content.x, layout::buttons - 5);
        window->settle();
        return window->getPixel (tag.x + 3, tag.centreY());
    };

    const auto lit = colourOfTag();
    click (tag);
    EXPECT_NE (colourOfTag(), lit);
    click (tag);
    EXPECT_EQ (colourOfTag(), lit);
    files::remove (file ("Birch"));
    click (tag);
    EXPECT_EQ (colourOfTag(), lit);
    EXPECT_TRUE (window->hasStatusText (testskin::wideHeight, testskin::wideWidth));
}

TEST_F (EditorBrowser, TicksAndHiddenColumnsDoNotHideWhatIsSaved)
{
    constexpr Place expandButton { layout::resultsLeft, layout::content.y, 20, 20 };

    // A tag is ticked that the new preset doesn't have.
    browseUser();
    click (layout::tag (1, 0));
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("40"));
    click (layout::tag (1, 0));
    click (layout::tag (0, 0));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
    openSaveAs();
    enter ("aaa");
    ASSERT_TRUE (waitForCover (false));
    browse();
    EXPECT_EQ (getSelectedRows(), "0");
    EXPECT_EQ (tagsOf ("aaa"), "");

    // The columns come back for the tags of what is saved.
    click (expandButton);
    click (layout::okButton);
    openSaveAs();
    click (layout::slowOfAll);
    enter ("bbb");
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NE (tagsOf ("bbb").find ("Slow"), std::string::npos) << tagsOf ("bbb");
}
