// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ContentResults.h"

#include <cstdlib>
#include <utility>

#include "browser/BrowserTexts.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int longestName = 150; // characters, of which every file system has room for

} // namespace

//==============================================================================
ContentResults::ContentResults (BrowserContent& shared, Listener& toTell) :
    content (shared),
    listener (toTell),
    grid (list, static_cast<ResultsGrid::Owner&> (*this))
{
    setTitle ("Results");
    setWantsKeyboardFocus (true);
    addAndMakeVisible (header);
    addAndMakeVisible (grid);

    setExpanded (false);
    expandButton.onClick = [this] { listener.resultsExpandClicked(); };
    Icons::setUp (viewButton, Icons::Name::list, "Change view", findColour (DefaultLookAndFeel::itemTextId));
    viewButton.setTooltip ("Wide or narrow columns");
    viewButton.onClick = [this] { grid.changeView(); };

    nameEditor.setTitle ("New name");
    nameEditor.setInputRestrictions (longestName);
    nameEditor.addListener (this);
    grid.getViewedComponent()->addChildComponent (nameEditor);
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
    grid.update();
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
    grid.layOut();
    listener.selectionChanged();
}

void ContentResults::setMultiSelect (bool isOn)
{
    if (! isOn && list.getNumSelected() > 1)
    {
        list.multiSelect = false;
        list.select (list.getCurrentIndex(), ResultList::How::single);
        grid.update();
    }

    list.multiSelect = isOn;
}

void ContentResults::listChanged()
{
    grid.update();
    listener.selectionChanged();
}

void ContentResults::selectItem (ContentItem* item, bool notify)
{
    if (item == nullptr)
    {
        list.clearSelection();
        return listChanged();
    }

    if (const auto index = list.indexOf (item); index >= 0)
        return select (index, ResultList::How::single, notify);

    // It's filtered out.
    list.clearSelection();
    listChanged();
}

void ContentResults::selectKeys (const std::vector<BrowserContent::Key>& keys)
{
    list.selectKeys (keys);
    grid.show (list.getCurrentIndex());
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
    grid.show (list.getCurrentIndex());
    grid.update();

    // What is loaded may change what is shown here.
    if (auto* item = list.getCurrentItem(); notify && item != nullptr)
        listener.itemClicked (*item);
    else
        listener.selectionChanged();
}

void ContentResults::resultClicked (int index, const juce::ModifierKeys& modifiers)
{
    // A name that is being written takes effect, which moves items; the one that was clicked is meant.
    const auto* clicked = list.getResults()[static_cast<size_t> (index)].item;
    finishRenaming (Loading::no);

    if (warning != nullptr)
        return;

    if (isShowing())
        grabKeyboardFocus();

    select (list.indexOf (clicked),
            modifiers.isShiftDown()     ? ResultList::How::range
            : modifiers.isCommandDown() ? ResultList::How::toggle
                                        : ResultList::How::single,
            true);
}

void ContentResults::resultDoubleClicked (int index, const juce::ModifierKeys& modifiers)
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
    const auto rows = grid.getNumRows();
    const auto current = list.getCurrentIndex();
    const auto target = list.getStep (distance);

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
    const auto rows = juce::jmax (1, grid.getNumRows());
    const auto& modifiers = key.getModifiers();

    if (code == juce::KeyPress::downKey || code == juce::KeyPress::upKey)
        moveBy (code == juce::KeyPress::downKey ? 1 : -1, modifiers);
    else if (code == juce::KeyPress::rightKey || code == juce::KeyPress::leftKey)
        moveBy (code == juce::KeyPress::rightKey ? rows : -rows, modifiers);
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
    grid.update();
}

void ContentResults::focusLost (FocusChangeType)
{
    grid.update();
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

    if (index < 0 || grid.getNumRows() == 0)
        return;

    renamingItem = BrowserContent::keyOf (list.getCurrentItem());
    grid.show (list.getCurrentIndex());
    nameEditor.setBounds (grid.placeOf (index));
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

void ContentResults::cancelRenaming()
{
    hideRenaming();
    warning.reset();
    refusedItem = {};
}

void ContentResults::textEditorReturnKeyPressed (juce::TextEditor&)
{
    finishRenaming (Loading::yes);

    if (isShowing() && warning == nullptr)
        grabKeyboardFocus();
}

void ContentResults::textEditorEscapeKeyPressed (juce::TextEditor&)
{
    hideRenaming();

    if (isShowing())
        grabKeyboardFocus();
}

void ContentResults::finishRenaming (Loading loading)
{
    if (! nameEditor.isVisible())
        return;

    const auto text = nameEditor.getText();
    const auto newName = text.trim();
    const auto key = renamingItem;
    auto* item = content.find (key);
    hideRenaming();

    if (item == nullptr || text == item->name || newName == item->name || newName.isEmpty())
        return;

    using Kind = ContentPlacement::Kind;

    auto& source = *item->source;
    const auto placement = source.place (newName);
    const auto isOwn = placement.kind == Kind::sameItem && placement.name == item->name; // in another case
    refusedItem = key;
    refusedName = newName;

    if (placement.kind != Kind::free && ! isOwn)
        return refuseName (BrowserTexts::refuseName (newName, placement));

    if (! source.renameItem (*item, newName))
        return refuseName ("'" + AlertWindow::shorten (item->name) + "' couldn't be renamed.");

    refusedItem = {};

    if (item->name != newName)
        listener.resultsMessage ("'" + newName + "' is kept as '" + item->name + "'");

    content.remove (*item);
    content.insert (*item);

    if (loading == Loading::yes)
        source.loadItem (item->name);

    listener.itemRenamed (*item, key.name);
}

void ContentResults::refuseName (const juce::String& why)
{
    warning = AlertWindow::open (this, "Rename warning", why, AlertWindow::okOnly, this);
}

void ContentResults::alertClosed (AlertWindow*, int)
{
    const auto answered = std::move (warning);
    auto* item = content.find (std::exchange (refusedItem, {}));

    if (item == nullptr || ! isShowing())
        return;

    selectItem (item, false);
    openRenaming (refusedName);
}

//==============================================================================
void ContentResults::resized()
{
    header.setBounds (getLocalBounds().removeFromTop (HeaderComponent::height));
    grid.setBounds (getLocalBounds().withTrimmedTop (HeaderComponent::height));
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

} // namespace K7R
