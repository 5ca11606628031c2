// SPDX-License-Identifier: GPL-3.0-or-later

// Typing into the editor's fields: by a keyboard, in a host's window, up to the host's parameters.

#include <cctype>
#include <thread>

#include "EditorWindow.h"

namespace
{

constexpr int centerFrequency = 12;

class EditorFields : public EditorWindow
{
protected:
    void SetUp() override
    {
        install (testskin::fieldsSkin);
        load();
        window = std::make_unique<HostWindow> (*screen, *library);
        ASSERT_TRUE (window->openAndSee());
    }

    void TearDown() override
    {
        window.reset();
        EditorWindow::TearDown();
    }

    Instance& instance() { return window->getInstance(); }

    std::string textOf (int parameter) { return instance().text (rawhost::effGetParamDisplay, parameter); }

    /** Letters, digits, "%" and "+". Capitals and signs are typed with Shift, as on any keyboard. */
    void typeText (const std::string& text)
    {
        for (const auto character : text)
        {
            const auto isUpper = std::isupper (character) != 0;
            const auto needsShift = isUpper || character == '%' || character == '+';
            const std::string key = character == '%'   ? "5"
                                    : character == '+' ? "equal"
                                    : character == '.' ? "period"
                                    : character == '/' ? "slash"
                                                       : std::string (1, static_cast<char> (std::tolower (character)));

            if (needsShift)
                screen->pressKey ("Shift_L");

            window->type (key.c_str());

            if (needsShift)
                screen->releaseKey ("Shift_L");

            window->idle();
        }
    }

    /** Clicks a field, takes out what stands there, and types. */
    void typeOver (const testskin::Place& field, const std::string& text, const char* endKey = "Return",
                   int numErased = 8)
    {
        window->settle(); // the click isn't the second of a double one
        std::this_thread::sleep_for (doubleClickTime);
        instance().clearAutomations();
        window->click (field);
        window->settle(); // the keyboard comes after the click

        for (int i = 0; i < numErased; ++i)
            window->type ("BackSpace");

        typeText (text);
        window->type (endKey);
    }

    /** Expects that the typed text moved the parameter by one gesture of one value. */
    void expectOneValue (int parameter, const std::string& text)
    {
        EXPECT_TRUE (window->waitFor ([&] { return gestureHasEnded (instance()); })) << text;
        EXPECT_EQ (valuesOfOneGesture (instance(), parameter).size(), 1u) << text;
        EXPECT_EQ (textOf (parameter), text);
    }

    int countValues()
    {
        const auto heard = instance().getAutomations();
        return static_cast<int> (std::count_if (
            heard.begin(), heard.end(), [] (const auto& call) { return call.operation == rawhost::hostAutomate; }));
    }

    void expectNothing (int parameter, const std::string& text)
    {
        window->settle();
        EXPECT_TRUE (instance().getAutomations().empty()) << text;
        EXPECT_EQ (textOf (parameter), text);
    }

    /** The digits of the centre frequency, a blank as ' '. */
    std::string readDigits()
    {
        std::string shown;

        for (int i = 0; i < testskin::numDigits; ++i)
            for (int frame = 0; frame < testskin::frequencyDigits.numFrames; ++frame)
                if (window->getPixel (digit (i).centreX(), digit (i).centreY())
                    == testskin::frequencyDigits.colourOf (frame))
                    shown += frame == 0 ? ' ' : static_cast<char> ('0' + frame - 1);

        return shown;
    }

    static testskin::Place digit (int index)
    {
        auto place = testskin::frequencyDigits.place;
        place.x += index * testskin::digitWidth;
        return place;
    }

    bool waitForDigits (const std::string& text)
    {
        return window->waitFor ([&] { return readDigits() == text; });
    }

    static constexpr auto doubleClickTime = 450ms;
    std::unique_ptr<HostWindow> window;
};

} // namespace

