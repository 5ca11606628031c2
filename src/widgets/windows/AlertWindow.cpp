// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/AlertWindow.h"

#include <algorithm>
#include <cmath>

namespace K7R
{

namespace
{

constexpr int buttonHeight = 22;
constexpr int buttonSpacing = 6;
constexpr int roomAboveButtons = 20; // of which half lies between the text and them
constexpr int longestLine = 440;
constexpr int longestWord = 100; // that the breaking of a line may leave room for

int widthOfLine (const juce::Font& font, const juce::String& line)
{
    return static_cast<int> (std::ceil (font.getStringWidthFloat (line)));
}

} // namespace

/** Tab runs through the window's own order. */
class AlertWindow::FocusTraverser final : public juce::KeyboardFocusTraverser
{
public:
    FocusTraverser (std::vector<juce::Component*> components, juce::Component* keeping) :
        order (std::move (components)),
        kept (keeping)
    {
    }

    juce::Component* getDefaultComponent (juce::Component*) override
    {
        return kept != nullptr || order.empty() ? kept : order.front();
    }

    juce::Component* getNextComponent (juce::Component* current) override { return getStep (current, 1); }
    juce::Component* getPreviousComponent (juce::Component* current) override { return getStep (current, -1); }
    std::vector<juce::Component*> getAllComponents (juce::Component*) override { return order; }

private:
    juce::Component* getStep (juce::Component* current, int distance) const
    {
        const auto size = static_cast<int> (order.size());
        const auto found = static_cast<int> (std::find (order.begin(), order.end(), current) - order.begin());
        const auto target = found < size ? found + distance : distance > 0 ? 0 : size - 1;
        return juce::isPositiveAndBelow (target, size) ? order[static_cast<size_t> (target)] : nullptr;
    }

