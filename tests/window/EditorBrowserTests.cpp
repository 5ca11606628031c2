// SPDX-License-Identifier: GPL-3.0-or-later

// The preset browser as a person uses it, up to the files that lie on the disk and the values that the host sees.

#include "EditorBrowser.h"

//==============================================================================
TEST_F (EditorBrowser, AuditionsFivePresetsAndGoesBackOrStays)
{
    struct Way
    {
        const char* name;
        bool stays;
        std::function<void()> leave;
    };

    const Way ways[] {
        { "Cancel", false, [&] { click (layout::cancelButton); } },
        { "OK", true, [&] { click (layout::okButton); } },
        { "Escape", false, [&] { type ({ "Escape" }); } },
        { "Return", true, [&] { type ({ "Return" }); } },
        { "the close button", false, [&] { click (layout::closeButton); } },
        { "a double click", true, [&] { window->doubleClick (layout::row (3)); } },
    };

    // Both sources' presets by their names.
    std::vector<std::string> feedbacks;

    for (const std::string name : { "Acid Vane", "Amber", "Ash", "Bell Reed", "Bellows" })
        feedbacks.push_back (
            feedbackOf (name == "Ash" ? file (name) : files::path (QUILVANE_PRESETS_FOLDER) / (name + ".qvprs2")));

    for (const auto& way : ways)
    {
        instance().set (feedback, 0.97f);
        instance().set (fx, 0.55f);
        const auto before = getSound();

        browse();
        click (layout::row (1));
        EXPECT_TRUE (waitForFeedback (feedbacks[1])) << way.name;

        for (const auto& [keys, index] : { std::pair { Keys { "Up" }, 0u },
                                           { { "Up" }, 0u },
                                           { { "Left" }, 0u },
                                           { { "Down" }, 1u },
                                           { { "Down" }, 2u },
                                           { { "Right", "Left" }, 2u },
                                           { { "Down", "Down" }, 4u } })
        {
            type (keys);
            EXPECT_TRUE (waitForFeedback (feedbacks[index])) << way.name << index;
        }

        click (layout::row (3));
        EXPECT_TRUE (waitForFeedback (feedbacks[3])) << way.name;
        const auto last = getSound();

        way.leave();
        ASSERT_TRUE (waitForCover (false)) << way.name;
        EXPECT_TRUE (isSame (getSound(), way.stays ? last : before)) << way.name;
    }

    EXPECT_EQ (getFiles(), initialFiles);
}

TEST_F (EditorBrowser, SavesUnderANewNameAndOverAnOldOneAfterAQuestion)
{
    const auto save = [&] (const std::string& name, float value)
    {
        instance().set (feedback, value);
        openSaveAs();
        enter (name);
    };

    save ("yew", 0.77f);
    ASSERT_TRUE (waitForCover (false));
    ASSERT_TRUE (waitForFiles (initialFiles + std::string (" yew=77")));

    // It's the current one now, unchanged.
    click (testskin::previousPresetButton.place);
    EXPECT_TRUE (waitForCover (false));
    EXPECT_GT (std::abs (instance().value (feedback) - 0.77f), near);

    // A name in another case: "No" leads back to the name.
    save ("ash", 0.66f);
    type (answers::no);
    EXPECT_TRUE (waitForCover());
    EXPECT_EQ (getFiles(), initialFiles + std::string (" yew=77"));
    type ({ "Return" });
    type (answers::yes);
    ASSERT_TRUE (waitForFiles ("Birch=20 Cedar=30 Elm=40 Fir=50 ash=66 yew=77"));
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.66f, near);

    // A click on a result takes its name; the tags are those of the editor.
    instance().set (feedback, 0.44f);
    openSaveAs();
    click (layout::row (1));
    EXPECT_NEAR (instance().value (feedback), 0.44f, near) << "nothing is loaded";
    click (layout::tag (1, 0));
    click (layout::saveButton);
    type (answers::yes);
    ASSERT_TRUE (waitForFiles ("Birch=44 Cedar=30 Elm=40 Fir=50 ash=66 yew=77"));
    EXPECT_EQ (tagsOf ("Birch").rfind ("Modulation:Slow;Spatialize:", 0), 0u) << tagsOf ("Birch");

    // Nothing is saved on the other ways out, nor where a folder has the name, which asks for another; the sound stays.
    const auto before = getFiles();

    for (const auto& leave : { Keys { "Escape" }, Keys {} })
    {
        instance().set (feedback, 0.33f);
        openSaveAs();
        type ({ "a", "b" });
        leave.empty() ? click (layout::cancelButton) : type (leave);
        ASSERT_TRUE (waitForCover (false));
        EXPECT_EQ (getFiles(), before);
        EXPECT_NEAR (instance().value (feedback), 0.33f, near);
    }

    files::create_directory (file ("bad"));
    save ("bad", 0.22f);
    type ({ "Escape" });
    EXPECT_TRUE (waitForCover());
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (files::is_directory (file ("bad")));
    EXPECT_NEAR (instance().value (feedback), 0.22f, near);
}

