// SPDX-License-Identifier: GPL-3.0-or-later

// The editor's controls as a person uses them: in a host's window, on a display, with a mouse and a keyboard.

#include "EditorWindow.h"

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
    window.type ("Escape"); // what it opened
    window.settle();

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

TEST_F (EditorWindow, ControlsWithPartsAreUsedAsAllOthers)
{
    constexpr uint32_t popupGround = 0x3a3a3a;

    uninstall ("Test");
    install (testskin::partsSkin);
    HostWindow window (*screen, *library);
    auto& instance = window.getInstance();
    ASSERT_TRUE (window.openAndSee());

    instance.set (feedback, 0.5f);
    instance.set (fx, 0.5f);
    instance.set (stages, 0.0f);
    ASSERT_TRUE (window.waitToShow (testskin::fxChannel, 5));

    // A channel of the mixer takes the value at the mouse, in a gesture; the status bar tells it.
    EXPECT_FALSE (window.hasStatusText (testskin::height, testskin::width));
    window.startDrag (testskin::fxChannel.place, 15);
    EXPECT_TRUE (window.waitToShow (testskin::fxChannel, 8)) << instance.value (fx);
    EXPECT_TRUE (window.hasStatusText (testskin::height, testskin::width));
    window.release();
    ASSERT_TRUE (window.waitFor ([&] { return gestureHasEnded (instance); }));
    EXPECT_NEAR (valuesOfOneGesture (instance, fx).back(), 0.75f, near);
    EXPECT_EQ (instance.value (feedback), 0.5f);

    // With Ctrl all channels move, as far as by a plain drag, and the mouse stays where the hand left it.
    instance.set (feedback, 0.2f);
    instance.set (fx, 0.4f);
    ASSERT_TRUE (window.waitToShow (testskin::fxChannel, 4));
    ASSERT_TRUE (window.waitToShow (testskin::feedbackChannel, 2));
    instance.clearAutomations();
    screen->pressKey ("Control_L");
    window.startDrag (testskin::fxChannel.place, 30);
    EXPECT_TRUE (window.waitToShow (testskin::fxChannel, 9));
    EXPECT_TRUE (window.waitToShow (testskin::feedbackChannel, 7));
    const auto place = screen->getMousePosition();
    window.release();
    screen->releaseKey ("Control_L");
    window.settle();
    EXPECT_EQ (screen->getMousePosition(), place);
    EXPECT_NEAR (instance.value (feedback), 0.7f, near);
    EXPECT_NEAR (instance.value (fx), 0.9f, near);
    instance.set (feedback, 0.5f);
    ASSERT_TRUE (window.waitToShow (testskin::feedbackChannel, 5));
    instance.clearAutomations(); // of two gestures at once

    // Shift resets every channel, a double click those that the skin allows.
    window.shiftClick (testskin::fxChannel.place);
    EXPECT_TRUE (window.waitToShow (testskin::fxChannel, 10));
    window.doubleClick (testskin::fxChannel.place);
    EXPECT_TRUE (window.waitToShow (testskin::fxChannel, 5));
    window.settle(); // one more click would be the third
    window.doubleClick (testskin::feedbackChannel.place);
    EXPECT_TRUE (window.waitToShow (testskin::feedbackChannel, 0));
    expectWholeGestures (instance);

    // The information hangs from the middle of the channel.
    const auto& channel = testskin::fxChannel.place;
    const auto showsInfo = [&]
    { return window.getPixel (channel.centreX() + 4, channel.centreY() + 4) == popupGround; };
    window.click (channel, TestScreen::rightButton);
    EXPECT_TRUE (window.waitFor (showsInfo));
    window.type ("Escape");
    EXPECT_TRUE (window.waitFor ([&] { return ! showsInfo(); }));

    // A tile of the box's picker is an item.
    const auto& box = testskin::stagesBox.place;
    const auto tile = [&] (int index) {
        return testskin::Place { box.x + index * box.width, box.y + testskin::pickerOffset, box.width, box.height };
    };
    const auto isOpen = [&] { return window.getColour (tile (3)) == testskin::stagesBox.colourOf (3); };

    window.click (box);
    ASSERT_TRUE (window.waitFor (isOpen));
    window.type ("Escape");
    EXPECT_TRUE (window.waitFor ([&] { return ! isOpen(); }));
    window.click (box);
    ASSERT_TRUE (window.waitFor (isOpen));
    instance.clearAutomations();
    window.click (tile (2));
    EXPECT_TRUE (window.waitToShow (testskin::stagesBox, 2));
    EXPECT_TRUE (window.waitFor ([&] { return ! isOpen(); }));
    EXPECT_EQ (valuesOfOneGesture (instance, stages).size(), 1u);

    // A key goes down, and up again when the window closes on it; so do gestures end.
    window.moveTo (testskin::key.place.centreX(), testskin::key.place.centreY());
    EXPECT_TRUE (window.waitToShow (testskin::key, 1));
    window.press();
    EXPECT_TRUE (window.waitToShow (testskin::key, 2));
    window.release();
    EXPECT_TRUE (window.waitToShow (testskin::key, 1));

    instance.clearAutomations();
    window.startDrag (testskin::fxChannel.place, 10);
    ASSERT_TRUE (window.waitFor ([&] { return ! instance.getAutomations().empty(); }));
    window.close();
    window.release();
    EXPECT_TRUE (gestureHasEnded (instance));
    ASSERT_TRUE (window.openAndSee());
    EXPECT_TRUE (window.waitToShow (testskin::key, 0));
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

    // The window closes in the middle of an edit, which is undone.
    window.click (testskin::editable);
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlne| "));
    window.type ("w");
    ASSERT_TRUE (window.waitToRead (testskin::editable, "xlnew| "));
    const auto windows = screen->countWindows();
    window.close();
    EXPECT_LE (screen->countWindows(), windows - 2) << "the editor's and the host's";
    ASSERT_TRUE (window.openAndSee());
    EXPECT_TRUE (window.waitToRead (testskin::editable, "xlne"));
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

    // Counted from the event on: on a busy machine the light may have been on for a while when it is seen.
    const auto sent = std::chrono::steady_clock::now();
    instance.sendMidi ({ event });
    processSome (instance, 0.0f, 512);

    ASSERT_TRUE (window.waitToShow (testskin::activity, 1));
    ASSERT_TRUE (window.waitToShow (testskin::activity, 0));
    const auto duration = std::chrono::steady_clock::now() - sent;
    EXPECT_GT (duration, 100ms);
    EXPECT_LT (duration, 3s);

    // The meter follows the sound, and falls when there is none.
    ASSERT_TRUE (window.waitToShow (testskin::meter, 0));
    processSome (instance, 0.9f, 48000);
    EXPECT_TRUE (
        window.waitFor ([&] { return window.getColour (testskin::meter.place) >= testskin::meter.colourOf (3); }));
    instance.suspend();
    EXPECT_TRUE (window.waitToShow (testskin::meter, 0));
    instance.resume();
}
