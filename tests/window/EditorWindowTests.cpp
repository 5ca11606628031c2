// SPDX-License-Identifier: GPL-3.0-or-later

// The editor as a person uses it: in a host's window, on a display, with a mouse and a keyboard.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "HostWindow.h"
#include "support/Signals.h"

using rawhost::Instance;
using rawhost::Library;
using namespace std::chrono_literals;
namespace files = std::filesystem;

namespace
{

enum Parameter : int
{
    lfo1Sync = 0,
    lfo1NoteRate = 2,
    stages = 14,
    feedback = 15,
    fx = 16,
};

constexpr float near = 1.0e-3f;

std::unique_ptr<TestScreen> screen;

/** A copy of the plug-in with folders beside it. */
class EditorWindow : public testing::Test
{
protected:
    EditorWindow() : folder (files::temp_directory_path() / ("quilvane-window-" + std::to_string (getpid())))
    {
        files::remove_all (folder);
        files::create_directories (skins());
        files::create_directories (folder / "Quilvane 2_user");
        files::copy_file (QUILVANE_PORTABLE_PLUGIN_FILE, plugin());
    }

    ~EditorWindow() override
    {
        library.reset();
        files::remove_all (folder);
    }

    void SetUp() override
    {
        install ("Test");
        load();
    }

    void TearDown() override { EXPECT_EQ (TestScreen::getNumErrors(), 0) << "requests that the display refused"; }

    files::path plugin() const { return folder / "plugin.so"; }
    files::path skins() const { return folder / "Quilvane 2_data" / "Skins"; }

    void install (const std::string& name) const
    {
        files::copy_file (files::path (QUILVANE_TEST_SKINS) / (name + ".k7rskin"), skins() / (name + ".k7rskin"));
    }

    void uninstall (const std::string& name) const { files::remove (skins() / (name + ".k7rskin")); }

    void load()
    {
        library = std::make_unique<Library> (plugin());
        ASSERT_TRUE (library->isOpen());
    }

    /** Expects one whole gesture of a parameter, and gives its values. */
    static std::vector<float> valuesOfOneGesture (const Instance& instance, int parameter)
    {
        const auto heard = instance.getAutomations();
        EXPECT_GE (heard.size(), 2u);

        if (heard.size() < 2)
            return {};

        EXPECT_EQ (heard.front().operation, rawhost::hostBeginEdit);
        EXPECT_EQ (heard.back().operation, rawhost::hostEndEdit);

        std::vector<float> values;

        for (const auto& call : heard)
        {
            EXPECT_EQ (call.index, parameter);

            if (call.operation == rawhost::hostAutomate)
                values.push_back (call.value);
        }

        EXPECT_EQ (values.size() + 2, heard.size()) << "a gesture begins and ends once";
        return values;
    }

    static bool gestureHasEnded (const Instance& instance)
    {
        const auto heard = instance.getAutomations();
        return ! heard.empty() && heard.back().operation == rawhost::hostEndEdit;
    }

    /** Every begin has its end, and no value stands outside. */
    static void expectWholeGestures (const Instance& instance)
    {
        int open = 0;

        for (const auto& call : instance.getAutomations())
        {
            open += call.operation == rawhost::hostBeginEdit ? 1 : call.operation == rawhost::hostEndEdit ? -1 : 0;
            EXPECT_TRUE (open == 0 || open == 1);
        }

        EXPECT_EQ (open, 0);
    }

