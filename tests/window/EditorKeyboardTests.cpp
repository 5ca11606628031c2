// SPDX-License-Identifier: GPL-3.0-or-later

// Who has the keyboard, while a person clicks and types: the host's window, but for what is edited and for windows of
// the editor's own.

#include "EditorBrowser.h"

namespace
{

constexpr int barHeight = 16;
constexpr Place buildText { testskin::width - 20, testskin::height, 20, barHeight };
constexpr Place message { 20, testskin::height, 20, barHeight };
constexpr Place guiButton { testskin::width - 52, testskin::height, 52, barHeight };
constexpr Place midiButton { guiButton.x - 58, testskin::height, 58, barHeight };
constexpr Place qualityButton { midiButton.x - 130, testskin::height, 130, barHeight };
constexpr Place ground { 600, 250, 10, 10 };

class EditorKeyboard : public EditorWindow
{
protected:
    static void openWithKeyboard (HostWindow& window)
    {
        ASSERT_TRUE (window.openAndSee());
        window.click (buildText);
        window.takeKeyboard();
        ASSERT_TRUE (window.hearsKey());
    }

    static void expectWithHost (HostWindow& window, const char* after)
    {
        EXPECT_TRUE (window.waitFor ([&] { return window.hasKeyboard(); }, 3s)) << after;
        window.settle();
        EXPECT_TRUE (window.hasKeyboard()) << after;
        EXPECT_TRUE (window.hearsKey()) << after;
    }

    static void expectWithEditor (HostWindow& window, const char* after)
    {
        EXPECT_TRUE (window.waitFor ([&] { return ! window.hasKeyboard(); }, 3s)) << after;
        window.settle();
        EXPECT_FALSE (window.hearsKey()) << after;
    }

    static bool isCovered (HostWindow& window) { return window.getPixel (1, 1) != testskin::background; }

    static void openOptions (HostWindow& window)
    {
        window.click (testskin::optionsButton.place);
        ASSERT_TRUE (window.waitFor ([&] { return isCovered (window); }));
        expectWithEditor (window, "the options opened");
    }
};

} // namespace

//==============================================================================
TEST_F (EditorKeyboard, StaysWithTheHostWhateverIsClicked)
{
    using namespace testskin;

    struct Control
    {
        const char* name;
        Place place;
    };

    const auto clickAll = [] (HostWindow& window, std::initializer_list<Control> controls)
    {
        ASSERT_NO_FATAL_FAILURE (openWithKeyboard (window));

        for (const auto& [name, place] : controls)
        {
            window.click (place);
            EXPECT_TRUE (window.hasKeyboard()) << name << " took it for a while";
            expectWithHost (window, name);
        }
    };

    {
        HostWindow window (*screen, *library);
        clickAll (window, { { "knob", feedbackKnob.place },
                            { "toggle button", syncButton.place },
                            { "button", restoreButton.place },
                            { "switch", stagesSwitch.place },
                            { "meter", meter.place },
                            { "display to read", readOnly },
                            { "panel", ground },
                            { "status bar", message } });

        // Its popups have it while they are open.
        for (const auto& button : { qualityButton, midiButton, guiButton })
        {
            window.click (button);
            expectWithEditor (window, "a popup opened");
            window.click (button);
            expectWithHost (window, "a popup closed");
        }

        // A drag goes on while another key than the plug-in's is pressed.
        window.startDrag (feedbackKnob.place, 50);
        EXPECT_TRUE (window.hearsKey());
        window.release();
        expectWithHost (window, "a drag");
    }

    uninstall ("Test");
    install (partsSkin);
    HostWindow window (*screen, *library);
    clickAll (window, { { "mixer", feedbackChannel.place }, { "panel", ground } });

    window.click (stagesBox.place);
    expectWithEditor (window, "the tiles opened");
    window.type ("Escape");
    expectWithHost (window, "the tiles closed");

    // The piano plays by the computer's keys, until something else is pressed.
    window.click (key.place);
    expectWithEditor (window, "the piano");
    window.click (feedbackChannel.place);
    expectWithHost (window, "the mixer after the piano");
}

