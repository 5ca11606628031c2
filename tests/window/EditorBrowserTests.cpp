// SPDX-License-Identifier: GPL-3.0-or-later

// The preset browser as a person uses it, up to the files that lie on the disk and the values that the host sees.

#include <functional>
#include <optional>

#include "EditorWindow.h"

namespace
{

using testskin::Place;

/** Where the browser has its parts, in the editor's coordinates: its layout in numbers, and nowhere else here. */
namespace layout
{

// The window fills the panel up to whole rows; its content stands within frame, title and margins.
constexpr int rowHeight = 20, roomAroundRows = 39;
constexpr int height = (testskin::wideHeight - roomAroundRows) / rowHeight * rowHeight + roomAroundRows;
constexpr Place content { 9, 37, testskin::wideWidth - 18, height - 49 };
constexpr int right = content.x + content.width, header = 20, gap = 4, scrollBar = 10;

constexpr int sourcesWidth = 140, columnWidth = 144, numColumns = 2;
constexpr Place userSource { content.x + 4, content.y + header + 3 + 21, sourcesWidth - 8, 20 };

/** A tag of the filters, or of the tag editor in their place. */
constexpr Place tag (int column, int index)
{
    return { content.x + sourcesWidth + gap + column * columnWidth + 10, content.y + header + 1 + 23 + 4 + index * 21,
             columnWidth - 20, 20 };
}

// The tag editor has the factory's tags too, whatever is shown: they are Extreme, Fast, Layered, Medium, Random,
// Resonant, Slow and so on; Drift, Mono, Opposed and Wide.
constexpr Place slowOfAll = tag (0, 6), wideOfAll = tag (1, 3);

constexpr int resultsLeft = content.x + sourcesWidth + gap + numColumns * columnWidth + gap;
constexpr int restOfRows = (content.height - 35 - header - scrollBar) % rowHeight;

/** A result of the first column. */
constexpr Place row (int index)
{
    return { resultsLeft, content.y + header + restOfRows / 2 + index * rowHeight, 160, rowHeight };
}

constexpr int buttons = content.y + content.height - 25;
constexpr Place editButton { content.x + 5, buttons, 95, 20 };
constexpr Place exportButton { content.x + 196, buttons, 84, 20 }, importButton { content.x + 286, buttons, 84, 20 };
constexpr Place cancelButton { right - 64, buttons, 64, 20 }, okButton { right - 134, buttons, 64, 20 };
constexpr Place saveButton = okButton;
constexpr Place closeButton { testskin::wideWidth - 26, 5, 20, 20 };

} // namespace layout

using Keys = std::vector<const char*>;

/** What presses the buttons of the questions. */
namespace answers
{

const Keys yes { "Tab", "Return" }, no { "Tab", "Tab", "Return" }, ok { "Return" };
const Keys warningsYes { "Return" }, warningsNo { "Tab", "Return" };
const Keys replace { "Return" }, replaceAll { "Tab", "Return" }, rename { "Tab", "Tab", "Return" };
const Keys skip { "Tab", "Tab", "Tab", "Return" }, skipAll { "Tab", "Tab", "Tab", "Tab", "Return" };

} // namespace answers

constexpr const char* initialFiles = "Ash=10 Birch=20 Cedar=30 Elm=40 Fir=50";

class EditorBrowser : public EditorWindow
{
protected:
    void SetUp() override
    {
        for (const auto& created : { presets, desktop, bank.parent_path() })
            files::create_directories (created);

        files::copy_file (QUILVANE_FACTORY_BANK, bank);
        setenv ("HOME", desktop.parent_path().c_str(), 1);
        install ("Wide");
        load();
        write ("Ash", 10, "Modulation:Fast");
        write ("Birch", 20, "Modulation:Slow");
        write ("Cedar", 30);
        write ("Elm", 40, "Modulation:Slow;Spatialize:Wide");
        write ("Fir", 50, "Modulation:Fast");

        window.emplace (*screen, *library);
        ASSERT_TRUE (window->openAndSee());
    }

    ~EditorBrowser() override { setenv ("HOME", homeBefore.c_str(), 1); }

    //==============================================================================
    files::path file (const std::string& name) const { return presets / (name + ".qvprs2"); }

    /** A preset that has a feedback, in percent. */
    void write (const std::string& name, int percent, const std::string& tags = {}) const
    {
        std::ofstream (file (name)) << "<Preset tags=\"" << tags << "\"><Parameters><param name=\"Feedback\" value=\""
                                    << percent << "\"/></Parameters></Preset>";
    }

    /** What stands in a file behind a text, up to the next quotation mark. */
    static std::string find (const files::path& file, const std::string& before)
    {
        if (! files::is_regular_file (file))
            return {};

        std::ifstream stream (file);
        const std::string text (std::istreambuf_iterator<char> (stream), {});
        const auto place = text.find (before);
        const auto start = place + before.size();
        return place != std::string::npos ? text.substr (start, text.find ('"', start) - start) : std::string();
    }

    static std::string feedbackOf (const files::path& file) { return find (file, "name=\"Feedback\" value=\""); }
    std::string tagsOf (const std::string& name) const { return find (file (name), "tags=\""); }

    /** The user's presets with their feedback. */
    std::string getFiles() const
    {
        std::vector<std::string> texts;

        for (const auto& entry : files::directory_iterator (presets))
            texts.push_back (entry.path().stem().string() + "=" + feedbackOf (entry.path()));

        std::sort (texts.begin(), texts.end());
        std::string all;

        for (const auto& text : texts)
            all += (all.empty() ? "" : " ") + text;

        return all;
    }

