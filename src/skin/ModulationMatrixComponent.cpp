// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/ModulationMatrixComponent.h"

#include <array>

#include "widgets/DefaultLookAndFeel.h"
#include "widgets/Icons.h"
#include "widgets/ModulationSlider.h"

namespace quilvane
{

namespace
{

constexpr int buttonSize = 24, stripX = 5, stripY = 4;
constexpr int tableMargin = 8, tableY = stripY + buttonSize + stripY;
constexpr int headerHeight = 20, rowHeight = 30, boxHeight = 20;
constexpr int scrollBarWidth = 10;
constexpr float headerFontHeight = 12.0f;

const DefaultLookAndFeel* findLook (const juce::Component& component)
{
    return dynamic_cast<const DefaultLookAndFeel*> (&component.getLookAndFeel());
}

/** The grid of the header and the rows. */
struct Columns
{
    explicit Columns (juce::Rectangle<int> area)
    {
        constexpr int margin = 10, gap = 12, sourceShare = 28, destinationShare = 34; // in percent of the width
        area.reduce (margin, 0);

        const auto room = juce::jmax (0, area.getWidth() - 2 * gap);
        source = area.removeFromLeft (room * sourceShare / 100);
        area.removeFromLeft (gap);
        destination = area.removeFromLeft (room * destinationShare / 100);
        area.removeFromLeft (gap);
        amount = area;
    }

    juce::Rectangle<int> source, destination, amount;
};

} // namespace

const juce::StringArray& ModulationMatrixComponent::getSources()
{
    static const juce::StringArray sources { "Modulation",       "Expression", "Pitch Bend", "Velocity", "Pitch",
                                             "Channel Pressure", "Sustain",    "Arpe Gate",  "Arpe Tie" };
    return sources;
}

//==============================================================================
/** Two boxes and an amount. What it shows is the model's; what the user sets goes there at once. */
class ModulationMatrixComponent::Row final : public juce::Component
{
public:
    Row (ModulationMatrixComponent& matrix, int rowIndex) :
        owner (matrix),
        index (rowIndex),
        source (&matrix.controllerChoiceMenu)
    {
        const auto suffix = " of row " + juce::String (index + 1);
        source.setTitle ("Source" + suffix);
        destination.setTitle ("Destination" + suffix);
        amount.setTitle ("Amount" + suffix);

        source.setItems (getSources());

        for (auto* box : { &source, &destination })
        {
            box->setTextForNone ("None");
            box->addListener (&owner);
        }

        amount.onValueChange = [this] { owner.changeModel (index, read()); };

        for (auto* part : getParts())
        {
            part->addMouseListener (this, false);
            addAndMakeVisible (part);
        }

        setMouseClickGrabsKeyboardFocus (false);
    }

    void show (const ModulationMatrixModel::Row& row, const juce::StringArray& destinations)
    {
        source.setSelectedIndex (row.source);
        destination.setItems (destinations);
        destination.setSelectedIndex (row.destination);
        amount.setValue (static_cast<double> (row.amount), juce::dontSendNotification);
    }

    ModulationMatrixModel::Row read() const
    {
        return { source.getSelectedIndex(), destination.getSelectedIndex(), static_cast<float> (amount.getValue()) };
    }

    bool has (const ComboBoxEx& box) const { return &box == &source || &box == &destination; }

    /** Gives the focus to the part of this row that has it in another one, if one has. */
    void takeFocusFrom (const Row& other)
    {
        for (int i = 0; i < other.getNumChildComponents(); ++i)
            if (other.getChildComponent (i)->hasKeyboardFocus (true))
                return getChildComponent (i)->grabKeyboardFocus();
    }

    void mouseDown (const juce::MouseEvent& e) override
    {
        owner.selectRow (index);

        if (e.eventComponent == this && owner.isShowing())
            owner.grabKeyboardFocus();
    }

    // Before the viewport takes the arrows for scrolling.
    bool keyPressed (const juce::KeyPress& key) override { return owner.keyPressed (key); }

    void focusOfChildComponentChanged (FocusChangeType) override
    {
        if (hasKeyboardFocus (true))
            owner.selectRow (index);
    }

    void resized() override
    {
        const Columns columns (getLocalBounds());
        source.setBounds (columns.source.withSizeKeepingCentre (columns.source.getWidth(), boxHeight));
        destination.setBounds (columns.destination.withSizeKeepingCentre (columns.destination.getWidth(), boxHeight));
        amount.setBounds (columns.amount.expanded (ModulationSlider::margin, 0));
    }

    void paint (juce::Graphics& g) override
    {
        constexpr float selectedAlpha = 0.4f;
        constexpr int markWidth = 4;
        const auto* look = findLook (*this);

        if (look == nullptr)
            return;

        auto area = getLocalBounds();
        g.setColour (index % 2 == 0 ? look->findColour (juce::ListBox::backgroundColourId)
                                    : look->findColour (DefaultLookAndFeel::itemBackgroundId));
        g.fillRect (area);

        if (owner.selectedRow != index)
            return;

        g.setColour (look->findColour (DefaultLookAndFeel::accentBrightId).withAlpha (selectedAlpha));
        g.fillRect (area);
        g.setColour (look->findColour (DefaultLookAndFeel::accentId));
        g.fillRect (area.removeFromLeft (markWidth));
    }

private:
    std::array<juce::Component*, 3> getParts() { return { &source, &destination, &amount }; }

