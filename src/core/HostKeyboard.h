// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** The keyboard, which belongs to the host's window and is lent to the editor while something in it needs keys: a field
    that is edited, a window of the editor's own. What had X's focus before gets it back when nothing in the frame has
    JUCE's focus any more.

    JUCE takes X's focus at every press, and selects keys all the time, so that they come here while the mouse is over
    the editor. Here a press alone takes nothing, and keys that nobody uses go on to the host's window.

    The frame owns it. For the message thread.
*/
class HostKeyboard final : private juce::FocusChangeListener, private juce::MouseListener
{
public:
    /** @param frame all that the host's window shows; keys go to what lies in it */
    explicit HostKeyboard (juce::Component& frame);
    ~HostKeyboard() override;

    HostKeyboard (const HostKeyboard&) = delete;
    HostKeyboard& operator= (const HostKeyboard&) = delete;

    /** The frame came into this window; null if it left one. */
    void setWindow (juce::ComponentPeer*);

    /** Gives the keyboard back to who had it, if it's here. */
    void giveBack();

    /** For the frame's createKeyboardFocusTraverser(): a press on what wants no keys gives the focus to nobody, where
        JUCE looks for the first component in the neighbourhood that would take it. */
    std::unique_ptr<juce::ComponentTraverser> createTraverser();

private:
    struct Requests;

    void globalFocusChanged (juce::Component* focused) override;
    void mouseDown (const juce::MouseEvent&) override;
    unsigned long getHandle() const; // of the window, 0 for none
    void selectKeys (bool);

    // All of this library's, each of which knows its window. A plain pointer, because a window may end after the
    // static objects of a process.
    static inline HostKeyboard* first = nullptr;

    juce::Component& frame;
    HostKeyboard* next;
    juce::Component nobody; // is never shown, and so never gets the focus
    juce::Component::SafePointer<juce::Component> user;
    juce::ComponentPeer* window = nullptr;
    bool isLent = false, selectsKeys = false;
    unsigned long holder = 0; // who had the focus when it was lent
};

} // namespace K7R
