// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ItemChooser.h"

#include "widgets/controls/ChoiceAccessibility.h"

#include "parameters/IntParameter.h"

namespace K7R
{

namespace
{

constexpr float dimmed = 0.5f;

} // namespace

ItemChooser::ItemChooser (PopupMenuEx* sharedMenu) :
    ownMenu (sharedMenu == nullptr ? std::make_unique<PopupMenuEx>() : nullptr),
    menu (sharedMenu != nullptr ? *sharedMenu : *ownMenu)
{
    menu.addListener (this);
    setWantsKeyboardFocus (true);
    setMouseClickGrabsKeyboardFocus (false);
    setRepaintsOnMouseActivity (true);
}

ItemChooser::~ItemChooser()
{
    menu.removeListener (this);

    if (menu.getOpener() == this)
        menu.close();
}

void ItemChooser::setItems (const juce::StringArray& newItems)
{
    if (items == newItems)
        return;

    items = newItems;

    if (ownMenu != nullptr)
    {
        ownMenu->clear();

        for (int i = 0; i < items.size(); ++i)
            ownMenu->addItem (i + 1, items[i]);
    }

    setSelectedIndex (selectedIndex);
    repaint();
}

void ItemChooser::setSelectedIndex (int index)
{
    const auto newIndex = juce::isPositiveAndBelow (index, items.size()) ? index : -1;

    if (std::exchange (selectedIndex, newIndex) == newIndex)
        return;

    if (auto* handler = getAccessibilityHandler())
        handler->notifyAccessibilityEvent (juce::AccessibilityEvent::valueChanged);

    repaint();
}

void ItemChooser::setTextForNone (const juce::String& text)
{
    textForNone = text;
    repaint();
}

//==============================================================================
void ItemChooser::showMenu()
{
    if (isEnabled() && ! items.isEmpty())
        menu.show (*this, getLocalBounds(), selectedIndex + 1);
}

void ItemChooser::popupMenuItemChosen (PopupMenuEx&, int id)
{
    if (menu.getOpener() != this || ! juce::isPositiveAndBelow (id - 1, items.size()))
        return;

    setSelectedIndex (id - 1);

    if (auto* parameter = getParameter (0))
        setInGesture (*parameter, selectedIndex);

    tellChoice();
}

void ItemChooser::parameterAdded (Parameter& parameter, size_t)
{
    if (const auto* list = dynamic_cast<const EnumParameter*> (&parameter))
        setItems (list->getEnumNames());
}

void ItemChooser::updateFromParameter (Parameter& parameter)
{
    setSelectedIndex (parameter.getInt());
}

//==============================================================================
void ItemChooser::mouseDown (const juce::MouseEvent& e)
{
    if (e.mods.isLeftButtonDown())
        showMenu();
}

bool ItemChooser::keyPressed (const juce::KeyPress& key)
{
    for (const auto code :
         { juce::KeyPress::spaceKey, juce::KeyPress::returnKey, juce::KeyPress::downKey, juce::KeyPress::upKey })
        if (key == juce::KeyPress (code))
        {
            showMenu();
            return true;
        }

    return false;
}

void ItemChooser::enablementChanged()
{
    if (! isEnabled() && menu.getOpener() == this)
        menu.close();

    repaint();
}

juce::String ItemChooser::getTooltip()
{
    const auto isShortened = getFont().getStringWidthFloat (getText()) > static_cast<float> (getTextArea().getWidth());
    return isShortened ? getText() : juce::String();
}

void ItemChooser::drawSelectedText (juce::Graphics& g, juce::Colour colour) const
{
    g.setColour (colour.withMultipliedAlpha (isEnabled() && selectedIndex >= 0 ? 1.0f : dimmed));
    g.setFont (getFont());
    g.drawText (selectedIndex >= 0 ? getText() : textForNone, getTextArea(), juce::Justification::centredLeft);
}

std::unique_ptr<juce::AccessibilityHandler> ItemChooser::createAccessibilityHandler()
{
    return createChoiceAccessibility (
        *this, [this] { return selectedIndex >= 0 ? getText() : textForNone; }, [this] { showMenu(); });
}

} // namespace K7R