    ModulationMatrixComponent& owner;
    const int index;
    ComboBoxEx source, destination;
    ModulationSlider amount;
};

//==============================================================================
/** The names of the columns. */
class ModulationMatrixComponent::Header final : public juce::Component
{
public:
    Header() { setInterceptsMouseClicks (false, false); }

    void paint (juce::Graphics& g) override
    {
        const auto* look = findLook (*this);

        if (look == nullptr)
            return;

        g.fillAll (look->findColour (DefaultLookAndFeel::windowTitleId));
        g.setColour (look->findColour (DefaultLookAndFeel::windowTitleTextId));
        g.setFont (juce::Font ("Tahoma", "Bold", headerFontHeight));

        const Columns columns (getLocalBounds().withTrimmedRight (scrollBarWidth));
        const std::pair<const char*, juce::Rectangle<int>> texts[] { { "Source", columns.source },
                                                                     { "Destination", columns.destination },
                                                                     { "Amount", columns.amount } };

        for (const auto& [text, area] : texts)
            g.drawText (text, area, juce::Justification::centredLeft);
    }
};

/** The frame over the table, which shows the keyboard's focus too. */
class ModulationMatrixComponent::Shape final : public juce::Component
{
public:
    explicit Shape (const juce::Component& matrix) : owner (matrix) { setInterceptsMouseClicks (false, false); }

    void paint (juce::Graphics& g) override
    {
        const auto* look = findLook (*this);

        if (look == nullptr)
            return;

        g.setColour (look->findColour (DefaultLookAndFeel::panelLineId));
        g.drawRect (getLocalBounds(), 1);

        if (owner.hasKeyboardFocus (false))
            look->drawFocusRing (g, getLocalBounds());
    }

private:
    const juce::Component& owner;
};

/** All rows, one below the other, of which the viewport shows a part. */
class ModulationMatrixComponent::ViewportComponent final : public juce::Component
{
public:
    ViewportComponent() { setInterceptsMouseClicks (false, true); }

    void layOut (int width)
    {
        for (int i = 0; i < getNumChildComponents(); ++i)
            getChildComponent (i)->setBounds (0, i * rowHeight, width, rowHeight);

        setSize (width, getNumChildComponents() * rowHeight);
    }
};

/** The header, the rows and the frame. */
class ModulationMatrixComponent::Table final : public juce::Component
{
public:
    explicit Table (const juce::Component& matrix) : shape (matrix)
    {
        viewport.setViewedComponent (&content, false);
        viewport.setScrollBarsShown (true, false);
        viewport.setScrollBarThickness (scrollBarWidth);
        viewport.setWantsKeyboardFocus (false);
        addAndMakeVisible (header);
        addAndMakeVisible (viewport);
        addAndMakeVisible (shape);
        setInterceptsMouseClicks (false, true);
    }

    void add (juce::Component& row) { content.addAndMakeVisible (row); }

    /** After rows have come or gone. */
    void layOut()
    {
        // The grid is the same with the scroll bar and without.
        content.layOut (juce::jmax (0, viewport.getWidth() - scrollBarWidth));
        repaint();
    }

    void show (int row)
    {
        const auto top = row * rowHeight, bottom = top + rowHeight;
        const auto seen = viewport.getViewArea();

        if (top < seen.getY())
            viewport.setViewPosition (0, top);
        else if (bottom > seen.getBottom())
            viewport.setViewPosition (0, bottom - viewport.getViewHeight());
    }

    void resized() override
    {
        auto area = getLocalBounds();
        shape.setBounds (area);
        area.reduce (1, 1);
        header.setBounds (area.removeFromTop (headerHeight));
        viewport.setBounds (area);
        layOut();
    }

    void paint (juce::Graphics& g) override
    {
        if (const auto* look = findLook (*this))
            g.fillAll (look->findColour (juce::ListBox::backgroundColourId));
    }

private:
    Header header;
    ViewportComponent content;
    juce::Viewport viewport;
    Shape shape;
};

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
    setWantsKeyboardFocus (true);
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

    model->addRow ({});
    refresh();
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

void ModulationMatrixComponent::changeModel (int index, const ModulationMatrixModel::Row& row)
{
    // The model may have lost rows that are still shown.
    if (model != nullptr && index < model->getNumRows())
        model->changeRow (index, row);
}

void ModulationMatrixComponent::refresh()
{
    cancelPendingUpdate();
    const auto numRows =
        model != nullptr ? juce::jlimit (0, ModulationMatrixModel::maximumRows, model->getNumRows()) : 0;
    const auto destinations = model != nullptr ? model->getDestinations() : juce::StringArray();
    const auto hasChanged = rows.size() != numRows;

    while (rows.size() > numRows)
        rows.removeLast();

    while (rows.size() < numRows)
        table->add (*rows.add (std::make_unique<Row> (*this, rows.size())));

    for (int i = 0; i < numRows; ++i)
        rows[i]->show (model->getRow (i), destinations);

    if (hasChanged)
        table->layOut();

    selectRow (juce::jmin (selectedRow, numRows - 1));
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

void ModulationMatrixComponent::comboBoxChosen (ComboBoxEx& box)
{
    for (int i = 0; i < rows.size(); ++i)
        if (rows[i]->has (box))
            return changeModel (i, rows[i]->read());
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
    const auto* look = findLook (*this);

    if (look == nullptr)
        return;

    g.fillAll (look->findColour (DefaultLookAndFeel::panelBackgroundId));
    g.setColour (look->findColour (DefaultLookAndFeel::panelLineId));
    g.drawRect (getLocalBounds(), 1);
}

} // namespace quilvane