    /** A whole drag of the feedback knob from 0, which takes 250 pixels for the whole range. */
    static void expectWholeDrag (HostWindow& window)
    {
        auto& instance = window.getInstance();
        instance.set (feedback, 0.0f);
        ASSERT_TRUE (window.waitToShow (testskin::feedbackKnob, 0));
        instance.clearAutomations();

        window.startDrag (testskin::feedbackKnob.place, 100);
        EXPECT_TRUE (window.waitFor ([&] { return std::abs (instance.value (feedback) - 0.4f) < near; }))
            << instance.value (feedback);
        EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 4));
        window.release();
        ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));

        const auto values = valuesOfOneGesture (instance, feedback);
        ASSERT_GE (values.size(), 3u);
        EXPECT_TRUE (std::is_sorted (values.begin(), values.end()));
        EXPECT_EQ (values.back(), instance.value (feedback));
    }

    static void processSome (Instance& instance, float amplitude, int numSamples = 4096)
    {
        auto left = signals::noise (static_cast<size_t> (numSamples), 1, amplitude);
        auto right = left;
        instance.process (left, right);
    }

    /** The instance's state with another skin in it; the names are of one length. */
    static std::vector<char> chunkWithSkin (Instance& instance, const std::string& present, const std::string& other)
    {
        auto chunk = instance.getChunk();
        const auto place = std::search (chunk.begin(), chunk.end(), present.begin(), present.end());
        EXPECT_NE (place, chunk.end());
        EXPECT_EQ (present.size(), other.size());

        if (place != chunk.end())
            std::copy (other.begin(), other.end(), place);

        return chunk;
    }

    static size_t countOpenFiles()
    {
        const files::directory_iterator list ("/proc/self/fd");
        return static_cast<size_t> (std::distance (begin (list), end (list)));
    }

    static size_t getResidentBytes()
    {
        size_t total = 0, resident = 0;
        std::ifstream ("/proc/self/statm") >> total >> resident;
        return resident * static_cast<size_t> (sysconf (_SC_PAGESIZE));
    }

    const files::path folder;
    std::unique_ptr<Library> library;
};

} // namespace

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

TEST_F (EditorWindow, MovesItsParameterWithDragAndWheelAndNotWithTheRightButton)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());
    expectWholeDrag (window);

    for (const auto button : { TestScreen::wheelUp, TestScreen::wheelDown })
    {
        window.settle(); // a hand isn't as fast
        const auto before = instance.value (feedback);
        instance.clearAutomations();
        window.click (testskin::feedbackKnob.place, button);
        ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));

        const auto values = valuesOfOneGesture (instance, feedback);
        ASSERT_EQ (values.size(), 1u);
        EXPECT_EQ (values[0] > before, button == TestScreen::wheelUp);
        EXPECT_NE (values[0], before);
    }

    const auto before = instance.value (feedback);
    instance.clearAutomations();
    window.startDrag (testskin::feedbackKnob.place, 100, TestScreen::rightButton);
    window.release (TestScreen::rightButton);
    window.settle();
    EXPECT_EQ (instance.value (feedback), before);
    EXPECT_TRUE (instance.getAutomations().empty());

    // Shift that is pressed in a drag stops it, and the gesture is whole all the same.
    window.startDrag (testskin::feedbackKnob.place, 50);
    screen->pressKey ("Shift_L");
    window.release();
    screen->releaseKey ("Shift_L");
    ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));
    EXPECT_FALSE (valuesOfOneGesture (instance, feedback).empty());

    // And none of these holds anything up.
    expectWholeDrag (window);
}

TEST_F (EditorWindow, ResetsWithDoubleClickAndShiftClickAsTheSkinAllows)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    const auto isAt = [&] (int parameter, float value)
    { return window.waitFor ([&, value] { return std::abs (instance.value (parameter) - value) < near; }); };

    instance.set (feedback, 0.5f);
    instance.set (fx, 0.5f);
    ASSERT_TRUE (window.waitToShow (testskin::fxKnob, 5));

    window.doubleClick (testskin::feedbackKnob.place);
    EXPECT_TRUE (isAt (feedback, 0.0f));
    EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 0));

    instance.set (feedback, 0.5f);
    ASSERT_TRUE (window.waitToShow (testskin::feedbackKnob, 5));
    window.shiftClick (testskin::feedbackKnob.place);
    EXPECT_TRUE (isAt (feedback, 0.0f));

    // The host has the value that it hears last.
    const auto heard = instance.getAutomations();
    const auto last = std::find_if (heard.rbegin(), heard.rend(),
                                    [] (const auto& call) { return call.operation == rawhost::hostAutomate; });
    ASSERT_NE (last, heard.rend());
    EXPECT_EQ (last->index, feedback);
    EXPECT_EQ (last->value, 0.0f);

    window.doubleClick (testskin::fxKnob.place);
    window.settle();
    EXPECT_NEAR (instance.value (fx), 0.5f, near);
    window.shiftClick (testskin::fxKnob.place);
    EXPECT_TRUE (isAt (fx, 1.0f));
    EXPECT_TRUE (window.waitToShow (testskin::fxKnob, 10));

    expectWholeGestures (instance);
}