TEST_F (EditorBrowser, TagsThreeAtOnceAndWalksThroughWhatTheFilterFinds)
{
    browseUser();
    click (layout::editButton);
    click (layout::row (0));
    holding ("Shift_L", [&] { click (layout::row (2)); });
    EXPECT_EQ (getSelectedRows(), "012");
    click (layout::slowOfAll);
    EXPECT_EQ (tagsOf ("Ash"), "Modulation:Fast|Slow");
    EXPECT_EQ (tagsOf ("Birch"), "Modulation:Slow");
    EXPECT_EQ (tagsOf ("Cedar"), "Modulation:Slow");
    EXPECT_EQ (tagsOf ("Elm"), "Modulation:Slow;Spatialize:Wide");
    EXPECT_EQ (getFiles(), initialFiles);

    click (layout::editButton);
    click (layout::tag (0, 1));
    EXPECT_EQ (getSelectedRows(), "012") << "what was selected is found";
    click (layout::tag (1, 0));
    EXPECT_EQ (getSelectedRows(), "");
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("40"));
    click (layout::tag (1, 0));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));

    const auto& next = testskin::nextPresetButton.place;
    const auto& previous = testskin::previousPresetButton.place;
    const auto walk = [&] (const Place& button, const std::vector<const char*>& feedbacks)
    {
        for (const auto* percent : feedbacks)
        {
            click (button);
            EXPECT_TRUE (waitForFeedback (percent));
        }
    };

    walk (next, { "40" });
    walk (previous, { "30", "20", "10", "10" });
    walk (next, { "20" });

    // With changed parameters there's a question first.
    const auto change = [&]
    {
        instance().set (feedback, 0.99f);
        click (next);
        ASSERT_TRUE (waitForCover());
        EXPECT_NEAR (instance().value (feedback), 0.99f, near);
    };

    change();
    type ({ "Escape" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.99f, near);

    change();
    type (answers::warningsYes);
    enter ("zen");
    ASSERT_TRUE (waitForFiles (initialFiles + std::string (" zen=99")));
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NEAR (instance().value (feedback), 0.99f, near) << "no step follows";

    browse();
    EXPECT_EQ (getSelectedRows(), "4") << "what was ticked is, and the new preset has the tag, too";
    click (layout::row (1));
    click (layout::okButton);
    change();
    type (answers::warningsNo);
    EXPECT_TRUE (waitForFeedback ("30"));
    EXPECT_TRUE (waitForCover (false));

    // A value that comes back by itself is no change.
    walk (next, { "40" });
    const auto loaded = instance().value (feedback);
    instance().set (feedback, 0.99f);
    instance().set (feedback, loaded);
    walk (next, { "99" });
}