    const std::vector<juce::Component*> order;
    juce::Component* const kept;
};

//==============================================================================
AlertWindow::AlertWindow (Caller* toTell, const juce::String& windowTitle, const juce::String& question) :
    WindowComponent (windowTitle),
    caller (toTell),
    text (question),
    message ({}, question),
    buttonRow (ComponentRow::Direction::horizontal, ComponentRow::Alignment::end, buttonSpacing)
{
    escapeCloses = false;
    message.setJustificationType (juce::Justification::centredLeft);
    message.setBorderSize ({});
    message.setMinimumHorizontalScale (1.0f);
    message.setFont (getLookAndFeel().getLabelFont (message));
    setDescription (question);
    addAndMakeVisible (message);
    addAndMakeVisible (buttonRow);
}

AlertWindow::~AlertWindow()
{
    cancelPendingUpdate();
}

juce::String AlertWindow::getButtonText (int code)
{
    static const juce::StringArray texts { "Cancel",  "No",      "Yes",  "OK",          "Overwrite", "SaveAs",
                                           "Discard", "Replace", "Skip", "Replace All", "Skip All",  "Rename" };
    return texts[code];
}

juce::String AlertWindow::shorten (const juce::String& name)
{
    constexpr int longest = 52, end = 16;

    return name.length() <= longest ? name : name.substring (0, longest - end) + "..." + name.getLastCharacters (end);
}

juce::TextButton& AlertWindow::addButton (int code, bool isEscape, bool hasFocus)
{
    auto* button = buttons.add (std::make_unique<juce::TextButton> (getButtonText (code)));
    buttonCodes.push_back (code);
    button->setSize (getLookAndFeel().getTextButtonWidthToFitText (*button, buttonHeight), buttonHeight);
    button->addListener (this);
    buttonRow.add (*button);

    if (isEscape)
        escapeButton = button;

    if (hasFocus)
        focusButton = button;

    updateLayout();
    return *button;
}

void AlertWindow::setMessage (const juce::String& newText)
{
    text = newText;
    message.setText (newText, juce::dontSendNotification);
    setDescription (newText);
    updateLayout();
}

//==============================================================================
void AlertWindow::updateLayout()
{
    const auto& font = message.getFont();
    int width = getLeastTextWidth(), numLines = 0;

    for (const auto& line : juce::StringArray::fromLines (text))
    {
        const auto length = widthOfLine (font, line);
        width = juce::jmax (width, juce::jmin (length, longestLine));
        numLines += 1 + length / (longestLine - longestWord);
    }

    const auto textHeight = static_cast<int> (font.getHeight() * static_cast<float> (juce::jmax (1, numLines)));
    setContentSize (juce::jmax (width, buttonRow.getWidth()),
                    buttonRow.getHeight() + roomAboveButtons + textHeight + getExtraHeight());
    resized();
}

void AlertWindow::resized()
{
    WindowComponent::resized();

    auto area = getContentArea();
    buttonRow.setTopLeftPosition (area.getRight() - buttonRow.getWidth(), area.getBottom() - buttonRow.getHeight());
    area.removeFromBottom (buttonRow.getHeight());
    area.removeFromBottom (roomAboveButtons / 2);
    extraArea = area.removeFromBottom (getExtraHeight());
    message.setBounds (area);
}

void AlertWindow::lookAndFeelChanged()
{
    WindowComponent::lookAndFeelChanged();

    for (auto* button : buttons)
        button->setSize (getLookAndFeel().getTextButtonWidthToFitText (*button, buttonHeight), buttonHeight);

    message.setFont (getLookAndFeel().getLabelFont (message));
    updateLayout();
}

//==============================================================================
void AlertWindow::show (juce::Component& parent)
{
    updateLayout();
    parent.addChildComponent (this);
    open();
    triggerAsyncUpdate();
}

std::unique_ptr<AlertWindow> AlertWindow::open (Caller* caller, const juce::String& title, const juce::String& text,
                                                std::initializer_list<int> codes, juce::Component* parent)
{
    auto alert = std::make_unique<AlertWindow> (caller, title, text);

    for (const auto code : codes)
        alert->addButton (code, code == ok || code == no, code == ok || code == no);

    if (parent == nullptr)
        parent = dynamic_cast<juce::Component*> (caller);

    if (parent != nullptr)
        alert->show (*parent);

    return alert;
}

void AlertWindow::handleAsyncUpdate()
{
    if (! isShowing())
        return;

    if (focusButton != nullptr)
        focusButton->grabKeyboardFocus();
    else
        grabKeyboardFocus();
}

bool AlertWindow::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress::escapeKey && escapeButton != nullptr)
    {
        escapeButton->triggerClick();
        return true;
    }

    const auto order = getFocusOrder();

    if (key == juce::KeyPress::leftKey || key == juce::KeyPress::rightKey)
    {
        moveKeyboardFocusFrom (order, key == juce::KeyPress::rightKey ? 1 : -1);
        return true;
    }

    // Tab ends at the last one, and doesn't begin again.
    if (key.getKeyCode() != juce::KeyPress::tabKey || order.empty())
        return false;

    return (key.getModifiers().isShiftDown() ? order.front() : order.back())->hasKeyboardFocus (false);
}

void AlertWindow::moveKeyboardFocusFrom (const std::vector<juce::Component*>& order, int distance)
{
    const auto focused =
        std::find_if (order.begin(), order.end(), [] (const auto* c) { return c->hasKeyboardFocus (true); });

    if (focused == order.end())
        return;

    const auto target = (focused - order.begin()) + distance;

    if (target >= 0 && target < static_cast<std::ptrdiff_t> (order.size()))
        (*(order.begin() + target))->grabKeyboardFocus();
}

std::vector<juce::Component*> AlertWindow::getFocusOrder()
{
    return { buttons.begin(), buttons.end() };
}

std::unique_ptr<juce::ComponentTraverser> AlertWindow::createKeyboardFocusTraverser()
{
    return std::make_unique<FocusTraverser> (getFocusOrder(), getFocusKeptByPress());
}

//==============================================================================
void AlertWindow::buttonClicked (juce::Button* button)
{
    WindowComponent::buttonClicked (button);

    if (button == &getCloseButton())
        close (cancel);
    else if (const auto index = buttons.indexOf (static_cast<juce::TextButton*> (button)); index >= 0)
        closeWithButton (index);
}

void AlertWindow::closeWithButton (int buttonIndex)
{
    close (buttonCodes[static_cast<size_t> (buttonIndex)]);
}

void AlertWindow::close (int result)
{
    hideModal();

    if (caller != nullptr)
        caller->alertClosed (this, result);
}

} // namespace K7R
