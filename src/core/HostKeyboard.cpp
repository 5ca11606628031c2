// SPDX-License-Identifier: GPL-3.0-or-later

#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1

#include "core/HostKeyboard.h"

#include <utility>

namespace K7R
{

namespace
{

juce::X11Symbols& x11()
{
    return *juce::X11Symbols::getInstance();
}

::Display* getDisplay()
{
    return juce::XWindowSystem::getInstance()->getDisplay();
}

/** Whether JUCE knows of a press that it hasn't told anybody yet. The first thing that it does then is to bring the
    window to the front, with the focus. */
bool isPressUntold()
{
    return juce::ModifierKeys::currentModifiers.isAnyMouseButtonDown()
           && ! juce::Desktop::getInstance().getMainMouseSource().isDragging();
}

/** Ignores errors of our connection to the server: windows of others may go at any time, and an error ends most hosts.
    The handler is the process's, so errors of the host's own connections go on to its own handler. */
struct ScopedErrors
{
    ScopedErrors() { before = x11().xSetErrorHandler (ignore); }

    ~ScopedErrors()
    {
        x11().xSync (getDisplay(), False);
        x11().xSetErrorHandler (before);
    }

    static int ignore (::Display* display, XErrorEvent* event)
    {
        return display == getDisplay() || before == nullptr ? 0 : before (display, event);
    }

    static inline XErrorHandler before = nullptr;
};

bool canTakeFocus (::Window window)
{
    if (window == None || window == PointerRoot)
        return true;

    XWindowAttributes attributes;
    return x11().xGetWindowAttributes (getDisplay(), window, &attributes) != 0 && attributes.map_state == IsViewable;
}

::Window getParent (::Window window)
{
    ::Window root = None, parent = None;
    ::Window* children = nullptr;
    unsigned int numChildren = 0;

    if (x11().xQueryTree (getDisplay(), window, &root, &parent, &children, &numChildren) == 0)
        return None;

    if (children != nullptr)
        x11().xFree (children);

    return parent == root ? PointerRoot : parent;
}

} // namespace

/** JUCE's requests to the server about the focus pass through here. */
struct HostKeyboard::Requests
{
    static void install()
    {
        auto& present = x11().xSetInputFocus;

        if (present != setInputFocus)
            original = std::exchange (present, setInputFocus);
    }

    static HostKeyboard* find (::Window window)
    {
        for (auto* each = first; each != nullptr; each = each->next)
            if (window != 0 && each->getHandle() == window)
                return each;

        return nullptr;
    }

    static void setInputFocus (::Display* display, ::Window window, int revertTo, ::Time time)
    {
        if (auto* keyboard = find (window))
        {
            if (isPressUntold())
                return;

            int revert = 0;
            x11().xGetInputFocus (display, &keyboard->holder, &revert);
            keyboard->isLent = true;
            keyboard->selectKeys (true);
        }

        original (display, window, revertTo, time);
    }

    static inline juce::X11Symbols::XSetInputFocus original = nullptr;
};

//==============================================================================
HostKeyboard::HostKeyboard (juce::Component& shown) : frame (shown), next (std::exchange (first, this))
{
    frame.addMouseListener (this, true);
    juce::Desktop::getInstance().addFocusChangeListener (this);
}

HostKeyboard::~HostKeyboard()
{
    juce::Desktop::getInstance().removeFocusChangeListener (this);
    frame.removeMouseListener (this);
    giveBack();

    auto** link = &first;

    while (*link != this)
        link = &(*link)->next;

    *link = next;
}

unsigned long HostKeyboard::getHandle() const
{
    return juce::ComponentPeer::isValidPeer (window) ? reinterpret_cast<unsigned long> (window->getNativeHandle()) : 0;
}

void HostKeyboard::setWindow (juce::ComponentPeer* newWindow)
{
    if (window == newWindow)
        return;

    giveBack();
    window = newWindow;

    if (window == nullptr)
        return;

    Requests::install();
    selectsKeys = true; // as JUCE made it
    selectKeys (false);
}

void HostKeyboard::selectKeys (bool shouldSelect)
{
    const auto handle = getHandle();

    if (handle == 0 || std::exchange (selectsKeys, shouldSelect) == shouldSelect)
        return;

    constexpr long keys = KeyPressMask | KeyReleaseMask;
    const juce::XWindowSystemUtilities::ScopedXLock lock;
    const ScopedErrors errors;
    XWindowAttributes attributes;

    if (x11().xGetWindowAttributes (getDisplay(), handle, &attributes) == 0)
        return;

    const auto mask = attributes.your_event_mask;
    x11().xSelectInput (getDisplay(), handle, shouldSelect ? mask | keys : mask & ~keys);
}

void HostKeyboard::giveBack()
{
    selectKeys (false);

    if (! std::exchange (isLent, false) || getHandle() == 0)
        return;

    const juce::XWindowSystemUtilities::ScopedXLock lock;
    const ScopedErrors errors;

    // Nobody but the one who has it may give it on.
    if (! window->isFocused())
        return;

    auto target = holder;

    // Another editor of ours had it from somebody, too.
    for (const auto* turn = first; turn != nullptr; turn = turn->next)
        if (const auto* other = Requests::find (target); other != nullptr && other->holder != 0)
            target = other->holder;

    // The window that had it may be gone by now; the one that ours lies in is the host's, too.
    if (! canTakeFocus (target))
        target = getParent (getHandle());

    Requests::original (getDisplay(), target, RevertToParent, CurrentTime);
}

//==============================================================================
void HostKeyboard::globalFocusChanged (juce::Component* focused)
{
    user = focused != nullptr && frame.isParentOf (focused) ? focused : nullptr;

    // The host may have given it as well.
    if (user != nullptr)
        selectKeys (true);
    else
        giveBack();
}

void HostKeyboard::mouseDown (const juce::MouseEvent& e)
{
    // A control of the panel that had the keyboard before this press loses it by a press beside it. Windows and
    // popups, which keep the focus inside, don't.
    if (user != nullptr && user->hasKeyboardFocus (false) && user != e.originalComponent
        && ! user->isParentOf (e.originalComponent)
        && user->findKeyboardFocusContainer() == frame.findKeyboardFocusContainer())
        user->giveAwayKeyboardFocus();
}

std::unique_ptr<juce::ComponentTraverser> HostKeyboard::createTraverser()
{
    struct Traverser final : juce::KeyboardFocusTraverser
    {
        explicit Traverser (juce::Component& hidden) : nobody (hidden) {}

        juce::Component* getDefaultComponent (juce::Component*) override { return &nobody; }

        juce::Component& nobody;
    };

    return std::make_unique<Traverser> (nobody);
}

} // namespace K7R
