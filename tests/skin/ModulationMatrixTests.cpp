// SPDX-License-Identifier: GPL-3.0-or-later

// The table of modulations: its buttons, its keys, and how it follows and changes its model.

#include "skin/composite/ModulationMatrixComponent.h"
#include "support/InMemoryModulation.h"
#include "support/SkinInTest.h"
#include "support/TestDesktop.h"
#include "widgets/controls/ModulationSlider.h"

using namespace K7R;
using namespace quilvane;
using namespace K7R::test;

namespace
{

class Matrix : public SkinTest
{
public:
    Matrix()
    {
        buildOne ("ModulationMatrix", {}, size (420, 140) + "<pos left=\"10\" top=\"20\"/>");
        desktop.addAndMakeVisible (*panel);
        panel->setSize (600, 400);
    }

    ~Matrix() override { panel = nullptr; }

protected:
    ModulationMatrixComponent& matrix() { return control<ModulationMatrixComponent>(); }

    juce::Button& button (const juce::String& name) { return dynamic_cast<juce::Button&> (*find (matrix(), name)); }

    void click (const juce::String& name, int modifiers = 0) { Mouse (button (name)).click (keys::left | modifiers); }

    bool press (int key, int modifiers = 0) { return matrix().keyPressed (juce::KeyPress (key, modifiers, 0)); }

    /** The rows' sources as digits, and the selected row in brackets: "0[1]2". */
    juce::String state()
    {
        juce::String text;

        for (int i = 0; i < model.getNumRows(); ++i)
        {
            const auto source = juce::String (model.getRow (i).source);
            text += i == matrix().getSelectedRow() ? "[" + source + "]" : source;
        }

        return text;
    }

    /** What the boxes show, in the model's order: the sources and the destinations of all rows. */
    juce::StringArray shownTexts()
    {
        juce::StringArray texts;

        for (const auto* box : allOf<ComboBoxEx> (matrix()))
            texts.add (box->getText());

        return texts;
    }

    ComboBoxEx& box (size_t index) { return *allOf<ComboBoxEx> (matrix()).at (index); }

    void showRows (int numRows)
    {
        for (int i = 0; i < numRows; ++i)
            model.addRow ({ i, i, 0.5f });

        matrix().setModel (&model);
    }

    TestDesktop desktop;
    InMemoryModulation model;
};

} // namespace

TEST_F (Matrix, WithoutAModelIsAnEmptyTable)
{
    EXPECT_EQ (matrix().getBounds(), juce::Rectangle<int> (10, 20, 420, 140));
    EXPECT_EQ (matrix().getLocalArea (&button ("Add Row"), button ("Add Row").getLocalBounds()),
               juce::Rectangle<int> (5, 4, 24, 24));
    EXPECT_EQ (matrix().getChildComponent (1)->getWidth(), 420 - 16);

    for (const auto* name : { "Add Row", "Delete Row", "Move Up", "Move Down" })
    {
        EXPECT_FALSE (button (name).isEnabled());
        EXPECT_EQ (button (name).getTooltip(), name);
        click (name);
    }

    EXPECT_FALSE (press (juce::KeyPress::insertKey));
    EXPECT_TRUE (allOf<ComboBoxEx> (matrix()).empty());

    // A model that goes takes its rows along.
    showRows (3);
    EXPECT_EQ (allOf<ComboBoxEx> (matrix()).size(), 6u);
    matrix().setModel (nullptr);
    matrix().modelChanged();
    runMessageLoopFor (20);
    EXPECT_TRUE (allOf<ComboBoxEx> (matrix()).empty());
    EXPECT_EQ (matrix().getSelectedRow(), -1);
}

