// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include "support/ListenerArray.h"
#include "widgets/windows/ModalComponent.h"

namespace K7R
{

/** A menu inside the editor: a list of items in columns, from which the user takes one, or none. Sub-menus open
    beside their item. The choice is told when the menu is off the screen.

    Owned by the control that opens it. For the message thread.
*/
class PopupMenuEx : private juce::AsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** Once in each opening at most. */
        virtual void popupMenuItemChosen (PopupMenuEx&, int id) = 0;
    };

    /** How menus ask their look to be drawn. */
    struct LookAndFeelMethods
    {
        virtual ~LookAndFeelMethods() = default;

        struct ItemState
        {
            bool isHighlighted, isTicked, isEnabled, hasSubMenu;
        };

        virtual void drawMenuBackground (juce::Graphics&, juce::Rectangle<int> area) = 0;
        virtual void drawMenuItem (juce::Graphics&, juce::Rectangle<int> area, const juce::String& text, ItemState) = 0;
        virtual void drawMenuTitle (juce::Graphics&, juce::Rectangle<int> area, const juce::String& text) = 0;
        virtual juce::Font getMenuFont() = 0;
    };

    /** @param columns over which the items are spread, from the top down
        @param rows that each column has room for at least */
    explicit PopupMenuEx (int columns = 1, int rows = 1);
    ~PopupMenuEx() override;

    PopupMenuEx (const PopupMenuEx&) = delete;
    PopupMenuEx& operator= (const PopupMenuEx&) = delete;

    //==============================================================================
    /** Shown over the items, and read out; empty for none. */
    void setTitle (const juce::String& newTitle) { title = newTitle; }

    /** @param id a number above 0 that no other item has, in sub-menus neither */
    void addItem (int id, const juce::String& text, bool isEnabled = true);
    void addSubMenu (const juce::String& text, std::unique_ptr<PopupMenuEx>);
    void clear();

    /** Ticks one item, and clears the ticks of all others, through all sub-menus. An id that there isn't only
        clears. */
    void tick (int id);

    /** The item that is ticked, here or in a sub-menu; 0 for none. */
    int getTicked() const;

    /** Opens the menu under an area of a parent, or over it where there is more room.
        @param idToMark the item to tick */
    void show (juce::Component& parent, juce::Rectangle<int> area, int idToMark);
    void close();
    bool isOpen() const;

    /** The parent that show() was last given; null if it's gone. Tells the boxes that share a menu whose choice it
        was. */
    const juce::Component* getOpener() const noexcept { return opener; }

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

private:
    class ItemButton;
    class Window;
    class PopupMenuComponent;

    struct Item
    {
        juce::String text;
        int id = 0;
        bool isEnabled = true;
        bool isTicked = false;
        std::unique_ptr<PopupMenuEx> subMenu;
    };

    void choose (const Item&, juce::Component& button);
    void chooseId (int id);
    void showAt (juce::Component& parent, juce::Rectangle<int> area, bool beside);
    void handleAsyncUpdate() override;

    const int columns, rows;
    juce::String title;
    std::vector<std::unique_ptr<Item>> items;
    ListenerArray<Listener> listeners;
    std::unique_ptr<PopupMenuComponent> component;
    PopupMenuEx* parentMenu = nullptr;
    juce::Component::SafePointer<juce::Component> opener;
    int chosenId = 0;
};

} // namespace K7R
