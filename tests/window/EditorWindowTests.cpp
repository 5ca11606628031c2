// SPDX-License-Identifier: GPL-3.0-or-later

// The life of the editor's window in a host: opened, closed, left alone, with good skins and bad ones.

#include <iostream>

#include "EditorWindow.h"

std::unique_ptr<TestScreen> screen;

//==============================================================================
TEST_F (EditorWindow, OpensAtTheSkinsSizeAndKeepsItsStateOverClosing)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();

    ASSERT_TRUE (window.openAndSee());
    const auto size = window.getEditorSize();
    EXPECT_EQ (size.width, testskin::width);
    EXPECT_GT (size.height, testskin::height); // the status bar
    EXPECT_LT (size.height, testskin::height + 40);
    EXPECT_EQ (window.getPixel (testskin::width - 1, testskin::height - 1), testskin::background);
    EXPECT_EQ (window.getSize(), size);

    // Opening alone tells the host nothing.
    EXPECT_TRUE (window.waitToShow (testskin::fxKnob, 10));
    window.settle();
    EXPECT_TRUE (instance.getAutomations().empty());

    expectWholeDrag (window);
    const auto value = instance.value (feedback);

    const auto windowsWhileOpen = screen->countWindows();
    window.close();
    EXPECT_LT (screen->countWindows(), windowsWhileOpen);
    EXPECT_EQ (instance.value (feedback), value);

    instance.set (fx, 0.2f); // nobody looks
    ASSERT_TRUE (window.openAndSee());
    EXPECT_EQ (window.getEditorSize(), size);
    EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 4));
    EXPECT_TRUE (window.waitToShow (testskin::fxKnob, 2));
    expectWholeDrag (window);
}

//==============================================================================
TEST_F (EditorWindow, ClosesInTheMiddleOfADragWithAWholeGesture)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    window.startDrag (testskin::feedbackKnob.place, 50);
    ASSERT_TRUE (window.waitFor ([&] { return instance.value (feedback) > 0.1f; }));
    window.close();
    EXPECT_FALSE (valuesOfOneGesture (instance, feedback).empty());

    // The button comes up while there is no window.
    screen->releaseButton (TestScreen::leftButton);
    ASSERT_TRUE (window.openAndSee());
    window.settle();
    EXPECT_TRUE (gestureHasEnded (instance));
    expectWholeDrag (window);
}

TEST_F (EditorWindow, EndsWithItsInstanceWhateverTheHostForgot)
{
    const auto windowsBefore = screen->countWindows();

    {
        HostWindow window (*screen, *library);
        ASSERT_TRUE (window.openAndSee());
        window.destroyInstance();
    }

    {
        HostWindow window (*screen, *library);
        ASSERT_TRUE (window.openAndSee());
        window.startDrag (testskin::feedbackKnob.place, 50);
        window.destroyInstance();
    }

    screen->releaseButton (TestScreen::leftButton);

    {
        HostWindow window (*screen, *library);
        ASSERT_TRUE (window.openAndSee());
        window.click (testskin::editable);
        ASSERT_TRUE (window.waitToRead (testskin::editable, "Old| "));
        window.destroyInstance();
    }

    // Asked for the size and never opened.
    {
        HostWindow window (*screen, *library);
        EXPECT_EQ (window.getEditorSize().width, testskin::width);
    }

    HostWindow window (*screen, *library);
    ASSERT_TRUE (window.openAndSee());
    expectWholeDrag (window);
    window.close();
    EXPECT_LE (screen->countWindows(), windowsBefore + 2) << "those of the connection itself";
}

TEST_F (EditorWindow, TwoInstancesDoNotMoveEachOther)
{
    HostWindow first (*screen, *library, 0, 70), second (*screen, *library, 640, 500);
    ASSERT_TRUE (first.openAndSee());
    ASSERT_TRUE (second.openAndSee());

    second.getInstance().set (feedback, 0.8f);
    ASSERT_TRUE (second.waitToShow (testskin::feedbackKnob, 8));
    expectWholeDrag (first);
    EXPECT_TRUE (second.getInstance().getAutomations().empty());
    EXPECT_NEAR (second.getInstance().value (feedback), 0.8f, near);
    EXPECT_TRUE (second.shows (testskin::feedbackKnob, 8));

    // What a control opens lies over its own window.
    for (auto* window : { &first, &second, &first })
    {
        window->click (testskin::editable);
        EXPECT_TRUE (window->waitToRead (testskin::editable, "Old| "));
        window->type ("Escape");
        EXPECT_TRUE (window->waitToRead (testskin::editable, "Old"));
    }

    // The one that stays isn't touched by the end of the other.
    first.close();
    second.settle();
    EXPECT_TRUE (second.shows (testskin::feedbackKnob, 8));
    expectWholeDrag (second);
    first.destroyInstance();
    expectWholeDrag (second);
}

//==============================================================================
TEST_F (EditorWindow, WithoutASkinItSaysSo)
{
    uninstall ("Test");

    HostWindow window (*screen, *library);
    ASSERT_TRUE (window.open());
    const auto size = window.getEditorSize();
    EXPECT_EQ (size.width, 800);
    EXPECT_TRUE (window.waitFor ([&] { return window.hasStatusText (600, size.width); }));
    window.close();

    // The next instance finds what was installed since, and says nothing.
    install ("Test");
    HostWindow repaired (*screen, *library);
    ASSERT_TRUE (repaired.openAndSee());
    repaired.settle();
    EXPECT_FALSE (repaired.hasStatusText (testskin::height, testskin::width));
}