TEST_F (EditorBrowser, RenamesAndDeletesInEditModeOnly)
{
    browseUser();
    click (layout::row (1));
    type ({ "Delete", "Escape" });
    ASSERT_TRUE (waitForCover (false)) << "there's no question";

    browse();
    click (layout::editButton);
    click (layout::row (1));
    holding ("Control_L", [&] { type ({ "Return" }); });
    enter ("ash");
    EXPECT_EQ (getFiles(), initialFiles);
    type (answers::ok);
    enter ("tree");
    ASSERT_TRUE (waitForFiles ("Ash=10 Cedar=30 Elm=40 Fir=50 tree=20"));
    EXPECT_TRUE (waitForFeedback ("20"));
    EXPECT_EQ (getSelectedRows(), "4");

    window->doubleClick (layout::row (4));
    enter ("tree");
    window->doubleClick (layout::row (3));
    type ({ "q", "Escape" });
    EXPECT_EQ (getFiles(), "Ash=10 Cedar=30 Elm=40 Fir=50 tree=20");

    click (layout::row (1));
    holding ("Control_L", [&] { click (layout::row (3)); });
    EXPECT_EQ (getSelectedRows(), "13");

    type ({ "Delete" });
    type (answers::no);
    EXPECT_EQ (getFiles(), "Ash=10 Cedar=30 Elm=40 Fir=50 tree=20");
    EXPECT_EQ (getSelectedRows(), "13");
    type ({ "Delete" });
    type (answers::yes);
    ASSERT_TRUE (waitForFiles ("Ash=10 Elm=40 tree=20"));
    EXPECT_EQ (getSelectedRows(), "");

    // The sound of a preset that has gone can still be left.
    click (layout::row (2));
    EXPECT_TRUE (waitForFeedback ("20"));
    click (layout::okButton);
    ASSERT_TRUE (waitForCover (false));
}

TEST_F (EditorBrowser, ExportsDeletesAndImportsWithEveryAnswer)
{
    browseUser();
    click (layout::editButton);
    selectAll();
    click (layout::exportButton);
    enter ("a");
    ASSERT_TRUE (window->waitFor ([&] { return files::exists (desktop / "a.qvzip"); }, 5s));
    EXPECT_EQ (getSelectedRows(), "01234");

    selectAll();
    type ({ "Delete" });
    type (answers::yes);
    ASSERT_TRUE (waitForFiles (""));

    const auto import = [&]
    {
        click (layout::importButton);
        enter ("a.qvzip");
    };

    import();
    ASSERT_TRUE (waitForFiles (initialFiles));
    EXPECT_EQ (getSelectedRows(), "01234");
    EXPECT_EQ (tagsOf ("Elm"), "Modulation:Slow;Spatialize:Wide");

    const std::string names[] { "Ash", "Birch", "Cedar", "Elm", "Fir" };

    for (const auto& name : names)
        write (name, 90);

    import();

    for (const auto& answer : { answers::replace, answers::skip, answers::rename })
        type (answer);

    enter ("ash"); // which asks again
    type (answers::rename);
    enter ("yew");
    type (answers::replaceAll);
    ASSERT_TRUE (waitForFiles ("Ash=10 Birch=90 Cedar=90 Elm=40 Fir=50 yew=30"));
    EXPECT_EQ (getSelectedRows(), "0345");

    files::remove (file ("Fir"));
    import();
    type (answers::skipAll);
    window->settle();
    EXPECT_EQ (getFiles(), "Ash=10 Birch=90 Cedar=90 Elm=40 yew=30") << "Fir is listed still";
    import();
    type ({ "Escape" });
    EXPECT_EQ (getFiles(), "Ash=10 Birch=90 Cedar=90 Elm=40 yew=30");
    click (layout::row (5));
    EXPECT_TRUE (waitForFeedback ("30"));
    click (layout::cancelButton);
    ASSERT_TRUE (waitForCover (false));
}

