// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <utility>

#include <sys/types.h>

struct _XDisplay;

/** An X server of the process's own, without a monitor and without a window manager, and the mouse and keyboard on
    it. What is pressed and what is seen goes through the server, as with a person in front of it.

    The server ends with the object, and with the process. Other connections find it by the variable DISPLAY. */
class TestScreen
{
public:
    static constexpr int width = 1280, height = 1024;

    TestScreen();
    ~TestScreen();

    TestScreen (const TestScreen&) = delete;
    TestScreen& operator= (const TestScreen&) = delete;

    bool isOpen() const { return display != nullptr; }

    //==============================================================================
    /** Plain windows, as a host makes them for an editor. */
    unsigned long createWindow (int x, int y, int windowWidth, int windowHeight);
    void resizeWindow (unsigned long window, int windowWidth, int windowHeight);
    void destroyWindow (unsigned long window);

    /** The window that X gives the keys to. */
    void setFocus (unsigned long window);
    unsigned long getFocus();

    /** How often a key went down for a window of ours, since this was last asked. */
    int countKeys (unsigned long window);

    /** How many windows the server keeps for everybody. */
    int countWindows();

    //==============================================================================
    static constexpr int leftButton = 1, rightButton = 3, wheelUp = 4, wheelDown = 5;

    void moveMouse (int x, int y);
    std::pair<int, int> getMousePosition();
    void pressButton (int button);
    void releaseButton (int button);

    /** A key by its symbol, as X names it: "a", "Return", "Shift_L". */
    void pressKey (const char* symbol);
    void releaseKey (const char* symbol);

    //==============================================================================
    /** The colour that is seen at a place, as 0xrrggbb. */
    uint32_t getPixel (int x, int y);

    /** How many pixels of an area have another colour than its top left one. */
    int countDrawnPixels (int x, int y, int areaWidth, int areaHeight);

    /** What programs of this process asked of the server in vain. */
    static int getNumErrors();

private:
    void start (int number);
    void sendKey (const char* symbol, bool isDown);

    _XDisplay* display = nullptr;
    pid_t server = -1;
};
