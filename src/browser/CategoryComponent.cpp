// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/CategoryComponent.h"

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/HardLabel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int listTop = 23, itemHeight = 20, itemPitch = 21, itemMargin = 4;
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
/** A tag that is seen. */
class CategoryComponent::ItemButton final : public juce::TextButton
{
public:
    explicit ItemButton (CategoryComponent& column) : owner (column) { setMouseClickGrabsKeyboardFocus (false); }

    void showItem (int newIndex)
    {
        index = newIndex;
        refresh();
    }

    void refresh()
    {
        const auto& item = getItem();
        setButtonText (item.tag);
        setTitle (item.tag);
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
    int index = 0;
};

//==============================================================================
/** The tags of a column. Those that are seen have buttons, so that a thousand cost no more than a page. */
class CategoryComponent::TagList final : public juce::Viewport
{
public:
    explicit TagList (CategoryComponent& column) : owner (column)
    {
        setViewedComponent (&places, false);
        setScrollBarsShown (true, false);
    }

    ~TagList() override { setViewedComponent (nullptr, false); }

    /** The column has other tags, or another size. */
    void layOut()
    {
        const auto contentHeight = getNumItems() * itemPitch + itemMargin;
        const auto needsBar = contentHeight > getHeight();
        places.setSize (getWidth() - (needsBar ? getScrollBarThickness() : 0), contentHeight);

        // Buttons take turns, so that each stands for the same tag as long as that is seen.
        for (auto numSeen = static_cast<size_t> (getHeight() / itemPitch) + 2; buttons.size() < numSeen;)
        {
            buttons.push_back (std::make_unique<ItemButton> (owner));
            places.addChildComponent (*buttons.back());
        }

        update();
    }

    /** The tags have other states, or others are seen. */
    void update()
    {
        const auto area = getViewArea();
        const auto first = juce::jmax (0, (area.getY() - itemMargin) / itemPitch);
        const auto last = juce::jmin (getNumItems(), (area.getBottom() - itemMargin) / itemPitch + 1) - 1;
        const auto number = static_cast<int> (buttons.size());

        for (int i = 0; i < number; ++i)
        {
            auto& button = *buttons[static_cast<size_t> (i)];
            const auto index = first + (i - first % number + number) % number;

            if (index <= last)
            {
                button.setBounds (itemMargin, itemMargin + index * itemPitch, places.getWidth() - 2 * itemMargin,
                                  itemHeight);
                button.showItem (index);
            }

            button.setVisible (index <= last);
        }
    }

    void resized() override
    {
        juce::Viewport::resized();
        layOut();
    }

    void visibleAreaChanged (const juce::Rectangle<int>&) override { update(); }

    void mouseWheelMove (const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel) override
    {
        // A list that has come to its end doesn't move the columns.
        if (! useMouseWheelMoveIfNeeded (e, wheel) && (wheel.deltaX != 0.0f || ! getVerticalScrollBar().isVisible()))
            juce::Component::mouseWheelMove (e, wheel); // NOLINT(bugprone-parent-virtual-call): the viewport has tried
    }

private:
    int getNumItems() const { return static_cast<int> (owner.items.size()); }

    CategoryComponent& owner;
    juce::Component places;
    std::vector<std::unique_ptr<ItemButton>> buttons;
};

//==============================================================================
CategoryComponent::CategoryComponent (const juce::String& categoryName, Mode itsMode, Listener& toTell) :
    juce::Component (categoryName),
    category (categoryName),
    mode (itsMode),
    listener (toTell),
    header (std::make_unique<CategoryButton> (*this, toTell)),
    list (std::make_unique<TagList> (*this))
{
    setTitle (category);
    addAndMakeVisible (*header);
    addAndMakeVisible (*list);
}

CategoryComponent::~CategoryComponent() = default;

void CategoryComponent::setItems (std::vector<Item> newItems)
{
    items = std::move (newItems);
    list->layOut();
}

void CategoryComponent::itemClicked (int index)
{
    auto& item = items[static_cast<size_t> (index)];

    if (item.stateCount < 2)
        return;

    item.state = (item.state + 1) % item.stateCount;
    list->update();
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
    list->setBounds (getLocalBounds().withTrimmedTop (listTop));
}

void CategoryComponent::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::panelBackgroundId));
    g.setColour (findColour (DefaultLookAndFeel::categoryLineId));
    g.fillRect (getLocalBounds().withTop (headerHeight).withHeight (1));
}

} // namespace K7R