TEST_F (Matrix, AddsDeletesAndMovesRows)
{
    showRows (3);
    EXPECT_EQ (state(), "012");
    EXPECT_FALSE (button ("Delete Row").isEnabled());

    click ("Add Row");
    EXPECT_EQ (state(), "012[-1]");
    EXPECT_EQ (model.getRow (3).destination, -1);
    EXPECT_EQ (model.getRow (3).amount, 0.0f);
    click ("Delete Row");
    EXPECT_EQ (state(), "01[2]") << "the new last row";

    click ("Move Down");
    click ("Move Down", keys::ctrl);
    EXPECT_EQ (state(), "01[2]");
    click ("Move Up");
    EXPECT_EQ (state(), "0[1]2");
    click ("Move Up", keys::ctrl);
    EXPECT_EQ (state(), "[1]02");
    EXPECT_EQ (shownTexts()[0], ModulationMatrixComponent::getSources()[1]);
    click ("Move Up", keys::ctrl);
    EXPECT_EQ (state(), "[1]02");
    click ("Delete Row");
    EXPECT_EQ (state(), "[0]2") << "the same index";

    EXPECT_TRUE (press (juce::KeyPress::downKey, keys::ctrl));
    EXPECT_EQ (state(), "2[0]");
    EXPECT_TRUE (press (juce::KeyPress::upKey));
    EXPECT_EQ (state(), "[2]0");
    EXPECT_TRUE (press (juce::KeyPress::deleteKey));
    EXPECT_TRUE (press (juce::KeyPress::deleteKey));
    EXPECT_TRUE (press (juce::KeyPress::deleteKey));
    EXPECT_EQ (state(), "");
    EXPECT_EQ (matrix().getSelectedRow(), -1);

    for (int i = 0; i <= ModulationMatrixModel::maximumRows; ++i)
        EXPECT_TRUE (press (juce::KeyPress::insertKey));

    EXPECT_EQ (model.getNumRows(), ModulationMatrixModel::maximumRows);
    EXPECT_FALSE (button ("Add Row").isEnabled());
    const auto* last = box (2 * ModulationMatrixModel::maximumRows - 1).getParentComponent();
    EXPECT_TRUE (matrix().getLocalBounds().contains (matrix().getLocalArea (last, last->getLocalBounds())))
        << "not scrolled to the selected row";
}

TEST_F (Matrix, RowsShowAndChangeTheModel)
{
    showRows (2);
    EXPECT_EQ (shownTexts(), juce::StringArray ({ "Modulation", "Cutoff", "Expression", "Resonance" }));

    const auto choose = [&] (ComboBoxEx& chooser, const juce::String& text)
    {
        Mouse (chooser).click();

        for (auto* item : allOf<juce::Button> (desktop))
            if (item->getButtonText() == text)
                Mouse (*item).click();

        runMessageLoopFor (20);
    };

    choose (box (2), "Arpe Tie");
    choose (box (3), "Volume");
    allOf<ModulationSlider> (matrix()).at (1)->setValue (-0.25, juce::sendNotificationSync);
    EXPECT_EQ (model.getRow (1).source, 8);
    EXPECT_EQ (model.getRow (1).destination, 3);
    EXPECT_EQ (model.getRow (1).amount, -0.25f);
    EXPECT_EQ (model.getRow (0).source, 0);

    Mouse (*box (2).getParentComponent()).click();
    EXPECT_EQ (matrix().getSelectedRow(), 1);
    EXPECT_NE (paint (*box (2).getParentComponent()).getPixelAt (6, 2),
               paint (*box (0).getParentComponent()).getPixelAt (6, 2));

    // Changes from elsewhere, of which a row's own widgets may be the cause.
    model.rows = { { 4, 1, 0.75f } };
    model.destinations = { "Pan" };
    allOf<ModulationSlider> (matrix()).at (1)->setValue (0.5, juce::sendNotificationSync);
    EXPECT_EQ (model.getNumRows(), 1) << "a row that is gone";
    matrix().modelChanged();
    EXPECT_TRUE (runMessageLoopUntil ([&] { return shownTexts().size() == 2; }));
    EXPECT_EQ (shownTexts(), juce::StringArray ({ "Pitch", "" }));
    EXPECT_NEAR (allOf<ModulationSlider> (matrix()).at (0)->getValue(), 0.75, 1.0e-6);
    EXPECT_EQ (state(), "[4]");
}
