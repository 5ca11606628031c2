// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentSourcesComponent.h"

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int buttonMargin = 4, buttonHeight = 20, buttonPitch = 21, topMargin = 3;

/** Sources of other names have no icon. */
std::unique_ptr<juce::Drawable> iconOf (const ContentSource& source)
{
    if (source.getName() == "User")
        return Icons::create (Icons::Name::user);

    if (source.getName().contains ("Factory"))
        return Icons::create (Icons::Name::factory);

    return std::make_unique<juce::DrawableComposite>();
}

} // namespace

ContentSourcesComponent::ContentSourcesComponent (const BrowserContent& shared, std::function<void()> change,
                                                  std::function<void()> expand) :
    content (shared),
    onChange (std::move (change))
{
    setTitle ("Content");
    expandButton.onClick = std::move (expand);
    addAndMakeVisible (header);
    setExpanded (true);
}

void ContentSourcesComponent::addSource (ContentSource& source)
{
    auto* button = buttons.add (
        std::make_unique<TextButtonWithIcon> (source.getName(), *iconOf (source), juce::Colour (Icons::colour)));
    button->setTooltip ("Show the presets of \"" + source.getName() + "\"");
    button->onClick = [this, &source]
    {
        source.selected = ! source.selected;
        updateButtons (nullptr);
        onChange();
    };
    addAndMakeVisible (button);
    resized();
}

void ContentSourcesComponent::updateButtons (const ContentSource* onlyTicked)
{
    for (int i = 0; i < buttons.size(); ++i)
    {
        const auto* source = content.getSources()[static_cast<size_t> (i)];
        buttons[i]->setToggleState (onlyTicked != nullptr ? source == onlyTicked : source->selected,
                                    juce::dontSendNotification);
        buttons[i]->setEnabled (onlyTicked == nullptr);
    }
}

void ContentSourcesComponent::setExpanded (bool shouldBeExpanded)
{
    expanded = shouldBeExpanded;

    Icons::setUp (expandButton, expanded ? Icons::Name::arrowLeft : Icons::Name::arrowRight, "Expand / Collapse",
                  findColour (DefaultLookAndFeel::itemTextId));
    expandButton.setTooltip (expanded ? "Hide the names" : "Show the names");
}

void ContentSourcesComponent::resized()
{
    header.setBounds (getLocalBounds().removeFromTop (HeaderComponent::height));

    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setBounds (buttonMargin, HeaderComponent::height + topMargin + i * buttonPitch,
                               getWidth() - 2 * buttonMargin, buttonHeight);
}

void ContentSourcesComponent::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::panelBackgroundId));
}

} // namespace K7R