TEST_F (EditorWindow, ADamagedSkinGivesWayToAGoodOne)
{
    install ("Other");
    install (testskin::manyTagsSkin);

    const auto other = skins() / "Other.k7rskin";
    std::fstream file (other, std::ios::in | std::ios::out | std::ios::binary);
    const auto middle = static_cast<std::streamoff> (files::file_size (other) / 2);
    file.seekg (middle);
    const auto byte = static_cast<char> (file.get() ^ 1);
    file.seekp (middle);
    file.put (byte);
    file.close();

    // The two that can't be used come first in the list.
    HostWindow window (*screen, *library);
    ASSERT_TRUE (window.openAndSee());
    EXPECT_EQ (window.getEditorSize().width, testskin::width);
    window.settle();
    EXPECT_FALSE (window.hasStatusText (testskin::height, testskin::width));
    expectWholeDrag (window);
}

TEST_F (EditorWindow, AStateBringsItsSkinIfThereIsSuchAOne)
{
    install ("Other");

    const std::string test = "<Skin name=\"Test\"", absent = "<Skin name=\"None\"";
    std::vector<char> stateOfTest;

    {
        uninstall ("Other");
        HostWindow window (*screen, *library);
        stateOfTest = window.getInstance().getChunk();
        install ("Other");
    }

    // The instance kept its skin for all that follow; without that, the first skin of the list is taken.
    files::remove (folder / "Quilvane 2_user" / "Quilvane 2.ini");

    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.open());
    ASSERT_TRUE (window.waitFor ([&] { return window.getPixel (1, 1) == testskin::otherBackground; }));

    // With the window open, the host's window follows the skin.
    instance.setChunk (stateOfTest);
    EXPECT_TRUE (window.waitFor ([&] { return window.getPixel (1, 1) == testskin::background; }));
    EXPECT_TRUE (window.waitFor ([&] { return window.getSize().width == testskin::width; }));
    EXPECT_EQ (window.getEditorSize().width, testskin::width);
    expectWholeDrag (window);

    // A skin that is missing changes nothing, not even for a moment, and isn't kept either.
    instance.setChunk (chunkWithSkin (instance, test, absent));
    EXPECT_FALSE (window.waitFor ([&] { return window.getPixel (1, 1) != testskin::background; }, 80ms));
    expectWholeDrag (window);
    const auto kept = instance.getChunk();
    EXPECT_NE (std::search (kept.begin(), kept.end(), test.begin(), test.end()), kept.end());

    // So it is when the state comes before the first window.
    HostWindow late (*screen, *library, 600, 500);
    late.getInstance().setChunk (chunkWithSkin (instance, test, absent));
    ASSERT_TRUE (late.open());
    EXPECT_TRUE (late.waitFor (
        [&]
        {
            const auto colour = late.getPixel (1, 1);
            return colour == testskin::background || colour == testskin::otherBackground;
        }));
}

//==============================================================================
TEST_F (EditorWindow, OpensAndClosesTwoHundredTimesWithoutLeaks)
{
    constexpr int warmUp = 50, total = 200;
    constexpr size_t allowedBytes = 2u << 20; // of an allocator's own wandering; a leaked panel image is 1.2 MB

    HostWindow window (*screen, *library);
    size_t bytes = 0, openFiles = 0;
    int windows = 0;
    auto untilPainted = 0ns, closing = 0ns;

    for (int cycle = 1; cycle <= total; ++cycle)
    {
        const auto start = std::chrono::steady_clock::now();
        ASSERT_TRUE (window.openAndSee()) << cycle;
        const auto seen = std::chrono::steady_clock::now();
        window.close();

        untilPainted += seen - start;
        closing += std::chrono::steady_clock::now() - seen;

        if (cycle == warmUp)
        {
            bytes = getResidentBytes();
            openFiles = countOpenFiles();
            windows = screen->countWindows();
        }
    }

    EXPECT_EQ (countOpenFiles(), openFiles);
    EXPECT_EQ (screen->countWindows(), windows);

    if (! QUILVANE_SANITIZED)
    {
        EXPECT_LE (getResidentBytes(), bytes + allowedBytes);
    }

    const auto perCycle = [=] (std::chrono::nanoseconds time) { return static_cast<int> (time / total / 1us); };
    RecordProperty ("microsecondsUntilPainted", perCycle (untilPainted));
    RecordProperty ("microsecondsToClose", perCycle (closing));

    ASSERT_TRUE (window.openAndSee());
    expectWholeDrag (window);
}

int main (int argc, char* argv[])
{
    testing::InitGoogleTest (&argc, argv);

    // Tests are listed where there is no display. Without one, none may pass or be skipped.
    if (! GTEST_FLAG_GET (list_tests))
    {
        screen = std::make_unique<TestScreen>();

        if (! screen->isOpen())
        {
            std::cerr << "Xvfb doesn't start\n";
            return 1;
        }
    }

    const auto result = RUN_ALL_TESTS();
    screen.reset();
    return result;
}
