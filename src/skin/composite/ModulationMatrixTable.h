// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "skin/composite/ModulationMatrixComponent.h"
#include "widgets/controls/ModulationSlider.h"

// The parts of a modulation matrix's table, for that component alone.

namespace K7R
{

/** Two boxes and an amount. What it shows is the model's; what the user sets goes there at once. */
class ModulationMatrixComponent::Row final : public juce::Component
{
public:
    Row (ModulationMatrixComponent& matrix, int rowIndex);

    void show (const ModulationMatrixModel::Row&, const juce::StringArray& destinations);

    /** Gives a row of the model what one of the boxes shows. */
    void apply (const ComboBoxEx&, ModulationMatrixModel::Row&) const;

    bool has (const ComboBoxEx& box) const { return &box == &source || &box == &destination; }

    /** Gives the focus to the part of this row that has it in another one, if one has. */
    void takeFocusFrom (const Row& other);

    void mouseDown (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusOfChildComponentChanged (FocusChangeType) override;
    void resized() override;
    void paint (juce::Graphics&) override;

private:
    std::array<juce::Component*, 3> getParts() { return { &source, &destination, &amount }; }

    ModulationMatrixComponent& owner;
    const int index;
    ComboBoxEx source, destination;
    ModulationSlider amount;
};

/** The names of the columns. */
class ModulationMatrixComponent::Header final : public juce::Component
{
public:
    Header() { setInterceptsMouseClicks (false, false); }

    void paint (juce::Graphics&) override;
};

/** A frame: it lies over the table, and shows the keyboard's focus too. */
class ModulationMatrixComponent::Shape final : public juce::Component
{
public:
    explicit Shape (const juce::Component& matrix) : owner (matrix) { setInterceptsMouseClicks (false, false); }

    void paint (juce::Graphics&) override;

private:
    const juce::Component& owner;
};

/** The content of the table's viewport: all rows, one below the other. */
class ModulationMatrixComponent::ViewportComponent final : public juce::Component
{
public:
    ViewportComponent() { setInterceptsMouseClicks (false, true); }

    void layOut (int width);
};

/** The header, the rows, which aren't owned, and the frame. */
class ModulationMatrixComponent::Table final : public juce::Component
{
public:
    explicit Table (const juce::Component& matrix);

    void add (juce::Component& row) { content.addAndMakeVisible (row); }

    /** After rows have come or gone. */
    void layOut();

    /** Scrolls to a row. */
    void show (int row);

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    Header header;
    ViewportComponent content;
    juce::Viewport viewport;
    Shape shape;
};

} // namespace K7R
