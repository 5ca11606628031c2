// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <initializer_list>
#include <vector>

#include "widgets/controls/ComponentRow.h"
#include "widgets/windows/WindowComponent.h"

namespace K7R
{

/** A question with a fixed set of buttons, inside the editor, which Tab and the arrow keys go through. It waits for nobody: the answer comes to its Caller,
    which owns the window and may delete it there. For the message thread. */
class AlertWindow : public WindowComponent, protected juce::AsyncUpdater
{
public:
    /** What a button says, and the result that it gives. */
    enum Code : int
    {
        cancel,
        no,
        yes,
        ok,
        overwrite,
        saveAs,
        discard,
        replace,
        skip,
        replaceAll,
        skipAll,
        rename,
    };

    class Caller
    {
    public:
        virtual ~Caller() = default;

        /** The window is off the screen.
            @param result the code of the button that closed it; cancel for the close button */
        virtual void alertClosed (AlertWindow*, int result) = 0;
    };

    /** @param caller may be null, and outlives the window */
    AlertWindow (Caller* caller, const juce::String& title, const juce::String& text);
    ~AlertWindow() override;

    /** Adds a button at the end of the row.
        @param isEscape the Escape key presses it
        @param hasFocus it has the keyboard's focus at first, so that Return presses it */
    juce::TextButton& addButton (int code, bool isEscape, bool hasFocus);

    /** Shows the window on the parent's editor. */
    void show (juce::Component& parent);

    /** A window with these buttons, shown. An OK is pressed by Return and Escape both; so is a No, since questions of
        this kind ask about what can't be taken back: they are agreed to by the mouse, or with Space or Return once the
        focus was moved to the Yes.
        @param parent null for the caller, if that is a component */
    static std::unique_ptr<AlertWindow> open (Caller* caller, const juce::String& title, const juce::String& text,
                                              std::initializer_list<int> codes, juce::Component* parent = nullptr);

    static constexpr std::initializer_list<int> okOnly { ok };
    static constexpr std::initializer_list<int> yesOrNo { yes, no };

    /** What a button of this code says; empty for a code that there isn't. */
    static juce::String getButtonText (int code);

    /** A name that is short enough for a line, without its middle if it has to be. */
    static juce::String shorten (const juce::String& name);

    const juce::String& getText() const noexcept { return text; }

    using WindowComponent::open;

    void resized() override;
    void lookAndFeelChanged() override;
    bool keyPressed (const juce::KeyPress&) override;
    std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;

protected:
    /** Takes the size that text and buttons need. */
    virtual void updateLayout();

    /** What Tab runs through, in this order; it ends at both ends. */
    virtual std::vector<juce::Component*> getFocusOrder();

    /** What a derived class shows between the text and the buttons, in pixels of height. */
    virtual int getExtraHeight() const { return 0; }

    /** The widest line that a derived class wants; longer texts are broken. */
    virtual int getLeastTextWidth() const { return 0; }

    /** Hides the window and tells the caller, which may delete it. */
    virtual void closeWithButton (int buttonIndex);
    void close (int result);

    void buttonClicked (juce::Button*) override;

    /** Gives the keyboard's focus, once the window is laid out and shown. */
    void handleAsyncUpdate() override;

    juce::Rectangle<int> getExtraArea() const noexcept { return extraArea; }
    void setMessage (const juce::String&);

    Caller* caller;
    juce::TextButton* focusButton = nullptr;
    juce::TextButton* escapeButton = nullptr;

private:
    class FocusTraverser;

    void moveKeyboardFocusFrom (const std::vector<juce::Component*>& order, int distance);

    juce::String text;
    juce::Label message;
    ComponentRow buttonRow;
    juce::OwnedArray<juce::TextButton> buttons;
    std::vector<int> buttonCodes;
    juce::Rectangle<int> extraArea;
};

} // namespace K7R
