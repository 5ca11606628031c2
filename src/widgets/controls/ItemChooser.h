// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/ListenerArray.h"
#include "widgets/controls/ParameterController.h"
#include "widgets/windows/PopupMenuEx.h"

namespace K7R
{

/** What the boxes with a list share: items, of which one is selected or none, and the menu that a press opens under the
    box. With a parameter the box shows its value, an index, and writes the choice to it in a gesture of its own; only
    the first parameter counts. How a box looks is the derived classes' matter.

    The keyboard opens the menu with Space, Return, and the arrows up and down. For the message thread.
*/
class ItemChooser : public juce::Component,
                    public juce::TooltipClient,
                    public PopupMenuEx::Listener,
                    public ParameterController
{
public:
    /** @param sharedMenu a menu with the number `index + 1` for each item, which several boxes open and which outlives
                          them; null for a menu of the box's own */
    explicit ItemChooser (PopupMenuEx* sharedMenu = nullptr);
    ~ItemChooser() override;

    /** Takes other items. A selection that they don't reach any more becomes none. */
    void setItems (const juce::StringArray&);
    const juce::StringArray& getItems() const noexcept { return items; }

    /** Selects an item, or none by any index that there isn't. Tells nobody. */
    void setSelectedIndex (int index);

    /** -1 for none. */
    int getSelectedIndex() const noexcept { return selectedIndex; }

    /** Of the selected item; empty for none. */
    const juce::String& getText() const { return items[selectedIndex]; }

    /** Shown dimmed while nothing is selected. */
    void setTextForNone (const juce::String&);

    /** Opens the menu, if the box is enabled and has items. */
    void showMenu();

    /** A text that the box has no room for. */
    juce::String getTooltip() override;

    void mouseDown (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }
    void enablementChanged() override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

    void popupMenuItemChosen (PopupMenuEx&, int id) override;

protected:
    /** The user has chosen an item, which is selected and written by now. Called last, so that the box may go. */
    virtual void tellChoice() = 0;

    virtual juce::Font getFont() const = 0;

    /** The room of the text. */
    virtual juce::Rectangle<int> getTextArea() const = 0;

    /** Draws the item's text, shortened to its room. */
    void drawSelectedText (juce::Graphics&, juce::Colour) const;

    void updateFromParameter (Parameter&) override;
    bool acceptsParameter (const Parameter&) const override { return getNumParameters() == 0; }

    /** Takes the parameter's names as items. */
    void parameterAdded (Parameter&, size_t index) override;

private:
    std::unique_ptr<PopupMenuEx> ownMenu;
    PopupMenuEx& menu;
    juce::StringArray items;
    juce::String textForNone;
    int selectedIndex = -1;
};

/** The listeners of a class of boxes, who are told which box it was as the class that it is. */
template <typename Box>
class ItemChooserOf : public ItemChooser
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has chosen an item, maybe the one that was selected. */
        virtual void itemChosen (Box&) = 0;
    };

    using ItemChooser::ItemChooser;

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

protected:
    void tellChoice() final
    {
        listeners.call ([this] (auto& listener) { listener.itemChosen (static_cast<Box&> (*this)); });
    }

private:
    ListenerArray<Listener> listeners;
};

} // namespace K7R
