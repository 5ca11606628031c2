// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestScreen.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <string>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

std::atomic<int> numErrors { 0 };

int countError (Display*, XErrorEvent*)
{
    ++numErrors;
    return 0;
}

/** Starts a server of this number, which says so through the descriptor when it's ready. */
pid_t startServer (int number, int readyPipe[2])
{
    const auto child = fork();

    if (child != 0)
        return child;

    prctl (PR_SET_PDEATHSIG, SIGTERM);
    close (readyPipe[0]);

    const auto name = ":" + std::to_string (number);
    const auto descriptor = std::to_string (readyPipe[1]);
    const auto size = std::to_string (TestScreen::width) + "x" + std::to_string (TestScreen::height) + "x24";
    execlp ("Xvfb", "Xvfb", name.c_str(), "-displayfd", descriptor.c_str(), "-screen", "0", size.c_str(), "-nolisten",
            "tcp", nullptr);
    _exit (127);
}

int countBelow (Display* display, Window window)
{
    Window root = 0, parent = 0, *children = nullptr;
    unsigned int numChildren = 0;

    if (XQueryTree (display, window, &root, &parent, &children, &numChildren) == 0)
        return 0;

    auto count = static_cast<int> (numChildren);

    for (unsigned int i = 0; i < numChildren; ++i)
        count += countBelow (display, children[i]);

    if (children != nullptr)
        XFree (children);

    return count;
}

} // namespace

TestScreen::TestScreen()
{
    // Not the lowest numbers: programs that are told of no display try the first one, and would end with this.
    constexpr int firstNumber = 100, numNumbers = 900, maximumAttempts = 20;
    int number = 0;

    for (int attempt = 0; attempt < maximumAttempts && server < 0; ++attempt)
    {
        number = firstNumber + (getpid() + attempt) % numNumbers;
        start (number);
    }

    if (server < 0)
        return;

    XInitThreads();
    XSetErrorHandler (countError);
    setenv ("DISPLAY", (":" + std::to_string (number)).c_str(), 1);
    display = XOpenDisplay (nullptr);

    // A window manager would have made these names known.
    if (display != nullptr)
        for (const auto* name : { "WM_PROTOCOLS", "WM_TAKE_FOCUS", "WM_CHANGE_STATE", "WM_STATE", "_NET_WM_PING",
                                  "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN", "_NET_WM_WINDOW_TYPE" })
            XInternAtom (display, name, False);
}

void TestScreen::start (int number)
{
    int readyPipe[2];

    if (pipe (readyPipe) != 0)
        return;

    server = startServer (number, readyPipe);
    close (readyPipe[1]);

    // It writes a line. A number that is taken ends the server, and the pipe with it.
    char character = 0;

    while (read (readyPipe[0], &character, 1) == 1 && character != '\n')
    {
    }

    const auto isReady = character == '\n';
    close (readyPipe[0]);

    if (! isReady && server > 0)
    {
        waitpid (server, nullptr, 0);
        server = -1;
    }
}

TestScreen::~TestScreen()
{
    if (display != nullptr)
        XCloseDisplay (display);

    if (server > 0)
    {
        kill (server, SIGTERM);
        waitpid (server, nullptr, 0);
    }
}

//==============================================================================
unsigned long TestScreen::createWindow (int x, int y, int windowWidth, int windowHeight)
{
    const auto window =
        XCreateSimpleWindow (display, DefaultRootWindow (display), x, y, static_cast<unsigned int> (windowWidth),
                             static_cast<unsigned int> (windowHeight), 0, 0, 0);
    XSelectInput (display, window, KeyPressMask);
    XMapWindow (display, window);
    XSync (display, False);
    return window;
}

void TestScreen::resizeWindow (unsigned long window, int windowWidth, int windowHeight)
{
    XResizeWindow (display, window, static_cast<unsigned int> (windowWidth), static_cast<unsigned int> (windowHeight));
    XSync (display, False);
}

void TestScreen::destroyWindow (unsigned long window)
{
    XDestroyWindow (display, window);
    XSync (display, False);
}

void TestScreen::setFocus (unsigned long window)
{
    XSetInputFocus (display, window, RevertToParent, CurrentTime);
    XSync (display, False);
}

unsigned long TestScreen::getFocus()
{
    Window window = 0;
    int revertTo = 0;
    XGetInputFocus (display, &window, &revertTo);
    return window;
}

int TestScreen::countKeys (unsigned long window)
{
    XEvent event;
    int count = 0;
    XSync (display, False);

    while (XCheckWindowEvent (display, window, KeyPressMask, &event) != False)
        ++count;

    return count;
}

int TestScreen::countWindows()
{
    return countBelow (display, DefaultRootWindow (display));
}

//==============================================================================
void TestScreen::moveMouse (int x, int y)
{
    XTestFakeMotionEvent (display, -1, x, y, CurrentTime);
    XSync (display, False);
}

std::pair<int, int> TestScreen::getMousePosition()
{
    Window root = 0, child = 0;
    int x = 0, y = 0, windowX = 0, windowY = 0;
    unsigned int buttons = 0;
    XQueryPointer (display, DefaultRootWindow (display), &root, &child, &x, &y, &windowX, &windowY, &buttons);
    return { x, y };
}

void TestScreen::pressButton (int button)
{
    XTestFakeButtonEvent (display, static_cast<unsigned int> (button), True, CurrentTime);
    XSync (display, False);
}

void TestScreen::releaseButton (int button)
{
    XTestFakeButtonEvent (display, static_cast<unsigned int> (button), False, CurrentTime);
    XSync (display, False);
}

void TestScreen::sendKey (const char* symbol, bool isDown)
{
    XTestFakeKeyEvent (display, XKeysymToKeycode (display, XStringToKeysym (symbol)), isDown ? True : False,
                       CurrentTime);
    XSync (display, False);
}

void TestScreen::pressKey (const char* symbol)
{
    sendKey (symbol, true);
}

void TestScreen::releaseKey (const char* symbol)
{
    sendKey (symbol, false);
}

//==============================================================================
uint32_t TestScreen::getPixel (int x, int y)
{
    auto* image = XGetImage (display, DefaultRootWindow (display), x, y, 1, 1, AllPlanes, ZPixmap);

    if (image == nullptr)
        return 0;

    const auto pixel = static_cast<uint32_t> (XGetPixel (image, 0, 0)) & 0xffffffu;
    XDestroyImage (image);
    return pixel;
}

int TestScreen::countDrawnPixels (int x, int y, int areaWidth, int areaHeight)
{
    auto* image = XGetImage (display, DefaultRootWindow (display), x, y, static_cast<unsigned int> (areaWidth),
                             static_cast<unsigned int> (areaHeight), AllPlanes, ZPixmap);

    if (image == nullptr)
        return 0;

    int count = 0;

    for (int row = 0; row < areaHeight; ++row)
        for (int column = 0; column < areaWidth; ++column)
            count += XGetPixel (image, column, row) != XGetPixel (image, 0, 0) ? 1 : 0;

    XDestroyImage (image);
    return count;
}

int TestScreen::getNumErrors()
{
    return numErrors;
}
