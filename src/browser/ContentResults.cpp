// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentResults.h"

#include <algorithm>

#include "widgets/DefaultLookAndFeel.h"
#include "widgets/Icons.h"

namespace quilvane
{

namespace
{

constexpr int rowHeight = 20, narrowColumn = 160, wideColumn = 320, textMargin = 3;
constexpr int longestName = 150; // characters, of which every file system has room for
constexpr float fadeOfUnticked = 0.7692308f;

juce::Colour faded (juce::Colour colour)
{
    const auto fade = [] (juce::uint8 channel)
    { return static_cast<juce::uint8> (255.0f - static_cast<float> (255 - channel) * fadeOfUnticked); };
    return { fade (colour.getRed()), fade (colour.getGreen()), fade (colour.getBlue()) };
}

} // namespace

/** One place of the grid that is seen, with the item that stands there now. */
class ContentResults::ResultButton final : public juce::Button
{
public:
    explicit ResultButton (ContentResults& results) : juce::Button ({}), owner (results)
    {
        setWantsKeyboardFocus (false);
        setMouseClickGrabsKeyboardFocus (false);
        setTriggeredOnMouseDown (true);
    }

    void showResult (int newIndex)
    {
        index = newIndex;
        const auto& result = getResult();
        setName (result.item->name);
        setTitle (result.item->name);
        setToggleState (result.isSelected, juce::dontSendNotification);
        setDescription (result.item->source->getName());
        repaint();
    }

    void clicked (const juce::ModifierKeys& modifiers) override { owner.clicked (index, modifiers); }

    void mouseDoubleClick (const juce::MouseEvent& e) override { owner.doubleClicked (index, e.mods); }

    void paintButton (juce::Graphics& g, bool isOver, bool) override
    {
        const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel());

        if (look == nullptr || ! juce::isPositiveAndBelow (index, owner.list.size()))
            return;

        const auto& [item, isSelected] = getResult();
        const auto colour = look->findColour (DefaultLookAndFeel::resultTextId);

        if (isSelected || isOver)
        {
            const auto ground = look->findColour (DefaultLookAndFeel::accentId);
            g.fillAll (isSelected ? ground.brighter (isOver ? 0.1f : 0.0f) : ground.withAlpha (0.18f));
        }

        g.setColour (isSelected ? colour : faded (colour));
        g.setFont (look->getResultFont (item->source->isReadOnly()));
        g.drawFittedText (item->name, getLocalBounds().reduced (textMargin, 0), juce::Justification::centredLeft, 1,
                          0.8f);

        if (index == owner.list.getCurrentIndex() && owner.hasKeyboardFocus (true))
            look->drawFocusRing (g, getLocalBounds());
    }

private:
    const ResultList::Result& getResult() const { return owner.list.getResults()[static_cast<size_t> (index)]; }

    ContentResults& owner;
    int index = 0;
};

/** All places; components for those that are seen. */
class ContentResults::Grid final : public juce::Component
{
public:
    explicit Grid (ContentResults& results) : owner (results) { setInterceptsMouseClicks (false, true); }

    void setVisibleArea (juce::Rectangle<int> newArea)
    {
        area = newArea;
        update();
    }

    void update()
    {
        size_t used = 0;

        if (owner.rows > 0 && owner.columnWidth > 0)
        {
            const auto firstColumn = juce::jmax (0, (area.getX() - left()) / owner.columnWidth);
            const auto first = firstColumn * owner.rows;
            const auto end =
                juce::jmin (owner.list.size(), ((area.getRight() - left()) / owner.columnWidth + 1) * owner.rows);

            for (auto index = first; index < end; ++index, ++used)
            {
                if (used == buttons.size())
                {
                    buttons.push_back (std::make_unique<ResultButton> (owner));
                    addChildComponent (*buttons.back());
                }

                auto& button = *buttons[used];
                button.setBounds (placeOf (index));
                button.showResult (index);
                button.setVisible (true);
            }
        }

        for (; used < buttons.size(); ++used)
            buttons[used]->setVisible (false);
    }

    juce::Rectangle<int> placeOf (int index) const
    {
        return { left() + index / owner.rows * owner.columnWidth, top() + index % owner.rows * rowHeight,
                 owner.columnWidth, rowHeight };
    }

    /** What the rows leave of the height, and the columns of the width, stands in halves on both sides. */
    juce::Point<int> remainder;

private:
    int left() const { return remainder.x / 2; }
    int top() const { return remainder.y / 2; }

    ContentResults& owner;
    juce::Rectangle<int> area;
    std::vector<std::unique_ptr<ResultButton>> buttons;
};

class ContentResults::View final : public juce::Viewport
{
public:
    explicit View (Grid& content) : grid (content)
    {
        setViewedComponent (&content, false);
        setScrollBarsShown (false, true);
        setWantsKeyboardFocus (false);
        getHorizontalScrollBar().setTitle ("Results");
    }

    void visibleAreaChanged (const juce::Rectangle<int>& area) override { grid.setVisibleArea (area); }

