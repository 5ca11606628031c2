// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/windows/WindowComponent.h"

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int largestCloseButton = 20;
constexpr int iconRoom = 27; // of the title bar's height

} // namespace

WindowComponent::WindowComponent (const juce::String& windowTitle) : title (windowTitle)
{
    Icons::setUp (closeButton, Icons::Name::close, "Close");
    closeButton.addListener (this);
    addAndMakeVisible (closeButton);

    juce::Component::setTitle (title);
    setWantsKeyboardFocus (true);
    readLook();
}

WindowComponent::~WindowComponent()
{
    closeButton.removeListener (this);
}

void WindowComponent::setTitle (const juce::String& newTitle)
{
    if (title == newTitle)
        return;

    title = newTitle;
    juce::Component::setTitle (newTitle);

    if (titleBarVisible)
        repaint (titleArea);
}

void WindowComponent::setTitleIcon (std::unique_ptr<juce::Drawable> icon)
{
    titleIcon = std::move (icon);

    if (titleIcon != nullptr)
    {
        titleIcon->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (*titleIcon);
    }

    resized();
    repaint();
}

void WindowComponent::setTitleBarVisible (bool shouldBeVisible)
{
    titleBarVisible = shouldBeVisible;
    resized();
    repaint();
}

void WindowComponent::setCloseButtonVisible (bool shouldBeVisible)
{
    closeButtonVisible = shouldBeVisible;
    resized();
    repaint();
}

void WindowComponent::setContentSize (int width, int height)
{
    const auto total = juce::Rectangle<int> (width + contentMargins.getLeftAndRight() + frameBorders.getLeftAndRight(),
                                             height + contentMargins.getTopAndBottom() + frameBorders.getTopAndBottom()
                                                 + (titleBarVisible ? titleBarHeight : 0));

    setSize (juce::jmax (minimumWidth, total.getWidth()), juce::jmax (minimumHeight, total.getHeight()));
}

void WindowComponent::resized()
{
    const auto take = [this] (int top, const juce::BorderSize<int>& border)
    {
        contentArea.removeFromTop (top);
        contentArea.removeFromBottom (border.getBottom());
        contentArea.removeFromLeft (border.getLeft());
        contentArea.removeFromRight (border.getRight());
    };

    contentArea = getLocalBounds();
    take (titleBarVisible ? titleBarHeight : frameBorders.getTop(), frameBorders);
    take (contentMargins.getTop(), contentMargins);

    closeButton.setVisible (titleBarVisible && closeButtonVisible);
    titleArea = titleTextArea = {};

    if (! titleBarVisible)
    {
        if (titleIcon != nullptr)
            titleIcon->setVisible (false);

        return;
    }

    titleArea = getLocalBounds().withHeight (titleBarHeight);
    titleTextArea = titleArea.withTrimmedLeft (titleIcon != nullptr ? titleBarHeight : 2 * titleInset)
                        .withTrimmedRight (closeButtonVisible ? titleBarHeight : 0);

    // So that letters of any height stand on whole pixels in the middle.
    const auto fontHeight = titleFont.getHeight();

    if (fontHeight * 2.0f > static_cast<float> (titleBarHeight) && titleBarHeight % 2 != 0)
        titleTextArea.removeFromBottom (1);

    if (static_cast<int> (fontHeight) % 2 != 0)
        titleTextArea.removeFromBottom (1);

    const auto side = juce::jmin (titleBarHeight, largestCloseButton);
    const auto y = titleBarHeight / 2 - side / 2;
    closeButton.setBounds (getWidth() - y - side - 1, y, side, side);

    if (titleIcon == nullptr)
        return;

    titleIcon->setVisible (true);
    titleIcon->setTransformToFit (
        titleArea.withWidth (titleBarHeight).reduced ((titleBarHeight - iconRoom) / 2).toFloat(),
        juce::RectanglePlacement::centred);
}

void WindowComponent::readLook()
{
    if (auto* look = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
        titleFont = look->getWindowTitleFont (*this);
}

void WindowComponent::lookAndFeelChanged()
{
    readLook();
    resized();
}

void WindowComponent::paint (juce::Graphics& g)
{
    if (auto* look = dynamic_cast<LookAndFeelMethods*> (&getLookAndFeel()))
    {
        look->drawWindowBackground (g, *this);
        look->drawWindowFrame (g, *this);
    }
}

void WindowComponent::open()
{
    showModal (Placement::centred);

    if (getWantsKeyboardFocus() && isShowing())
        grabKeyboardFocus();
}

void WindowComponent::dismiss()
{
    buttonClicked (&closeButton);
}

void WindowComponent::buttonClicked (juce::Button* button)
{
    if (button == &closeButton)
        hideModal();
}

bool WindowComponent::keyPressed (const juce::KeyPress& key)
{
    if (escapeCloses && key == juce::KeyPress::escapeKey)
    {
        dismiss();
        return true;
    }

    return false;
}

} // namespace K7R
