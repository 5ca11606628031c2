// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/CategoryComponent.h"

#include "widgets/DefaultLookAndFeel.h"
#include "widgets/HardLabel.h"
#include "widgets/Icons.h"

namespace quilvane
{

namespace
{

constexpr int viewportTop = 23, itemHeight = 20, itemPitch = 21, itemMargin = 4;
constexpr int arrowSize = 16, addSize = 18, anyAllWidth = 40, anyAllHeight = 14;
constexpr int markerWidth = 4;

/** Small letters in a small button. */
class AnyAllButtonLF final : public DefaultLookAndFeel
{
public:
    juce::Font getTextButtonFont (juce::TextButton&, int) override { return getFont (10.5f); }
};

void setUpArrow (juce::DrawableButton& button, Icons::Name name, const juce::String& title)
{
    Icons::setUp (button, name, title, button.findColour (DefaultLookAndFeel::itemTextId));
    button.setWantsKeyboardFocus (true);
}

} // namespace

/** The column's header: the category's name and what is done to it as a whole. */
class CategoryComponent::CategoryButton final : public juce::Component
{
public:
    CategoryButton (CategoryComponent& owner, Listener& listener) : name ({}, owner.category)
    {
        name.setInterceptsMouseClicks (false, false);
        name.setColour (DefaultLookAndFeel::hardLabelTextId, findColour (DefaultLookAndFeel::itemTextId));
        name.setBorderSize ({});
        name.setFont (juce::Font (DefaultLookAndFeel::textHeight - 1.0f));
        addAndMakeVisible (name);

        setUpArrow (left, Icons::Name::arrowLeft, "Move " + owner.category + " to the left");
        setUpArrow (right, Icons::Name::arrowRight, "Move " + owner.category + " to the right");
        setUpArrow (add, Icons::Name::plus, "New tag in " + owner.category);

        left.onClick = [&] { listener.categoryMoveLeft (owner); };
        right.onClick = [&] { listener.categoryMoveRight (owner); };
        add.onClick = [&] { listener.categoryAddClicked (owner); };
        anyAll.onClick = [&] { listener.categoryAnyAllChanged (owner, anyAll.getToggleState()); };
        anyAll.setLookAndFeel (&*anyAllLook);
        anyAll.setTooltip ("ANY: presets with one of the ticked tags. ALL: presets with every one");
        anyAll.setTitle (owner.category + ", any or all");

        for (auto* button : { static_cast<juce::Component*> (&left), static_cast<juce::Component*> (&right),
                              static_cast<juce::Component*> (&add) })
            addChildComponent (button);

        addChildComponent (anyAll);
        anyAll.setVisible (owner.mode == Mode::filter);
    }

    ~CategoryButton() override { anyAll.setLookAndFeel (nullptr); }

    void resized() override
    {
        auto area = getLocalBounds().reduced (itemMargin, 0);

        if (left.isVisible())
            left.setBounds (area.removeFromLeft (arrowSize).withSizeKeepingCentre (arrowSize, arrowSize));

        if (right.isVisible())
            right.setBounds (area.removeFromRight (arrowSize).withSizeKeepingCentre (arrowSize, arrowSize));

        if (add.isVisible())
            add.setBounds (area.removeFromRight (addSize).withSizeKeepingCentre (addSize, addSize));

        if (anyAll.isVisible())
            anyAll.setBounds (area.removeFromRight (anyAllWidth).withSizeKeepingCentre (anyAllWidth, anyAllHeight));

        name.setBounds (area.withTrimmedLeft (2));
    }

    void paint (juce::Graphics& g) override { g.fillAll (findColour (DefaultLookAndFeel::categoryHeaderId)); }

    HardLabel name;
    juce::DrawableButton left { "Left", juce::DrawableButton::ImageFitted };
    juce::DrawableButton right { "Right", juce::DrawableButton::ImageFitted };
    juce::DrawableButton add { "Add", juce::DrawableButton::ImageFitted };

private:
    juce::SharedResourcePointer<AnyAllButtonLF> anyAllLook;

public:
    TextToggleButton anyAll { "ALL", "ANY" };
};

//==============================================================================
/** One tag. */
class CategoryComponent::ItemButton final : public juce::TextButton
{
public:
    ItemButton (CategoryComponent& column, int position) :
        juce::TextButton (column.items[static_cast<size_t> (position)].tag),
        owner (column),
        index (position)
    {
        setTitle (getButtonText());
        refresh();
    }

    void refresh()
    {
        const auto& item = getItem();
        const auto isMixed = item.stateCount == 3 && item.state == 1;
        setToggleState (item.state > 0 && ! isMixed, juce::dontSendNotification);
        setDescription (isMixed ? "on some of the selected presets" : item.state > 0 ? "on" : "off");
        setEnabled (item.stateCount > 1);
        repaint();
    }

    void clicked() override { owner.itemClicked (index); }

