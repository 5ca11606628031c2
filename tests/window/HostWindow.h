// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "TestScreen.h"
#include "abi/RawHost.h"
#include "window/TestSkin.h"

/** An instance with a window for its editor, and the hand that works in it. While the window is open, the plug-in's
    events are delivered in the host's idle calls; so every wait is a loop of those. */
class HostWindow
{
public:
    struct Size
    {
        int width = 0, height = 0;

        bool operator== (const Size& other) const { return width == other.width && height == other.height; }
    };

    HostWindow (TestScreen&, const rawhost::Library&, int x = 100, int y = 100);

    /** Takes the instance away first, whether the editor is open or not. */
    ~HostWindow();

    HostWindow (const HostWindow&) = delete;
    HostWindow& operator= (const HostWindow&) = delete;

    //==============================================================================
    /** What the plug-in says of its editor. */
    Size getEditorSize();

    /** How large the host's window is now. */
    Size getSize() const { return size; }

    /** Asks for the size and opens the editor in a window of that size. */
    bool open();
    void close();

    /** Opens, and waits until the test skin's panel is seen. */
    bool openAndSee();

    void idle() { instance->dispatch (rawhost::effEditIdle); }

    /** Idles until the condition holds.
        @returns whether it did in time */
    template <typename Condition>
    bool waitFor (Condition&& condition, std::chrono::milliseconds timeout = std::chrono::seconds (20))
    {
        const auto end = std::chrono::steady_clock::now() + timeout;

        while (! condition())
        {
            if (std::chrono::steady_clock::now() > end)
                return false;

            idle();
            rest();
        }

        return true;
    }

    /** Idles long enough for what shouldn't happen to happen. */
    void settle();

    //==============================================================================
    // The mouse, in the editor's coordinates.
    void moveTo (int x, int y);
    void press (int button = TestScreen::leftButton);
    void release (int button = TestScreen::leftButton);
    void click (const testskin::Place&, int button = TestScreen::leftButton);
    void doubleClick (const testskin::Place&);
    void shiftClick (const testskin::Place&);

    /** Presses in the middle of the place, and moves in steps; the button stays down. */
    void startDrag (const testskin::Place&, int distanceUp, int button = TestScreen::leftButton);

    void type (const char* keySymbol);

    /** Gives the keyboard to the host's window, as a window manager does when it's clicked. */
    void takeKeyboard() { screen.setFocus (window); }
    bool hasKeyboard() { return screen.getFocus() == window; }

    /** Whether a key that is typed now comes to the host's window. */
    bool hearsKey();

    //==============================================================================
    uint32_t getPixel (int x, int y) { return screen.getPixel (left + x, top + y); }
    uint32_t getColour (const testskin::Place& place) { return getPixel (place.centreX(), place.centreY()); }

    bool shows (const testskin::Strip& strip, int frame) { return getColour (strip.place) == strip.colourOf (frame); }

    bool waitToShow (const testskin::Strip& strip, int frame)
    {
        return waitFor ([&] { return shows (strip, frame); });
    }

    /** What a display shows in the tests' font, the caret as '|' before its character; it blinks. */
    std::string read (const testskin::Place& display);

    bool waitToRead (const testskin::Place& display, const std::string& text)
    {
        return waitFor ([&] { return read (display) == text; });
    }

    /** Whether there is text in the strip below a panel of this height, left of the buttons. */
    bool hasStatusText (int panelHeight, int panelWidth);

    rawhost::Instance& getInstance() { return *instance; }

    /** Closes the instance as it is, and leaves the window. */
    void destroyInstance() { instance.reset(); }

private:
    static void rest();
    void makeWindow();

    TestScreen& screen;
    const int left, top;
    unsigned long window = 0;
    Size size;
    std::unique_ptr<rawhost::Instance> instance;
};