    void mouseWheelMove (const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel) override
    {
        // The list only goes sideways, so the wheel does too.
        auto sideways = wheel;

        if (sideways.deltaX == 0.0f)
            std::swap (sideways.deltaX, sideways.deltaY);

        juce::Viewport::mouseWheelMove (e, sideways);
    }

private:
    Grid& grid;
};

//==============================================================================
ContentResults::ContentResults (BrowserContent& shared, Listener& toTell) :
    content (shared),
    listener (toTell),
    widestColumn (narrowColumn),
    grid (std::make_unique<Grid> (*this)),
    view (std::make_unique<View> (*grid))
{
    setTitle ("Results");
    setWantsKeyboardFocus (true);
    addAndMakeVisible (header);
    addAndMakeVisible (*view);

    setExpanded (false);
    expandButton.onClick = [this] { listener.resultsExpandClicked(); };
    Icons::setUp (viewButton, Icons::Name::list, "Change view", findColour (DefaultLookAndFeel::itemTextId));
    viewButton.setTooltip ("Wide or narrow columns");
    viewButton.onClick = [this]
    {
        widestColumn = widestColumn == narrowColumn ? wideColumn : narrowColumn;
        layOut();
        scrollToCurrent();
    };

    nameEditor.setTitle ("New name");
    nameEditor.setInputRestrictions (longestName);
    nameEditor.addListener (this);
    grid->addChildComponent (nameEditor);
}

ContentResults::~ContentResults()
{
    cancelPendingUpdate();
    nameEditor.removeListener (this);
}

void ContentResults::setExpanded (bool isExpanded)
{
    Icons::setUp (expandButton, isExpanded ? Icons::Name::arrowRight : Icons::Name::arrowLeft, "Expand / Collapse",
                  findColour (DefaultLookAndFeel::itemTextId));
    expandButton.setTooltip (isExpanded ? "Show the filters" : "Hide the filters");
}

//==============================================================================
void ContentResults::rebuild()
{
    triggerAsyncUpdate();
}

void ContentResults::flush()
{
    handleUpdateNowIfNeeded();
}

void ContentResults::releaseItems()
{
    hideRenaming();
    list.releaseItems();
    grid->update();
}

void ContentResults::handleAsyncUpdate()
{
    std::vector<ContentItem*> shown;

    for (auto* item : content.getItems())
        if (! item->hidden)
            shown.push_back (item);

    show (shown);
}

void ContentResults::show (const std::vector<ContentItem*>& items)
{
    cancelPendingUpdate();
    hideRenaming();
    list.setItems (items);
    layOut();
    listener.selectionChanged();
}

void ContentResults::setMultiSelect (bool isOn)
{
    if (! isOn && list.getNumSelected() > 1)
    {
        list.multiSelect = false;
        list.select (list.getCurrentIndex(), ResultList::How::single);
        grid->update();
    }

    list.multiSelect = isOn;
}

void ContentResults::listChanged()
{
    grid->update();
    listener.selectionChanged();
}

void ContentResults::selectItem (ContentItem* item, bool notify)
{
    if (item == nullptr)
    {
        list.clearSelection();
        return listChanged();
    }

    select (list.indexOf (item), ResultList::How::single, notify);
}

void ContentResults::selectKeys (const std::vector<BrowserContent::Key>& keys)
{
    list.selectKeys (keys);
    scrollToCurrent();
    listChanged();
}

void ContentResults::selectAdjacent (int distance)
{
    flush();

    if (const auto index = list.getStep (distance); index >= 0)
        select (index, ResultList::How::single, true);
}

void ContentResults::select (int index, ResultList::How how, bool notify)
{
    if (! juce::isPositiveAndBelow (index, list.size()))
        return;

    list.select (index, how);
    scrollToCurrent();
    grid->update();

    // What is loaded may change what is shown here.
    if (auto* item = list.getCurrentItem(); notify && item != nullptr)
        listener.itemClicked (*item);
    else
        listener.selectionChanged();
}

void ContentResults::clicked (int index, const juce::ModifierKeys& modifiers)
{
    if (isShowing())
        grabKeyboardFocus();

    select (index,
            modifiers.isShiftDown()     ? ResultList::How::range
            : modifiers.isCommandDown() ? ResultList::How::toggle
                                        : ResultList::How::single,
            true);
}

void ContentResults::doubleClicked (int index, const juce::ModifierKeys& modifiers)
{
    if (modifiers.isCommandDown() || ! juce::isPositiveAndBelow (index, list.size()))
        return;

    if (editMode)
        startRenaming();
    else
        listener.itemDoubleClicked (*list.getResults()[static_cast<size_t> (index)].item);
}

//==============================================================================
void ContentResults::moveBy (int distance, const juce::ModifierKeys& modifiers)
{
    const auto current = list.getCurrentIndex();
    auto target = list.getStep (distance);

    if (target < 0)
        return;

    if (current >= 0 && rows > 0 && std::abs (distance) == rows)
    {
        const auto lastColumn = (list.size() - 1) / rows;

        if ((distance < 0 && current < rows) || (distance > 0 && current / rows == lastColumn))
            return;
    }

    if (target == current)
        return;

    select (target, modifiers.isShiftDown() ? ResultList::How::range : ResultList::How::single, true);
}

