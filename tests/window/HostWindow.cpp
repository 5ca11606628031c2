// SPDX-License-Identifier: GPL-3.0-or-later

#include "HostWindow.h"

#include <thread>

namespace
{

struct Rectangle
{
    int16_t top, left, bottom, right;
};

} // namespace

HostWindow::HostWindow (TestScreen& testScreen, const rawhost::Library& library, int x, int y) :
    screen (testScreen),
    left (x),
    top (y),
    instance (std::make_unique<rawhost::Instance> (library))
{
    instance->resizeWindow = [this] (int newWidth, int newHeight)
    {
        size = { newWidth, newHeight };

        if (window != 0)
            screen.resizeWindow (window, newWidth, newHeight);
    };
}

HostWindow::~HostWindow()
{
    instance.reset();

    if (window != 0)
        screen.destroyWindow (window);
}

HostWindow::Size HostWindow::getEditorSize()
{
    Rectangle* rectangle = nullptr;
    instance->dispatch (rawhost::effEditGetRect, 0, 0, &rectangle);

    return rectangle != nullptr ? Size { rectangle->right - rectangle->left, rectangle->bottom - rectangle->top }
                                : Size();
}

bool HostWindow::open()
{
    size = getEditorSize();
    window = screen.createWindow (left, top, size.width, size.height);
    return instance->dispatch (rawhost::effEditOpen, 0, 0, reinterpret_cast<void*> (window)) != 0;
}

void HostWindow::close()
{
    instance->dispatch (rawhost::effEditClose);
    screen.destroyWindow (window);
    window = 0;
}

bool HostWindow::openAndSee()
{
    return open() && waitFor ([this] { return getPixel (1, 1) == testskin::background; });
}

void HostWindow::rest()
{
    std::this_thread::sleep_for (std::chrono::microseconds (500));
}

void HostWindow::settle()
{
    waitFor ([] { return false; }, std::chrono::milliseconds (80));
}

//==============================================================================
void HostWindow::moveTo (int x, int y)
{
    screen.moveMouse (left + x, top + y);
    idle();
}

void HostWindow::press (int button)
{
    screen.pressButton (button);
    idle();
}

void HostWindow::release (int button)
{
    screen.releaseButton (button);
    idle();
}

void HostWindow::click (const testskin::Place& place, int button)
{
    moveTo (place.centreX(), place.centreY());
    press (button);
    release (button);
}

void HostWindow::doubleClick (const testskin::Place& place)
{
    click (place);
    click (place);
}

void HostWindow::shiftClick (const testskin::Place& place)
{
    screen.pressKey ("Shift_L");
    click (place);
    screen.releaseKey ("Shift_L");
    idle();
}

void HostWindow::startDrag (const testskin::Place& place, int distanceUp, int button)
{
    constexpr int numSteps = 10;

    moveTo (place.centreX(), place.centreY());
    press (button);

    for (int step = 1; step <= numSteps; ++step)
    {
        moveTo (place.centreX(), place.centreY() - distanceUp * step / numSteps);
        rest();
    }
}

void HostWindow::type (const char* keySymbol)
{
    screen.pressKey (keySymbol);
    screen.releaseKey (keySymbol);
    idle();
}

bool HostWindow::hearsKey()
{
    screen.countKeys (window);
    type ("F9"); // which means nothing to the editor
    return screen.countKeys (window) == 1;
}

//==============================================================================
std::string HostWindow::read (const testskin::Place& display)
{
    using namespace testskin;

    std::string text;

    for (int x = 0; x + glyphWidth <= display.width; x += glyphWidth)
    {
        const auto colour = getPixel (display.x + x + glyphWidth / 2, display.centreY());
        const auto family = colour & 0xffffu;

        if (family == caretColours)
            text += '|';
        else if (family != glyphColours)
            break;

        text += static_cast<char> (colour >> 16);
    }

    return text;
}

bool HostWindow::hasStatusText (int panelHeight, int panelWidth)
{
    constexpr int buildLabelWidth = 200, buttonsWidth = 240, enough = 20;
    const auto& end = getEditorSize();

    return screen.countDrawnPixels (left, top + panelHeight, panelWidth - buildLabelWidth - buttonsWidth,
                                    end.height - panelHeight)
           >= enough;
}
