// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "skin/composite/ModulationMatrixModel.h"
#include "skin/composite/PlacedComponent.h"
#include "widgets/controls/ComboBoxEx.h"
#include "widgets/controls/ComponentRow.h"
#include "widgets/controls/ToolbarDrawableButton.h"
#include "widgets/windows/PopupMenuEx.h"

namespace K7R
{

/** A table of modulations, each from a source to a destination by an amount, with buttons that add, delete and move
    rows. Without a model it is an empty table with disabled buttons.

    The keyboard: up and down select, with Ctrl they move the selected row; Insert adds and Delete deletes one; Tab goes
    through the boxes and the amounts, and what has the focus is in the selected row.
*/
class ModulationMatrixComponent final : public PlacedComponent,
                                        private juce::Button::Listener,
                                        private ComboBoxEx::Listener,
                                        private juce::AsyncUpdater
{
public:
    explicit ModulationMatrixComponent (const juce::String& controlName);
    ~ModulationMatrixComponent() override;

    /** What a row can begin at, in the order of their indexes. */
    static const juce::StringArray& getSources();

    //==============================================================================
    /** Shows a model in place of the one before, with no row selected.
        @param newModel null for none; not owned, and outlives this component or is taken away before its end */
    void setModel (ModulationMatrixModel* newModel);

    /** To be called by the model's owner, from anywhere on the message thread, when rows or destinations have changed
        but by this component. What is shown follows soon. */
    void modelChanged() { triggerAsyncUpdate(); }

    /** Selects a row and scrolls to it; none by any index that there isn't. */
    void selectRow (int index);

    /** -1 for none. */
    int getSelectedRow() const noexcept { return selectedRow; }

    void resized() override;
    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override { repaint(); }
    void focusLost (FocusChangeType) override { repaint(); }

private:
    class Row;
    class Header;
    class Shape;
    class ViewportComponent;
    class Table;

    void addRow();
    void deleteRow();

    /** Selects the row above (-1) or below (1), or exchanges it with the selected one, which stays selected. */
    void move (int distance, bool movesRow);

    /** Changes what the user touched in the model's row. */
    template <typename Change>
    void changeModel (int index, Change&&);
    void changeAmount (int index, float amount);

    /** Makes the rows those of the model. */
    void refresh();
    void updateButtons();

    void buttonClicked (juce::Button*) override;
    void itemChosen (ComboBoxEx&) override;
    void handleAsyncUpdate() override { refresh(); }

    ModulationMatrixModel* model = nullptr;
    ToolbarDrawableButton addButton, deleteButton, upButton, downButton;
    ComponentRow buttons { ComponentRow::Direction::horizontal };
    PopupMenuEx controllerChoiceMenu; // of all rows' sources
    juce::OwnedArray<Row> rows;
    juce::int32 selectedRow = -1;
    std::unique_ptr<Table> table;
};

} // namespace K7R
