// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/PopupMenuEx.h"

#include <cmath>

namespace K7R
{

namespace
{

constexpr int rowHeight = 20, titleHeight = 22, border = 3;
constexpr int roomAroundText = 46; // the tick before it, the arrow behind it
constexpr int leastColumnWidth = 60;

} // namespace

class PopupMenuEx::ItemButton final : public juce::Button
{
public:
    ItemButton (PopupMenuEx& owner, const Item& shown) : juce::Button (shown.text), menu (owner), item (shown)
    {
        setTitle (shown.text);
        setEnabled (shown.isEnabled);
        setToggleState (shown.isTicked, juce::dontSendNotification);
        setTriggeredOnMouseDown (false);
    }

    void clicked() override { menu.choose (item, *this); }
    bool keyPressed (const juce::KeyPress&) override;

    void mouseEnter (const juce::MouseEvent& e) override
    {
        juce::Button::mouseEnter (e);

        if (isEnabled() && isShowing())
            grabKeyboardFocus();
    }

    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

    void paintButton (juce::Graphics& g, bool isOver, bool) override
    {
        if (auto* look = dynamic_cast<PopupMenuEx::LookAndFeelMethods*> (&getLookAndFeel()))
            look->drawMenuItem (
                g, getLocalBounds(), item.text,
                { isOver || hasKeyboardFocus (false), item.isTicked, isEnabled(), item.subMenu != nullptr });
    }

    bool opensSubMenu() const { return item.subMenu != nullptr; }

    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override
    {
        const auto actions =
            juce::AccessibilityActions().addAction (juce::AccessibilityActionType::press, [this] { triggerClick(); });
        return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::menuItem, actions);
    }

private:
    PopupMenuEx& menu;
    const Item& item;
};

//==============================================================================
/** The items in their columns. */
class PopupMenuEx::Window final : public juce::Component
{
public:
    explicit Window (PopupMenuEx& owner) : title (owner.title)
    {
        auto width = leastColumnWidth;
        const auto numItems = static_cast<int> (owner.items.size());
        numRows = juce::jmax (owner.rows, (numItems + owner.columns - 1) / owner.columns);

        auto* look = dynamic_cast<PopupMenuEx::LookAndFeelMethods*> (&getLookAndFeel());
        const auto font = look != nullptr ? look->getMenuFont() : juce::Font();

        for (const auto& item : owner.items)
        {
            auto* button = buttons.add (std::make_unique<ItemButton> (owner, *item));
            width = juce::jmax (width,
                                static_cast<int> (std::ceil (font.getStringWidthFloat (item->text))) + roomAroundText);
            addAndMakeVisible (button);
        }

        for (int i = 0; i < buttons.size(); ++i)
            buttons[i]->setBounds (border + (i / numRows) * width, getTop() + (i % numRows) * rowHeight, width,
                                   rowHeight);

        setSize (2 * border + owner.columns * width, getTop() + numRows * rowHeight + border);
    }

    /** The item that the keyboard begins with. */
    juce::Component* getFirstFocus() const
    {
        for (auto* button : buttons)
            if (button->getToggleState() && button->isEnabled())
                return button;

        return findEnabled (-1, 1);
    }

    /** Moves the focus by so many items, to the next that is enabled. */
    void moveFocus (int distance)
    {
        int index = -1;

        for (int i = 0; i < buttons.size(); ++i)
            if (buttons[i]->hasKeyboardFocus (false))
                index = i;

        if (auto* next = index < 0 ? getFirstFocus() : findEnabled (index, distance))
            next->grabKeyboardFocus();
    }

    ItemButton* getFocused() const
    {
        for (auto* button : buttons)
            if (button->hasKeyboardFocus (false))
                return button;

        return nullptr;
    }

    int getNumRows() const noexcept { return numRows; }

    void paint (juce::Graphics& g) override
    {
        auto* look = dynamic_cast<PopupMenuEx::LookAndFeelMethods*> (&getLookAndFeel());

        if (look != nullptr && title.isNotEmpty())
            look->drawMenuTitle (g, getLocalBounds().reduced (border).withHeight (titleHeight), title);
    }

private:
    int getTop() const { return border + (title.isNotEmpty() ? titleHeight : 0); }

    juce::Component* findEnabled (int index, int distance) const
    {
        for (auto i = index + distance; juce::isPositiveAndBelow (i, buttons.size()); i += distance)
            if (buttons[i]->isEnabled())
                return buttons[i];

        return nullptr;
    }

    const juce::String title;
    juce::OwnedArray<ItemButton> buttons;
    int numRows = 1;
};

//==============================================================================
class PopupMenuEx::PopupMenuComponent final : public ModalComponent
{
public:
    explicit PopupMenuComponent (PopupMenuEx& owner) : ModalComponent (owner.title), menu (owner), window (owner)
    {
        juce::Component::setTitle (owner.title.isNotEmpty() ? owner.title : "Menu");
        viewport.setViewedComponent (&window, false);
        viewport.setScrollBarsShown (true, false);
        addAndMakeVisible (viewport);
        setFocusContainerType (FocusContainerType::keyboardFocusContainer);
        setWantsKeyboardFocus (true);
    }