TEST_F (EditorFields, GiveWhatIsTypedToTheHost)
{
    using namespace testskin;

    // A display: without the unit and with it, beyond the range, and what isn't a value.
    instance().set (feedback, 0.38f);
    ASSERT_TRUE (window->waitToRead (feedbackText, "38%"));
    const auto numWindows = screen->countWindows();

    const struct
    {
        const char* typed;
        const char* shown;
        bool isTaken;
    } cases[] { { "99", "99%", true },    { "40%", "40%", true }, { "LOUD", "40%", false }, { "%", "40%", false },
                { "+250", "100%", true }, { "-3", "0%", true },   { "7.6", "7%", true } };

    for (const auto& [typed, shown, isTaken] : cases)
    {
        const auto text = std::string (typed);
        typeOver (feedbackText, text == "-3" ? "" : text, text == "-3" ? "minus" : "Return", 0);

        if (text == "-3")
        {
            window->type ("3");
            window->type ("Return");
        }

        isTaken ? expectOneValue (feedback, shown) : expectNothing (feedback, shown);
        EXPECT_TRUE (window->waitToRead (feedbackText, shown)) << typed;
    }

    // A text that names the present value makes no gesture.
    typeOver (feedbackText, "7.6", "Return", 0);
    expectNothing (feedback, "7%");

    // An arrow takes the selection away, and the text stays.
    typeOver (feedbackText, "", "Left", 0);
    EXPECT_TRUE (window->waitToRead (feedbackText, "7|%"));
    typeText ("1");
    window->type ("Return");
    expectOneValue (feedback, "71%");
    typeOver (feedbackText, "7", "Return", 0);
    expectOneValue (feedback, "7%");

    // The field lies in the editor, on its own ground, and capitals can be typed into it.
    typeOver (feedbackText, "Ab", "Left");
    EXPECT_TRUE (window->waitToRead (feedbackText, "A|b"));
    EXPECT_EQ (screen->countWindows(), numWindows);
    EXPECT_EQ (window->getPixel (feedbackText.x + feedbackText.width - 2, feedbackText.centreY()), displayGround);
    window->type ("Escape");
    EXPECT_TRUE (window->waitToRead (feedbackText, "7%"));

    // A bare number, and a list in which only its own words are values.
    typeOver (fxText, "40");
    expectOneValue (fx, "60/40% (Dry/Wet)");
    EXPECT_TRUE (window->waitFor ([&] { return window->read (fxText).substr (0, 2) == "40"; }));

    typeOver (stagesText, "8");
    expectOneValue (stages, "8");
    typeOver (stagesText, "3");
    expectNothing (stages, "8");

    // Digits: those that are typed come in from the right; a press elsewhere is an end, too.
    typeOver (frequencyDigits.place, "44", "0");
    EXPECT_TRUE (waitForDigits ("  440"));
    window->click (rocker.place, TestScreen::rightButton);
    EXPECT_TRUE (waitForDigits ("00440"));
    EXPECT_TRUE (window->waitFor ([&] { return textOf (centerFrequency) == "440Hz"; }));
    EXPECT_EQ (countValues(), 1);

    // A part of a drag that the parameter refuses isn't shown.
    window->startDrag (digit (2), -40);
    EXPECT_TRUE (waitForDigits ("00020"));
    window->release();

    // The second click of a double click resets.
    std::this_thread::sleep_for (doubleClickTime);
    window->doubleClick (digit (1));
    EXPECT_TRUE (waitForDigits ("00320"));
    window->doubleClick (feedbackText);
    EXPECT_TRUE (window->waitToRead (feedbackText, "0%"));
    expectWholeGestures (instance());
}

TEST_F (EditorFields, HearTheirKeysWhereTheDesktopMovesTheFocusAtEachPress)
{
    using namespace testskin;
    constexpr Place ground { 4, 4, 2, 2 };

    // Window managers give the focus to the host's window before they hand on a press.
    const auto press = [&] (const Place& place)
    {
        std::this_thread::sleep_for (doubleClickTime);
        window->takeKeyboard();
        window->settle();
        window->click (place);
        window->settle();
    };

    press (feedbackText);
    window->type ("BackSpace");
    press (ground);
    EXPECT_TRUE (window->hearsKey());

    instance().clearAutomations();
    press (fxText);

    for (int i = 0; i < 24; ++i)
        window->type ("BackSpace");

    typeText ("40");
    window->type ("Return");
    expectOneValue (fx, "60/40% (Dry/Wet)");
}

TEST_F (EditorFields, EndWithTheHostsWindowAsIfNothingHadBeenTyped)
{
    using namespace testskin;

    const Place fields[] { freeText, stagesText, feedbackText, frequencyDigits.place };

    for (const auto& field : fields)
        for (const auto hasMenu : { false, true })
        {
            instance().set (stages, 1.0f);
            instance().set (feedback, 0.5f);
            const auto frequency = textOf (centerFrequency);
            typeOver (field, "4", "4");

            // A text has a menu; on other fields the right button is for the parameter.
            if (hasMenu && (&field == &fields[0] || &field == &fields[1]))
            {
                const auto numWindows = screen->countWindows();
                window->click (field, TestScreen::rightButton);
                window->settle();
                EXPECT_EQ (screen->countWindows(), numWindows) << "which is no window of the desktop";
            }

            window->close();
            ASSERT_TRUE (window->openAndSee());
            window->settle();
            EXPECT_EQ (textOf (stages), "8");
            EXPECT_EQ (textOf (feedback), "50%");
            EXPECT_EQ (textOf (centerFrequency), frequency);
            EXPECT_EQ (countValues(), 0);
        }
}

TEST_F (EditorFields, StepsAreShownAsTheParameterTookThem)
{
    using namespace testskin;

    // 60 pixels are 0.24 of the range, which is the second of four values.
    instance().set (stages, 0.0f);
    ASSERT_TRUE (window->waitToShow (stagesKnob, 0));
    window->startDrag (stagesKnob.place, 60);
    EXPECT_TRUE (window->waitToShow (stagesKnob, 20));
    window->release();
    window->settle();
    EXPECT_TRUE (window->shows (stagesKnob, 20));
    EXPECT_EQ (textOf (stages), "4");
}

TEST_F (EditorFields, ARockerFiresForThePlainLeftButtonAlone)
{
    using namespace testskin;

    auto more = rocker.place;
    more.height /= 2;

    instance().set (feedback, 0.5f);
    window->click (more, TestScreen::rightButton);
    window->shiftClick (more);
    window->settle();
    EXPECT_EQ (textOf (feedback), "50%");
    window->click (more);
    EXPECT_TRUE (window->waitFor ([&] { return textOf (feedback) == "0%"; }));
}