bool ContentResults::keyPressed (const juce::KeyPress& key)
{
    const auto code = key.getKeyCode();
    const auto& modifiers = key.getModifiers();

    if (code == juce::KeyPress::downKey || code == juce::KeyPress::upKey)
        moveBy (code == juce::KeyPress::downKey ? 1 : -1, modifiers);
    else if (code == juce::KeyPress::rightKey || code == juce::KeyPress::leftKey)
        moveBy (code == juce::KeyPress::rightKey ? juce::jmax (1, rows) : -juce::jmax (1, rows), modifiers);
    else if (key == juce::KeyPress ('a', juce::ModifierKeys::commandModifier, 0))
    {
        list.selectAll();
        listChanged();
    }
    else if (editMode
             && (code == juce::KeyPress::F2Key || (code == juce::KeyPress::returnKey && modifiers.isCommandDown())))
        startRenaming();
    else if (code == juce::KeyPress::returnKey)
        listener.resultsReturnPressed();
    else
        return false;

    return true;
}

void ContentResults::focusGained (FocusChangeType)
{
    grid->update();
}

void ContentResults::focusLost (FocusChangeType)
{
    grid->update();
}

//==============================================================================
void ContentResults::startRenaming()
{
    if (const auto* item = list.getCurrentItem(); item != nullptr && list.getNumSelected() > 0)
        openRenaming (item->name);
}

void ContentResults::openRenaming (const juce::String& text)
{
    const auto index = list.getCurrentIndex();

    if (index < 0 || rows <= 0)
        return;

    renamingItem = BrowserContent::keyOf (list.getCurrentItem());
    scrollToCurrent();
    nameEditor.setBounds (grid->placeOf (index));
    nameEditor.setText (text, false);
    nameEditor.setVisible (true);
    nameEditor.toFront (false);
    nameEditor.selectAll();

    if (isShowing())
        nameEditor.grabKeyboardFocus();
}

void ContentResults::hideRenaming()
{
    renamingItem = {};
    nameEditor.setVisible (false);
}

void ContentResults::finishRenaming()
{
    if (! nameEditor.isVisible())
        return;

    const auto newName = nameEditor.getText().trim();
    auto* item = content.find (renamingItem);
    hideRenaming();

    if (isShowing())
        grabKeyboardFocus();

    if (item == nullptr || newName == item->name || newName.isEmpty())
        return;

    auto& source = *item->source;
    const auto isTaken = source.containsItem (newName) && ! newName.equalsIgnoreCase (item->name);

    if (source.isReadOnly() || isTaken)
    {
        refusedName = newName;
        warning = K7R::AlertWindow::open (this, "Rename warning", "Item with this name already exists.",
                                          K7R::AlertWindow::okOnly, this);
        return;
    }

    if (! source.renameItem (*item, newName))
        return;

    content.remove (*item);
    content.insert (*item);
    source.loadItem (item->name);
    listener.itemRenamed (*item);
}

void ContentResults::alertClosed (K7R::AlertWindow*, int)
{
    warning.reset();
    openRenaming (refusedName);
}

//==============================================================================
void ContentResults::resized()
{
    header.setBounds (getLocalBounds().removeFromTop (HeaderComponent::height));
    view->setBounds (getLocalBounds().withTrimmedTop (HeaderComponent::height));
    layOut();
}

void ContentResults::layOut()
{
    const auto width = view->getWidth();
    const auto height = view->getHeight() - view->getScrollBarThickness();
    rows = juce::jmax (0, height / rowHeight);
    columnWidth = width / juce::jmax (width / widestColumn, 1);

    if (rows == 0)
    {
        grid->update();
        return;
    }

    const auto numColumns = (list.size() + rows - 1) / rows;
    grid->remainder = { width % juce::jmax (1, columnWidth), height - rows * rowHeight };
    grid->setSize (juce::jmax (width, numColumns * columnWidth + grid->remainder.x), height);
    grid->update();
}

void ContentResults::scrollToCurrent()
{
    const auto index = list.getCurrentIndex();

    if (index < 0 || rows <= 0)
        return;

    const auto place = grid->placeOf (index);
    const auto seen = view->getViewArea();

    if (place.getX() < seen.getX())
        view->setViewPosition (place.getX(), 0);
    else if (place.getRight() > seen.getRight())
        view->setViewPosition (place.getRight() - seen.getWidth(), 0);
}

void ContentResults::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (0xffe3e3e3));

    if (list.size() > 0)
        return;

    g.setColour (findColour (DefaultLookAndFeel::categoryLineId));
    g.setFont (DefaultLookAndFeel::textHeight);
    g.drawText ("No presets", getLocalBounds().withTrimmedTop (HeaderComponent::height), juce::Justification::centred);
}

} // namespace quilvane
