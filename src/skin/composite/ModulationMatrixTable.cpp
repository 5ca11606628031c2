// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/ModulationMatrixTable.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

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
        area.removeFromRight (scrollBarWidth);
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

ModulationMatrixComponent::Row::Row (ModulationMatrixComponent& matrix, int rowIndex) :
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

    amount.onValueChange = [this] { owner.changeAmount (index, static_cast<float> (amount.getValue())); };

    for (auto* part : getParts())
    {
        part->addMouseListener (this, false);
        addAndMakeVisible (part);
    }

    setMouseClickGrabsKeyboardFocus (false);
}

void ModulationMatrixComponent::Row::show (const ModulationMatrixModel::Row& row, const juce::StringArray& destinations)
{
    source.setSelectedIndex (row.source);
    destination.setItems (destinations);
    destination.setSelectedIndex (row.destination);
    amount.setValue (static_cast<double> (row.amount), juce::dontSendNotification);
}

void ModulationMatrixComponent::Row::apply (const ComboBoxEx& box, ModulationMatrixModel::Row& row) const
{
    (&box == &source ? row.source : row.destination) = box.getSelectedIndex();
}

void ModulationMatrixComponent::Row::takeFocusFrom (const Row& other)
{
    for (int i = 0; i < other.getNumChildComponents(); ++i)
        if (other.getChildComponent (i)->hasKeyboardFocus (true))
            return getChildComponent (i)->grabKeyboardFocus();
}

void ModulationMatrixComponent::Row::mouseDown (const juce::MouseEvent& e)
{
    owner.selectRow (index);

    if (e.eventComponent == this && owner.isShowing())
        owner.grabKeyboardFocus();
}

bool ModulationMatrixComponent::Row::keyPressed (const juce::KeyPress& key)
{
    // Before the viewport takes the arrows for scrolling.
    return owner.keyPressed (key);
}

void ModulationMatrixComponent::Row::focusOfChildComponentChanged (FocusChangeType)
{
    if (hasKeyboardFocus (true))
        owner.selectRow (index);
}

void ModulationMatrixComponent::Row::resized()
{
    const Columns columns (getLocalBounds());
    source.setBounds (columns.source.withSizeKeepingCentre (columns.source.getWidth(), boxHeight));
    destination.setBounds (columns.destination.withSizeKeepingCentre (columns.destination.getWidth(), boxHeight));
    amount.setBounds (columns.amount.expanded (ModulationSlider::margin, 0));
}

void ModulationMatrixComponent::Row::paint (juce::Graphics& g)
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

//==============================================================================
void ModulationMatrixComponent::Header::paint (juce::Graphics& g)
{
    const auto* look = findLook (*this);

    if (look == nullptr)
        return;

    g.fillAll (look->findColour (DefaultLookAndFeel::windowTitleId));
    g.setColour (look->findColour (DefaultLookAndFeel::windowTitleTextId));
    g.setFont (juce::Font ("Tahoma", "Bold", headerFontHeight));

    const Columns columns (getLocalBounds());
    const std::pair<const char*, juce::Rectangle<int>> texts[] { { "Source", columns.source },
                                                                 { "Destination", columns.destination },
                                                                 { "Amount", columns.amount } };

    for (const auto& [text, area] : texts)
        g.drawText (text, area, juce::Justification::centredLeft);
}

void ModulationMatrixComponent::Shape::paint (juce::Graphics& g)
{
    const auto* look = findLook (*this);

    if (look == nullptr)
        return;

    g.setColour (look->findColour (DefaultLookAndFeel::panelLineId));
    g.drawRect (getLocalBounds(), 1);

    if (owner.hasKeyboardFocus (false))
        look->drawFocusRing (g, getLocalBounds());
}

void ModulationMatrixComponent::ViewportComponent::layOut (int width)
{
    for (int i = 0; i < getNumChildComponents(); ++i)
        getChildComponent (i)->setBounds (0, i * rowHeight, width, rowHeight);

    setSize (width, getNumChildComponents() * rowHeight);
}

//==============================================================================
ModulationMatrixComponent::Table::Table (const juce::Component& matrix) : shape (matrix)
{
    viewport.setViewedComponent (&content, false);
    viewport.setScrollBarsShown (true, false);
    viewport.setScrollBarThickness (scrollBarWidth);
    viewport.setScrollOnDragMode (juce::Viewport::ScrollOnDragMode::never);
    viewport.setWantsKeyboardFocus (false);
    addAndMakeVisible (header);
    addAndMakeVisible (viewport);
    addAndMakeVisible (shape);
    setInterceptsMouseClicks (false, true);
}

void ModulationMatrixComponent::Table::layOut()
{
    // The bar lies over the ends of the rows, so that the grid is the same with it and without.
    content.layOut (viewport.getWidth());
    repaint();
}

void ModulationMatrixComponent::Table::show (int row)
{
    const auto top = row * rowHeight, bottom = top + rowHeight;
    const auto seen = viewport.getViewArea();

    if (top < seen.getY())
        viewport.setViewPosition (0, top);
    else if (bottom > seen.getBottom())
        viewport.setViewPosition (0, bottom - viewport.getViewHeight());
}

void ModulationMatrixComponent::Table::resized()
{
    auto area = getLocalBounds();
    shape.setBounds (area);
    area.reduce (1, 1);
    header.setBounds (area.removeFromTop (headerHeight));
    viewport.setBounds (area);
    layOut();
}

void ModulationMatrixComponent::Table::paint (juce::Graphics& g)
{
    if (const auto* look = findLook (*this))
        g.fillAll (look->findColour (juce::ListBox::backgroundColourId));
}

} // namespace K7R
