// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/ModulationMatrixComponent.h"

#include "skin/composite/ModulationMatrixTable.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int buttonSize = 24, stripX = 5, stripY = 4;
constexpr int tableMargin = 8, tableY = stripY + buttonSize + stripY;

} // namespace

const juce::StringArray& ModulationMatrixComponent::getSources()
{
    static const juce::StringArray sources { "Modulation",       "Expression", "Pitch Bend", "Velocity", "Pitch",
                                             "Channel Pressure", "Sustain",    "Arpe Gate",  "Arpe Tie" };
    return sources;
}

//==============================================================================
ModulationMatrixComponent::ModulationMatrixComponent (const juce::String& controlName) :
    PlacedComponent (controlName),
    addButton ("Add Row", *Icons::create (Icons::Name::plus), juce::Colour (Icons::colour)),
    deleteButton ("Delete Row", *Icons::create (Icons::Name::minus), juce::Colour (Icons::colour)),
    upButton ("Move Up", *Icons::create (Icons::Name::arrowUp), juce::Colour (Icons::colour)),
    downButton ("Move Down", *Icons::create (Icons::Name::arrowDown), juce::Colour (Icons::colour)),
    table (std::make_unique<Table> (*this))
{
    for (int i = 0; i < getSources().size(); ++i)
        controllerChoiceMenu.addItem (i + 1, getSources()[i]);

    for (auto* button : { &addButton, &deleteButton, &upButton, &downButton })
    {
        button->setSize (buttonSize, buttonSize);
        button->addListener (this);
        buttons.add (*button);
    }

    buttons.setTopLeftPosition (stripX, stripY);
    addAndMakeVisible (buttons);
    addAndMakeVisible (*table);

    setTitle ("Modulation matrix");
    setWantsKeyboardFocus (false); // without rows there's nothing to do
    setMouseClickGrabsKeyboardFocus (false);
    updateButtons();
}

ModulationMatrixComponent::~ModulationMatrixComponent()
{
    cancelPendingUpdate();
}

void ModulationMatrixComponent::setModel (ModulationMatrixModel* newModel)
{
    model = newModel;
    setWantsKeyboardFocus (model != nullptr);
    selectRow (-1);
    refresh();
}

void ModulationMatrixComponent::selectRow (int index)
{
    const auto newRow = juce::isPositiveAndBelow (index, rows.size()) ? index : -1;

    if (std::exchange (selectedRow, newRow) == newRow)
        return;

    if (selectedRow >= 0)
        table->show (selectedRow);

    updateButtons();
    table->repaint();
}

//==============================================================================
void ModulationMatrixComponent::addRow()
{
    handleUpdateNowIfNeeded();

    if (model == nullptr || rows.size() >= ModulationMatrixModel::maximumRows)
        return;

    const auto numBefore = rows.size();
    model->addRow ({});
    refresh();

    if (rows.size() > numBefore)
        selectRow (rows.size() - 1);
}

void ModulationMatrixComponent::deleteRow()
{
    handleUpdateNowIfNeeded();

    if (model == nullptr || selectedRow < 0)
        return;

    model->removeRow (selectedRow);
    refresh();
}

void ModulationMatrixComponent::move (int distance, bool movesRow)
{
    handleUpdateNowIfNeeded();
    const auto from = selectedRow, to = from + distance;

    if (! juce::isPositiveAndBelow (to, rows.size()))
        return;

    if (movesRow && from >= 0)
    {
        model->moveRow (from, to);
        refresh();
    }

    selectRow (to);

    if (rows[from] != nullptr)
        rows[to]->takeFocusFrom (*rows[from]);
}

template <typename Change>
void ModulationMatrixComponent::changeModel (int index, Change&& change)
{
    // The model may have lost rows that are still shown, or hold others than are shown.
    if (model == nullptr || index >= model->getNumRows())
        return;

    auto row = model->getRow (index);
    change (row);
    model->changeRow (index, row);
}

void ModulationMatrixComponent::changeAmount (int index, float amount)
{
    changeModel (index, [=] (auto& row) { row.amount = amount; });
}

void ModulationMatrixComponent::refresh()
{
    cancelPendingUpdate();
    const auto numRows =
        model != nullptr ? juce::jlimit (0, ModulationMatrixModel::maximumRows, model->getNumRows()) : 0;
    const auto destinations = model != nullptr ? model->getDestinations() : juce::StringArray();
    const auto hasChanged = rows.size() != numRows;

    const auto wanted = juce::jmin (selectedRow, numRows - 1);

    // Rows that go leave the focus to the selection; JUCE would give it to the first row.
    for (int i = numRows; i < rows.size(); ++i)
    {
        if (! rows[i]->hasKeyboardFocus (true))
            continue;

        if (wanted >= 0)
            rows[wanted]->takeFocusFrom (*rows[i]);
        else
            grabKeyboardFocus();
    }

    while (rows.size() > numRows)
        rows.removeLast();

    while (rows.size() < numRows)
        table->add (*rows.add (std::make_unique<Row> (*this, rows.size())));

    for (int i = 0; i < numRows; ++i)
        rows[i]->show (model->getRow (i), destinations);

    if (hasChanged)
        table->layOut();

    selectRow (wanted);
    updateButtons();
}

void ModulationMatrixComponent::updateButtons()
{
    addButton.setEnabled (model != nullptr && rows.size() < ModulationMatrixModel::maximumRows);
    deleteButton.setEnabled (selectedRow >= 0);
    upButton.setEnabled (selectedRow > 0);
    downButton.setEnabled (selectedRow >= 0 && selectedRow < rows.size() - 1);
}

//==============================================================================
void ModulationMatrixComponent::buttonClicked (juce::Button* button)
{
    if (button == &addButton)
        addRow();
    else if (button == &deleteButton)
        deleteRow();
    else
        move (button == &upButton ? -1 : 1, juce::ModifierKeys::currentModifiers.isCtrlDown());
}

void ModulationMatrixComponent::itemChosen (ComboBoxEx& box)
{
    for (int i = 0; i < rows.size(); ++i)
        if (rows[i]->has (box))
            return changeModel (i, [&] (auto& row) { rows[i]->apply (box, row); });
}

bool ModulationMatrixComponent::keyPressed (const juce::KeyPress& key)
{
    if (model == nullptr)
        return false;

    const auto isUp = key.isKeyCode (juce::KeyPress::upKey);
    const auto modifiers = key.getModifiers();

    if (key == juce::KeyPress (juce::KeyPress::insertKey))
        addRow();
    else if (key == juce::KeyPress (juce::KeyPress::deleteKey))
        deleteRow();
    else if ((isUp || key.isKeyCode (juce::KeyPress::downKey))
             && (! modifiers.isAnyModifierKeyDown() || modifiers == juce::ModifierKeys::ctrlModifier))
        move (isUp ? -1 : 1, modifiers.isCtrlDown());
    else
        return false;

    return true;
}

//==============================================================================
void ModulationMatrixComponent::resized()
{
    table->setBounds (tableMargin, tableY, juce::jmax (0, getWidth() - 2 * tableMargin),
                      juce::jmax (0, getHeight() - tableY - tableMargin));
}

void ModulationMatrixComponent::paint (juce::Graphics& g)
{
    const auto* look = dynamic_cast<const DefaultLookAndFeel*> (&getLookAndFeel());

    if (look == nullptr)
        return;

    g.fillAll (look->findColour (DefaultLookAndFeel::panelBackgroundId));
    g.setColour (look->findColour (DefaultLookAndFeel::panelLineId));
    g.drawRect (getLocalBounds(), 1);
}

} // namespace K7R