    void paintButton (juce::Graphics& g, bool isOver, bool isPressed) override
    {
        auto& look = getLookAndFeel();
        const auto& item = getItem();
        const auto isMixed = item.stateCount == 3 && item.state == 1;
        const auto isTicked = item.state > 0;

        auto ground = look.findColour (isMixed    ? static_cast<int> (DefaultLookAndFeel::itemMixedId)
                                       : isTicked ? static_cast<int> (DefaultLookAndFeel::accentId)
                                                  : static_cast<int> (DefaultLookAndFeel::itemBackgroundId));

        if (isEnabled() && (isOver || isPressed))
            ground = isPressed  ? ground.darker (0.15f)
                     : isTicked ? ground.brighter (0.12f)
                                : ground.interpolatedWith (look.findColour (DefaultLookAndFeel::accentBrightId), 0.35f);

        auto area = getLocalBounds();
        g.setColour (ground);
        g.fillRect (area);

        if (owner.mode == Mode::editor && item.state != item.initialState)
        {
            g.setColour (look.findColour (isTicked && ! isMixed ? static_cast<int> (DefaultLookAndFeel::accentDeepId)
                                                                : static_cast<int> (DefaultLookAndFeel::accentHotId)));
            g.fillRect (area.withWidth (markerWidth));
        }

        const auto textColour =
            isTicked ? juce::Colours::white : look.findColour (static_cast<int> (DefaultLookAndFeel::itemTextId));
        g.setColour (textColour.withMultipliedAlpha (isEnabled() ? 1.0f : 0.6f));
        g.setFont (look.getTextButtonFont (*this, itemHeight));
        g.drawFittedText (getButtonText(), area.reduced (2 * markerWidth, 0), juce::Justification::centredLeft, 1);

        if (hasKeyboardFocus (false))
            if (const auto* ours = dynamic_cast<DefaultLookAndFeel*> (&look))
                ours->drawFocusRing (g, area);
    }

private:
    const Item& getItem() const { return owner.items[static_cast<size_t> (index)]; }

    CategoryComponent& owner;
    const int index;
};

//==============================================================================
CategoryComponent::CategoryComponent (const juce::String& categoryName, Mode itsMode, Listener& toTell) :
    juce::Component (categoryName),
    category (categoryName),
    mode (itsMode),
    listener (toTell),
    header (std::make_unique<CategoryButton> (*this, toTell))
{
    setTitle (category);
    viewport.setViewedComponent (&content, false);
    viewport.setScrollBarsShown (true, false);
    addAndMakeVisible (*header);
    addAndMakeVisible (viewport);
}

CategoryComponent::~CategoryComponent() = default;

void CategoryComponent::setItems (std::vector<Item> newItems)
{
    const auto isSame = newItems.size() == items.size()
                        && std::equal (newItems.begin(), newItems.end(), items.begin(),
                                       [] (const auto& a, const auto& b) { return a.tag == b.tag; });

    items = std::move (newItems);

    if (! isSame)
    {
        buttons.clear();

        for (int i = 0; i < static_cast<int> (items.size()); ++i)
            content.addAndMakeVisible (buttons.add (std::make_unique<ItemButton> (*this, i)));

        resized();
    }

    for (auto* button : buttons)
        button->refresh();
}

void CategoryComponent::itemClicked (int index)
{
    auto& item = items[static_cast<size_t> (index)];

    if (item.stateCount < 2)
        return;

    item.state = (item.state + 1) % item.stateCount;
    buttons[index]->refresh();
    listener.categoryItemClicked (*this, index);
}

void CategoryComponent::setArrows (bool canMoveLeft, bool canMoveRight)
{
    header->left.setVisible (canMoveLeft);
    header->right.setVisible (canMoveRight);
    header->resized();
}

void CategoryComponent::setNeedsAll (bool needsAll)
{
    header->anyAll.setToggleState (needsAll, juce::dontSendNotification);
}

void CategoryComponent::setAddVisible (bool isVisible)
{
    header->add.setVisible (isVisible);
    header->resized();
}

void CategoryComponent::resized()
{
    header->setBounds (getLocalBounds().removeFromTop (headerHeight));
    viewport.setBounds (getLocalBounds().withTrimmedTop (viewportTop));

    const auto contentHeight = buttons.size() * itemPitch + itemMargin;
    const auto needsBar = contentHeight > viewport.getHeight();
    const auto width = viewport.getWidth() - (needsBar ? viewport.getScrollBarThickness() : 0);
    content.setSize (width, contentHeight);

    for (int i = 0; i < buttons.size(); ++i)
        buttons[i]->setBounds (itemMargin, itemMargin + i * itemPitch, width - 2 * itemMargin, itemHeight);
}

void CategoryComponent::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::panelBackgroundId));
    g.setColour (findColour (DefaultLookAndFeel::categoryLineId));
    g.fillRect (getLocalBounds().withTop (headerHeight).withHeight (1));
}

} // namespace quilvane