//==============================================================================
TEST_F (EditorBrowser, TheHostClosesTheWindowWhateverIsOpen)
{
    struct Open
    {
        const char* name;
        std::function<void()> open;
    };

    const auto edit = [&]
    {
        click (layout::editButton);
        click (layout::row (1));
    };

    const Open everything[] {
        { "the list", [&] { click (layout::row (1)); } },
        { "save-as",
          [&]
          {
              type ({ "Escape" });
              openSaveAs();
              type ({ "n", "e", "w" });
          } },
        { "the question of save-as",
          [&]
          {
              type ({ "Escape" });
              openSaveAs();
              enter ("ash");
          } },
        { "the edit mode", [&] { click (layout::editButton); } },
        { "the question before a deletion",
          [&]
          {
              edit();
              type ({ "Delete" });
          } },
        { "a name that is taken",
          [&]
          {
              edit();
              holding ("Control_L", [&] { type ({ "Return" }); });
              enter ("ash");
          } },
        { "the export",
          [&]
          {
              edit();
              click (layout::exportButton);
          } },
    };

    browseUser();
    type ({ "Escape" });

    for (const auto& each : everything)
    {
        browse();
        each.open();
        const auto sound = getSound();
        window->close();
        ASSERT_TRUE (window->openAndSee()) << each.name;
        window->settle();
        EXPECT_EQ (getFiles(), initialFiles) << each.name;
        EXPECT_TRUE (isSame (getSound(), sound)) << each.name << ": what is heard stands";

        // And all goes on as ever.
        browse();
        click (layout::row (4));
        EXPECT_TRUE (waitForFeedback ("50")) << each.name;
        click (layout::cancelButton);
        ASSERT_TRUE (waitForCover (false)) << each.name;
        EXPECT_TRUE (isSame (getSound(), sound)) << each.name;
    }

    expectWholeDrag (*window);

    // An import's question, and an instance that goes with everything open.
    browse();
    edit();
    click (layout::exportButton);
    enter ("a");
    EXPECT_TRUE (files::exists (desktop / "a.qvzip"));
    click (layout::importButton);
    enter ("a.qvzip");
    window->close();
    ASSERT_TRUE (window->openAndSee());
    browse();
    edit();
    click (layout::importButton);
    enter ("a.qvzip");
    window->destroyInstance();
    EXPECT_EQ (getFiles(), initialFiles);
}

TEST_F (EditorBrowser, PresetsThatVanishOrAreDamagedDoNoHarm)
{
    browseUser();
    const auto before = getSound();
    files::remove (file ("Birch"));
    files::remove (file ("Cedar"));
    files::create_directory (file ("Cedar"));
    std::ofstream (file ("Elm")) << "rubbish";

    // What can't be read leaves the sound as it is.
    click (layout::row (0));
    EXPECT_TRUE (waitForFeedback ("10"));
    click (layout::row (1));
    EXPECT_TRUE (waitForFeedback ("10"));
    EXPECT_TRUE (window->hasStatusText (testskin::wideHeight, testskin::wideWidth));
    click (layout::row (2));
    EXPECT_TRUE (waitForFeedback ("10"));
    click (layout::row (3));
    EXPECT_TRUE (waitForFeedback ("10"));
    click (layout::row (4));
    EXPECT_TRUE (waitForFeedback ("50"));

    // Nor can it be tagged, renamed or deleted; the rest of a selection can.
    click (layout::editButton);
    click (layout::row (0));
    holding ("Shift_L", [&] { click (layout::row (3)); });
    click (layout::wideOfAll);
    EXPECT_EQ (tagsOf ("Ash"), "Modulation:Fast;Spatialize:Wide");
    EXPECT_EQ (getFiles(), "Ash=10 Cedar= Elm= Fir=50");
    click (layout::row (1));
    holding ("Control_L", [&] { type ({ "Return" }); });
    enter ("yew");
    type (answers::ok);
    type ({ "Escape" });
    EXPECT_EQ (getFiles(), "Ash=10 Cedar= Elm= Fir=50");
    selectAll();
    type ({ "Delete" });
    type (answers::yes);
    EXPECT_EQ (getFiles(), "Cedar=");
    click (layout::cancelButton);
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (isSame (getSound(), before));

    // The whole folder goes: steps stay harmless, and a save says that it can't, and keeps the name and the tags.
    files::remove_all (presets);
    click (testskin::nextPresetButton.place);
    click (testskin::previousPresetButton.place);
    EXPECT_TRUE (isSame (getSound(), before));
    std::ofstream (presets) << "no folder";
    openSaveAs();
    click (layout::tag (1, 0));
    enter ("new");
    EXPECT_TRUE (waitForCover());
    EXPECT_TRUE (isSame (getSound(), before));
    EXPECT_TRUE (files::is_regular_file (presets));
    files::remove (presets);
    files::create_directory (presets);
    type ({ "Return" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_NE (tagsOf ("new"), "");
}