TEST_F (EditorKeyboard, ComesBackWhenAWindowOfTheEditorCloses)
{
    HostWindow window (*screen, *library);
    ASSERT_NO_FATAL_FAILURE (openWithKeyboard (window));

    ASSERT_NO_FATAL_FAILURE (openOptions (window));
    window.type ("Escape");
    expectWithHost (window, "the options closed");

    window.click (testskin::aboutButton.place);
    expectWithEditor (window, "the credits opened");
    window.type ("Escape");
    expectWithHost (window, "the credits closed");

    window.click (testskin::feedbackKnob.place, TestScreen::rightButton);
    expectWithEditor (window, "the information opened");
    window.click (ground);
    expectWithHost (window, "the information closed");

    window.click (testskin::midiLearnButton.place);
    expectWithEditor (window, "learning");
    window.type ("Escape");
    expectWithHost (window, "learned nothing");

    // Another window got it meanwhile; a press inside takes it again.
    ASSERT_NO_FATAL_FAILURE (openOptions (window));
    window.takeKeyboard();
    window.settle();
    window.click ({ testskin::width / 2, testskin::height / 2, 1, 1 });
    expectWithEditor (window, "a press in the options");
    window.type ("Escape");
    expectWithHost (window, "the options closed again");

    // Two instances beside each other.
    HostWindow second (*screen, *library, 100, 600);
    ASSERT_TRUE (second.openAndSee());
    ASSERT_NO_FATAL_FAILURE (openOptions (window));
    second.click (testskin::feedbackKnob.place);
    expectWithEditor (window, "a knob of the other instance");
    window.type ("Escape");
    expectWithHost (window, "the options closed beside another instance");

    // The host closes its view of the editor, and keeps its keyboard.
    ASSERT_NO_FATAL_FAILURE (openOptions (window));
    window.getInstance().dispatch (rawhost::effEditClose);
    EXPECT_TRUE (window.hasKeyboard());
    EXPECT_TRUE (window.hearsKey());
}

//==============================================================================
TEST_F (EditorBrowser, TagsLeaveTheKeysWithTheResultsAndReturnIsOk)
{
    browseUser();
    click (layout::row (1));
    ASSERT_TRUE (waitForFeedback ("20"));

    // Walks through the fast ones, from the first on.
    click (layout::tag (0, 0));
    click (layout::row (0));
    ASSERT_TRUE (waitForFeedback ("10"));
    click (layout::tag (0, 0));
    click (layout::tag (0, 0));
    type ({ "Down" });
    EXPECT_TRUE (waitForFeedback ("50"));
    type ({ "Return" });
    ASSERT_TRUE (waitForCover (false));
    EXPECT_TRUE (waitForFeedback ("50"));

    // Wherever the keys are.
    for (int numTabs = 1; numTabs <= 6; ++numTabs)
    {
        browse();
        type (Keys (static_cast<size_t> (numTabs), "Tab"));
        type ({ "Return" });
        ASSERT_TRUE (waitForCover (false)) << numTabs;
    }
}

TEST_F (EditorBrowser, ReturnAgreesToNothingThatDestroysAndSpacePressesWhatHasTheKeys)
{
    browseUser();
    click (layout::editButton);
    selectAll();
    type ({ "Delete" });
    type ({ "Return" });
    EXPECT_EQ (getFiles(), initialFiles);
    type ({ "Delete" });
    type ({ "Left", "space" });
    EXPECT_TRUE (waitForFiles (""));
}

TEST_F (EditorBrowser, TheChooserBeginsWhereThereIsRoomAndMakesFolders)
{
    const auto home = desktop.parent_path();
    files::remove_all (desktop);

    const auto archivesIn = [] (const files::path& place)
    {
        return std::count_if (files::directory_iterator (place), {},
                              [] (const auto& entry) { return entry.path().extension() == ".qvzip"; });
    };

    const auto startExport = [&]
    {
        selectAll();
        click (layout::exportButton);
    };

    browseUser();
    click (layout::editButton);
    startExport();
    type ({ "Return" });
    EXPECT_TRUE (window->waitFor ([&] { return archivesIn (home) == 1; }, 5s)) << "under the name that was proposed";

    startExport();
    type ({ "Tab", "space" });
    enter ("mine");
    type ({ "Return" });
    ASSERT_TRUE (files::is_directory (home / "mine"));
    EXPECT_TRUE (window->waitFor ([&] { return archivesIn (home / "mine") == 1; }, 5s));

    startExport();
    enter ("b");
    EXPECT_TRUE (window->waitFor ([&] { return files::exists (home / "mine" / "b.qvzip"); }, 5s));
}
