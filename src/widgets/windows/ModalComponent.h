// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** A component that blocks the editor which it is shown in, by a cover over everything else. It is a child of the
    editor and no window of the desktop, so that hosts don't notice it, and nothing waits: the message loop of the
    host runs on, other instances stay usable, and answers come by callbacks.

    Made by whoever asks, who owns it. While it is shown it lies on its cover, and the cover on the Desktop. Both take
    themselves out when either ends. For the message thread.
*/
class ModalComponent : public juce::Component
{
public:
    /** The component that modal ones are shown on: an editor. */
    class Desktop
    {
    public:
        virtual ~Desktop() = default;

        /** In the desktop's coordinates: where centred windows are placed. */
        virtual juce::Rectangle<int> getModalArea() const = 0;
    };

    enum class Placement
    {
        centred,
        atPosition,
    };

    explicit ModalComponent (const juce::String& name = {});
    ~ModalComponent() override;

    /** Shows the component on the desktop that is found among its parents, over everything that is there; without
        a desktop nothing is shown.
        @param position the top left corner, in relativeTo, or in the desktop if that is null; a component that is on
                        screen already keeps its place */
    void showModal (Placement, juce::Point<int> position = {}, juce::Component* relativeTo = nullptr);

    /** Takes the component off the screen. The keyboard's focus goes back to where it was, or to what is on top now;
        never to what a cover lies over. */
    void hideModal();

    /** Whether it is on the screen, or was hidden with all of the editor. */
    bool isShown() const { return isVisible() && getParentComponent() == &cover && cover.isVisible(); }

    /** The same as its user's way of leaving it without an answer. Hides it, if nothing more is to be done. */
    virtual void dismiss() { hideModal(); }

    /** Dismisses all that are shown on a desktop, from the top down. They may be deleted by that. */
    static void dismissAll (juce::Component& desktop);

    /** The desktop that a component lies on, or is; null for none. */
    static juce::Component* findDesktop (juce::Component& from);

    /** Whether a component is, or lies on, the cover of a modal one. */
    static bool isOnCover (const juce::Component&);

    void parentHierarchyChanged() override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;
    std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;

protected:
    /** Returns who has the focus on this cover while a mouse button is down; else null. A traverser gives it as the
        default component, so that a press on what takes no focus leaves it where it is. */
    juce::Component* getFocusKeptByPress() const;

    /** Whether the cover dims what it covers; a derived class may paint it in another way and return false. */
    virtual bool paintCover (juce::Graphics&) { return true; }

    /** A click beside the component. */
    virtual void coverClicked() {}

private:
    /** Lies under the component and over all else, and takes what is meant for that. The keyboard stays inside. */
    class CoveringWindow final : public juce::Component
    {
    public:
        explicit CoveringWindow (ModalComponent& modal);

        void paint (juce::Graphics&) override;
        void mouseDown (const juce::MouseEvent&) override { owner.coverClicked(); }
        void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override {}
        void parentSizeChanged() override { owner.place(); }

        ModalComponent& owner;
    };

    /** Takes the keyboard again by a press inside, wherever it went meanwhile. */
    struct PressWatcher final : juce::MouseListener
    {
        explicit PressWatcher (ModalComponent& modal) : owner (modal) {}

        void mouseDown (const juce::MouseEvent&) override { owner.keepFocus(); }

        ModalComponent& owner;
    };

    void place();
    void keepFocus();
    void returnFocus();

    Placement placement = Placement::centred;
    juce::Point<int> position;
    juce::Component::SafePointer<juce::Component> focusBefore;
    CoveringWindow cover { *this };
    PressWatcher pressWatcher { *this };
};

} // namespace K7R