    /** Takes a size that the desktop has room for, and opens beside the area. */
    void openAt (juce::Component& parent, juce::Rectangle<int> area, bool beside)
    {
        auto* desktop = findDesktop (parent);

        if (desktop == nullptr)
            return;

        const auto limits = desktop->getLocalBounds();
        const auto place = desktop->getLocalArea (&parent, area);
        const auto isTooHigh = window.getHeight() > limits.getHeight();

        setSize (juce::jmin (limits.getWidth(), window.getWidth() + (isTooHigh ? viewport.getScrollBarThickness() : 0)),
                 juce::jmin (limits.getHeight(), window.getHeight()));

        auto x = beside ? place.getRight() : place.getX();
        auto y = beside ? place.getY() - border : place.getBottom();

        if (beside && x + getWidth() > limits.getRight())
            x = place.getX() - getWidth();

        if (! beside && y + getHeight() > limits.getBottom() && place.getY() >= getHeight())
            y = place.getY() - getHeight();

        const auto corner = getLocalBounds().withPosition (x, y).constrainedWithin (limits).getPosition();

        desktop->addChildComponent (this);
        showModal (Placement::atPosition, corner, desktop);

        if (isShowing())
        {
            if (auto* first = window.getFirstFocus())
                first->grabKeyboardFocus();
            else
                grabKeyboardFocus();
        }
    }

    void resized() override { viewport.setBounds (getLocalBounds()); }

    void paint (juce::Graphics& g) override
    {
        if (auto* look = dynamic_cast<PopupMenuEx::LookAndFeelMethods*> (&getLookAndFeel()))
            look->drawMenuBackground (g, getLocalBounds());
    }

    void dismiss() override { menu.close(); }

    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override
    {
        return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::popupMenu);
    }

    bool keyPressed (const juce::KeyPress& key) override
    {
        if (key == juce::KeyPress::escapeKey || (key == juce::KeyPress::leftKey && menu.parentMenu != nullptr))
            dismiss();
        else if (key == juce::KeyPress::rightKey && window.getFocused() != nullptr
                 && window.getFocused()->opensSubMenu())
            window.getFocused()->triggerClick();
        else if (key == juce::KeyPress::downKey || key == juce::KeyPress::upKey)
            window.moveFocus (key == juce::KeyPress::downKey ? 1 : -1);
        else if (key == juce::KeyPress::rightKey || key == juce::KeyPress::leftKey)
            window.moveFocus (key == juce::KeyPress::rightKey ? window.getNumRows() : -window.getNumRows());
        else
            return false;

        showFocused();
        return true;
    }

protected:
    bool paintCover (juce::Graphics&) override { return false; }
    void coverClicked() override
    {
        // A click beside is one beside all of them.
        auto* root = &menu;

        while (root->parentMenu != nullptr)
            root = root->parentMenu;

        root->close();
    }

private:
    void showFocused()
    {
        const auto* item = window.getFocused();

        if (item == nullptr)
            return;

        const auto seen = viewport.getViewArea();

        if (item->getY() < seen.getY())
            viewport.setViewPosition (0, item->getY());
        else if (item->getBottom() > seen.getBottom())
            viewport.setViewPosition (0, item->getBottom() - seen.getHeight());
    }

    PopupMenuEx& menu;
    Window window;
    juce::Viewport viewport;
};

bool PopupMenuEx::ItemButton::keyPressed (const juce::KeyPress& key)
{
    // Before the viewport takes the arrows for scrolling.
    return menu.component->keyPressed (key) || juce::Button::keyPressed (key);
}

//==============================================================================
PopupMenuEx::PopupMenuEx (int numColumns, int numRows) :
    columns (juce::jmax (1, numColumns)),
    rows (juce::jmax (1, numRows))
{
}

PopupMenuEx::~PopupMenuEx()
{
    cancelPendingUpdate();
    component.reset();
}

void PopupMenuEx::addItem (int id, const juce::String& text, bool isEnabled)
{
    items.push_back (std::make_unique<Item> (Item { text, id, isEnabled, false, nullptr }));
}

void PopupMenuEx::addSubMenu (const juce::String& text, std::unique_ptr<PopupMenuEx> menu)
{
    menu->parentMenu = this;
    items.push_back (std::make_unique<Item> (Item { text, 0, true, false, std::move (menu) }));
}

void PopupMenuEx::clear()
{
    close();
    component.reset();
    items.clear();
}

void PopupMenuEx::tick (int id)
{
    for (auto& item : items)
    {
        if (item->subMenu != nullptr)
            item->subMenu->tick (id);

        item->isTicked = item->subMenu != nullptr ? item->subMenu->getTicked() != 0 : item->id == id;
    }
}

int PopupMenuEx::getTicked() const
{
    for (const auto& item : items)
        if (item->isTicked)
            return item->subMenu != nullptr ? item->subMenu->getTicked() : item->id;

    return 0;
}

void PopupMenuEx::show (juce::Component& parent, juce::Rectangle<int> area, int idToMark)
{
    opener = &parent;
    tick (idToMark);
    showAt (parent, area, false);
}

void PopupMenuEx::showAt (juce::Component& parent, juce::Rectangle<int> area, bool beside)
{
    cancelPendingUpdate();
    chosenId = 0;
    component = std::make_unique<PopupMenuComponent> (*this);
    component->openAt (parent, area, beside);
}

void PopupMenuEx::close()
{
    for (auto& item : items)
        if (item->subMenu != nullptr)
            item->subMenu->close();

    if (component != nullptr)
        component->hideModal();
}

bool PopupMenuEx::isOpen() const
{
    return component != nullptr && component->isShown();
}

void PopupMenuEx::choose (const Item& item, juce::Component& button)
{
    if (item.subMenu != nullptr)
        item.subMenu->showAt (button, button.getLocalBounds(), true);
    else
        chooseId (item.id);
}

void PopupMenuEx::chooseId (int id)
{
    if (parentMenu != nullptr)
        return parentMenu->chooseId (id);

    close();
    chosenId = id;
    triggerAsyncUpdate();
}

void PopupMenuEx::handleAsyncUpdate()
{
    const auto id = std::exchange (chosenId, 0);
    tick (id);
    listeners.call ([&] (auto& listener) { listener.popupMenuItemChosen (*this, id); });
}

} // namespace K7R