    bool waitForFiles (const std::string& text)
    {
        const auto held = window->waitFor ([&] { return getFiles() == text; }, 5s);
        EXPECT_EQ (getFiles(), text);
        return held;
    }

    //==============================================================================
    Instance& instance() { return window->getInstance(); }

    std::vector<float> getSound()
    {
        std::vector<float> values;

        for (int i = 0; i < instance().get().numParams; ++i)
            values.push_back (instance().value (i));

        return values;
    }

    static bool isSame (const std::vector<float>& a, const std::vector<float>& b)
    {
        return std::equal (a.begin(), a.end(), b.begin(), b.end(),
                           [] (float x, float y) { return std::abs (x - y) < near; });
    }

    /** Waits for a feedback in percent, which the host has heard of, too. */
    bool waitForFeedback (const std::string& percent)
    {
        const auto wanted = std::stof (percent) / 100.0f;
        const auto held = window->waitFor ([&] { return std::abs (instance().value (feedback) - wanted) < near; }, 5s);
        EXPECT_NEAR (instance().value (feedback), wanted, near);

        const auto heard = instance().getAutomations();
        const auto last = std::find_if (heard.rbegin(), heard.rend(),
                                        [] (const auto& call)
                                        { return call.operation == rawhost::hostAutomate && call.index == feedback; });
        return held && last != heard.rend() && last->value == instance().value (feedback);
    }

    /** Whether the panel is covered, by the browser or a question. */
    bool waitForCover (bool covered = true)
    {
        return window->waitFor ([&] { return (window->getPixel (1, 1) != testskin::background) == covered; }, 5s);
    }

    void click (const Place& place)
    {
        window->click (place);
        window->settle();
    }

    void type (const Keys& keys)
    {
        window->settle();

        for (const auto* key : keys)
            window->type (key);

        window->settle();
    }

    /** Text, and Return. */
    void enter (const std::string& text)
    {
        window->settle();

        for (const auto character : text)
            window->type (character == '.' ? "period" : std::string (1, character).c_str());

        type ({ "Return" });
    }

    template <typename Action>
    void holding (const char* modifier, Action&& action)
    {
        screen->pressKey (modifier);
        action();
        screen->releaseKey (modifier);
        window->settle();
    }

    void selectAll()
    {
        click (layout::row (0));
        holding ("Control_L", [&] { type ({ "a" }); });
    }

    /** Opens the browser, or its save-as by the other button. */
    void browse (const Place& button = testskin::browseButton.place)
    {
        window->click (button);
        ASSERT_TRUE (waitForCover());
        window->settle();
    }

    /** The browser with the user's presets alone. */
    void browseUser()
    {
        constexpr uint32_t ticked = 0xb84a00;

        browse();
        click (layout::userSource);
        window->moveTo (layout::content.x, layout::buttons - 5);

        const auto& button = layout::userSource;
        EXPECT_TRUE (window->waitFor (
            [&] { return window->getPixel (button.x + button.width - 8, button.centreY()) == ticked; }, 5s));
    }

    void openSaveAs() { browse (testskin::saveButton.place); }

    /** Which of the first rows are shown as selected. */
    std::string getSelectedRows()
    {
        window->moveTo (layout::content.x, layout::buttons - 5);
        window->settle();
        std::string rows;

        for (int i = 0; i < 8; ++i)
            if (const auto& place = layout::row (i); (window->getPixel (place.x + 1, place.y + 10) & 0xffu) < 0x80)
                rows += std::to_string (i);

        return rows;
    }

    const files::path presets = folder / "Quilvane 2_user" / "UserStore" / "Presets",
                      desktop = folder / "home" / "Desktop";
    const files::path bank = folder / "Quilvane 2_data" / "Presets" / "Quilvane 2 Factory.k7rpkg";
    const std::string homeBefore = getenv ("HOME");
    std::optional<HostWindow> window;
};

} // namespace

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

    // Nothing is saved on the other ways out, nor where a folder has the name; the sound stays.
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
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (files::is_directory (file ("bad")));
    EXPECT_NEAR (instance().value (feedback), 0.22f, near);
    EXPECT_TRUE (window->hasStatusText (testskin::wideHeight, testskin::wideWidth));
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
    EXPECT_EQ (getSelectedRows(), "5") << "the filters begin anew";
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
    walk (next, { "50" });
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

    // In this order: the edit mode stays once it's on.
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
              click (layout::row (1));
              type ({ "Delete" });
          } },
        { "a name that is taken",
          [&]
          {
              click (layout::row (1));
              holding ("Control_L", [&] { type ({ "Return" }); });
              enter ("ash");
          } },
        { "the export",
          [&]
          {
              click (layout::row (1));
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
    click (layout::row (0));
    click (layout::exportButton);
    enter ("a");
    EXPECT_TRUE (files::exists (desktop / "a.qvzip"));
    click (layout::importButton);
    enter ("a.qvzip");
    window->close();
    ASSERT_TRUE (window->openAndSee());
    browse();
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
    EXPECT_EQ (getFiles(), "Ash=10 Cedar= Elm= Fir=50");
    selectAll();
    type ({ "Delete" });
    type (answers::yes);
    EXPECT_EQ (getFiles(), "Cedar=");
    click (layout::cancelButton);
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (isSame (getSound(), before));

    // The whole folder goes: steps stay harmless, and a save says that it can't.
    files::remove_all (presets);
    click (testskin::nextPresetButton.place);
    click (testskin::previousPresetButton.place);
    EXPECT_TRUE (isSame (getSound(), before));
    std::ofstream (presets) << "no folder";
    openSaveAs();
    enter ("new");
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (isSame (getSound(), before));
    EXPECT_TRUE (files::is_regular_file (presets));
}