TEST_F (EditorWindow, ShowsTheHostsAutomationAndSendsNothingBack)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    for (const auto frame : { 1, 7, 10, 3, 0 })
    {
        instance.set (feedback, static_cast<float> (frame) / 10.0f);
        EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, frame)) << frame;
    }

    // A fast ramp ends where the host left it.
    for (int step = 0; step <= 1000; ++step)
    {
        instance.set (feedback, static_cast<float> (step) * 0.0006f);

        if (step % 100 == 0)
            window.idle();
    }

    EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 6));
    window.settle();
    EXPECT_TRUE (instance.getAutomations().empty());
}

TEST_F (EditorWindow, SyncSwapsTheControlsOfRateAndNote)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    const auto showsNotes = [&] (bool shown)
    {
        return window.waitFor (
            [&, shown]
            {
                // "Full" is the last of three scales; the defaults of the rates are frame 4.
                const auto scale = window.getColour (testskin::noteScaleKnob.place);
                return shown ? window.shows (testskin::noteRateKnob, 4) && scale == testskin::noteScaleKnob.colourOf (2)
                             : window.shows (testskin::rateKnob, 4) && scale == testskin::background;
            });
    };

    ASSERT_TRUE (showsNotes (false));

    for (const auto on : { true, false })
    {
        instance.clearAutomations();
        window.click (testskin::syncButton.place);
        EXPECT_TRUE (showsNotes (on));
        EXPECT_TRUE (window.waitToShow (testskin::syncButton, on ? 1 : 0));
        ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));
        EXPECT_EQ (valuesOfOneGesture (instance, lfo1Sync), std::vector<float> { on ? 1.0f : 0.0f });
    }

    instance.set (lfo1Sync, 1.0f);
    EXPECT_TRUE (showsNotes (true));

    // What was hidden when the window closed is so when it opens.
    window.close();
    ASSERT_TRUE (window.openAndSee());
    EXPECT_TRUE (showsNotes (true));
}

TEST_F (EditorWindow, EverySegmentOfASwitchGivesItsValue)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    constexpr std::array<const char*, testskin::numStages> texts { "2", "4", "6", "8" };

    for (const auto segment : { 3, 0, 2, 1 })
    {
        auto place = testskin::stagesSwitch.place;
        place.x += segment * testskin::segmentWidth;
        place.width = testskin::segmentWidth;

        instance.clearAutomations();
        window.click (place);
        ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));
        EXPECT_TRUE (window.waitToShow (testskin::stagesSwitch, segment));
        EXPECT_EQ (instance.text (rawhost::effGetParamDisplay, stages), texts[static_cast<size_t> (segment)]);

        const auto values = valuesOfOneGesture (instance, stages);
        ASSERT_FALSE (values.empty());
        EXPECT_NEAR (values.back(), static_cast<float> (segment) / 3.0f, near);
    }
}

TEST_F (EditorWindow, AButtonGoesBackToTheDefaultPreset)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    std::vector<float> defaults;

    for (int i = 0; i < instance.get().numParams; ++i)
        defaults.push_back (instance.value (i));

    for (int i = 0; i < instance.get().numParams; ++i)
        instance.set (i, defaults[static_cast<size_t> (i)] < 0.5f ? 0.9f : 0.1f);

    ASSERT_TRUE (window.waitToShow (testskin::feedbackKnob, 9));

    // A press that is let go elsewhere isn't a click.
    window.moveTo (testskin::restoreButton.place.centreX(), testskin::restoreButton.place.centreY());
    window.press();
    EXPECT_TRUE (window.waitToShow (testskin::restoreButton, 1));
    window.moveTo (testskin::restoreButton.place.centreX(), testskin::height - 5);
    window.release();
    EXPECT_TRUE (window.waitToShow (testskin::restoreButton, 0));
    EXPECT_TRUE (window.shows (testskin::feedbackKnob, 9));

    window.click (testskin::restoreButton.place);
    EXPECT_TRUE (window.waitToShow (testskin::feedbackKnob, 0));

    for (int i = 0; i < instance.get().numParams; ++i)
        EXPECT_NEAR (instance.value (i), defaults[static_cast<size_t> (i)], near) << i;
}

