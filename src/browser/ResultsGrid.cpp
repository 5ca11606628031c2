// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/ResultsGrid.h"

#include <utility>

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int rowHeight = 20, narrowColumn = 160, wideColumn = 320, textMargin = 3;
constexpr float fadeOfUnticked = 0.7692308f;

juce::Colour faded (juce::Colour colour)
{
    const auto fade = [] (juce::uint8 channel)
    { return static_cast<juce::uint8> (255.0f - static_cast<float> (255 - channel) * fadeOfUnticked); };
    return { fade (colour.getRed()), fade (colour.getGreen()), fade (colour.getBlue()) };
}

} // namespace

/** One place that is seen, with the item that stands there now. */
class ResultsGrid::ResultButton final : public juce::Button
{
public:
    explicit ResultButton (ResultsGrid& parent) : juce::Button ({}), grid (parent)
    {
        setWantsKeyboardFocus (false);
        setMouseClickGrabsKeyboardFocus (false);
        setTriggeredOnMouseDown (true);
    }

    void showResult (int newIndex)
    {
        index = newIndex;
        const auto& [item, isSelected] = getResult();
        setName (item->name);
        setTitle (item->name);
        setDescription (item->source->getName());
        setToggleState (isSelected, juce::dontSendNotification);
        repaint();
    }

    void clicked (const juce::ModifierKeys& modifiers) override { grid.owner.resultClicked (index, modifiers); }
    void mouseDoubleClick (const juce::MouseEvent& e) override { grid.owner.resultDoubleClicked (index, e.mods); }

    void paintButton (juce::Graphics& g, bool isOver, bool) override
    {
        const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel());

        if (look == nullptr || ! juce::isPositiveAndBelow (index, grid.list.size()))
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

        const auto* keys = grid.getParentComponent();

        if (index == grid.list.getCurrentIndex() && keys != nullptr && keys->hasKeyboardFocus (true))
            look->drawFocusRing (g, getLocalBounds());
    }

private:
    const ResultList::Result& getResult() const { return grid.list.getResults()[static_cast<size_t> (index)]; }

    ResultsGrid& grid;
    int index = 0;
};

//==============================================================================
ResultsGrid::ResultsGrid (const ResultList& results, Owner& toTell) :
    list (results),
    owner (toTell),
    widestColumn (narrowColumn)
{
    places.setInterceptsMouseClicks (false, true);
    setViewedComponent (&places, false);
    setScrollBarsShown (false, true);
    setWantsKeyboardFocus (false);
    getHorizontalScrollBar().setTitle ("Results");
}

ResultsGrid::~ResultsGrid()
{
    setViewedComponent (nullptr, false);
}

void ResultsGrid::layOut()
{
    const auto width = getWidth();
    const auto height = getHeight() - getScrollBarThickness();
    rows = juce::jmax (0, height / rowHeight);
    columnWidth = juce::jmax (1, width / juce::jmax (width / widestColumn, 1));

    if (rows > 0)
    {
        const auto numColumns = (list.size() + rows - 1) / rows;
        const auto remainder = width % columnWidth;
        margin = { remainder / 2, (height - rows * rowHeight) / 2 };
        places.setSize (juce::jmax (width, numColumns * columnWidth + remainder), height);
    }

    update();
}

void ResultsGrid::update()
{
    size_t used = 0;

    if (rows > 0)
    {
        const auto area = getViewArea();
        const auto first = juce::jmax (0, (area.getX() - margin.x) / columnWidth) * rows;
        const auto end = juce::jmin (list.size(), ((area.getRight() - margin.x) / columnWidth + 1) * rows);

        for (auto index = first; index < end; ++index, ++used)
        {
            if (used == buttons.size())
            {
                buttons.push_back (std::make_unique<ResultButton> (*this));
                places.addChildComponent (*buttons.back());
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

juce::Rectangle<int> ResultsGrid::placeOf (int index) const
{
    if (rows == 0)
        return {};

    return { margin.x + index / rows * columnWidth, margin.y + index % rows * rowHeight, columnWidth, rowHeight };
}

void ResultsGrid::show (int index)
{
    if (index < 0 || rows == 0)
        return;

    const auto place = placeOf (index);
    const auto seen = getViewArea();

    if (place.getX() < seen.getX())
        setViewPosition (place.getX(), 0);
    else if (place.getRight() > seen.getRight())
        setViewPosition (place.getRight() - seen.getWidth(), 0);
}

void ResultsGrid::changeView()
{
    widestColumn = widestColumn == narrowColumn ? wideColumn : narrowColumn;
    layOut();
    show (list.getCurrentIndex());
}

void ResultsGrid::resized()
{
    juce::Viewport::resized();
    layOut();
}

void ResultsGrid::visibleAreaChanged (const juce::Rectangle<int>&)
{
    update();
}

void ResultsGrid::mouseWheelMove (const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel)
{
    // The grid only goes sideways, so the wheel does too.
    auto sideways = wheel;

    if (sideways.deltaX == 0.0f)
        std::swap (sideways.deltaX, sideways.deltaY);

    juce::Viewport::mouseWheelMove (e, sideways);
}

} // namespace K7R