TEST_F (EditorWindow, ADisplayIsEditedWithTheKeyboard)
{
    HostWindow window (*screen, *library);
    ASSERT_TRUE (window.openAndSee());
    ASSERT_TRUE (window.waitToRead (testskin::editable, "Old"));
    ASSERT_TRUE (window.waitToRead (testskin::readOnly, "Fixed"));

    // The caret stands behind the text when the edit begins.
    window.click (testskin::editable);
    ASSERT_TRUE (window.waitToRead (testskin::editable, "Old| "));

    for (const auto* key : { "BackSpace", "n", "e", "Home", "x", "Delete" })
        window.type (key);

    EXPECT_TRUE (window.waitToRead (testskin::editable, "x|lne"));
    window.type ("Return");
    EXPECT_TRUE (window.waitToRead (testskin::editable, "xlne"));

    // Escape goes back, and keys after an end go nowhere.
    window.click (testskin::editable);
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlne| "));
    window.type ("q");
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlneq| "));
    window.type ("Escape");
    EXPECT_TRUE (window.waitToRead (testskin::editable, "xlne"));
    window.type ("z");
    window.settle();
    EXPECT_EQ (window.read (testskin::editable), "xlne");

    window.click (testskin::readOnly);
    window.type ("z");
    window.settle();
    EXPECT_EQ (window.read (testskin::readOnly), "Fixed");
    EXPECT_EQ (window.read (testskin::editable), "xlne");

    // The window closes in the middle of an edit; what was typed stands.
    window.click (testskin::editable);
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlne| "));
    window.type ("w");
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlnew| "));
    const auto windows = screen->countWindows();
    window.close();
    EXPECT_LE (screen->countWindows(), windows - 3) << "the edit's own window, the editor's and the host's";
    ASSERT_TRUE (window.openAndSee());
    EXPECT_TRUE (window.waitToRead (testskin::editable, "xlnew"));
}

TEST_F (EditorWindow, ShowsControllersAndLevelsOfTheSound)
{
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());
    ASSERT_TRUE (window.waitToShow (testskin::activity, 0));

    rawhost::MidiEvent event;
    event.data[0] = 0xb0;
    event.data[1] = 74;
    event.data[2] = 64;
    instance.sendMidi ({ event });
    processSome (instance, 0.0f, 512);

    ASSERT_TRUE (window.waitToShow (testskin::activity, 1));
    const auto lit = std::chrono::steady_clock::now();
    ASSERT_TRUE (window.waitToShow (testskin::activity, 0));
    const auto duration = std::chrono::steady_clock::now() - lit;
    EXPECT_GT (duration, 100ms);
    EXPECT_LT (duration, 1s);

    // The meter follows the sound, and falls when there is none.
    ASSERT_TRUE (window.waitToShow (testskin::meter, 0));
    processSome (instance, 0.9f, 48000);
    EXPECT_TRUE (
        window.waitFor ([&] { return window.getColour (testskin::meter.place) >= testskin::meter.colourOf (3); }));
    instance.suspend();
    EXPECT_TRUE (window.waitToShow (testskin::meter, 0));
    instance.resume();
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
    HostWindow first (*screen, *library, 20, 150), second (*screen, *library, 500, 400);
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

    const auto other = skins() / "Other.k7rskin";
    std::fstream file (other, std::ios::in | std::ios::out | std::ios::binary);
    const auto middle = static_cast<std::streamoff> (files::file_size (other) / 2);
    file.seekg (middle);
    const auto byte = static_cast<char> (file.get() ^ 1);
    file.seekp (middle);
    file.put (byte);
    file.close();

    // The damaged one comes first in the list.
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

    // A skin that is missing changes nothing, and isn't kept either.
    instance.setChunk (chunkWithSkin (instance, test, absent));
    window.settle();
    EXPECT_EQ (window.getPixel (1, 1), testskin::background);
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
    constexpr size_t allowedBytes = 2u << 20; // of an allocator's own wandering; a leaked panel image is 320 kB

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
