// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/CategoriesContainer.h"

#include <utility>

namespace K7R
{

CategoriesContainer::CategoriesContainer (Owner& toAsk, const juce::String& title) : owner (toAsk)
{
    places.setInterceptsMouseClicks (false, true);
    setViewedComponent (&places, false);
    setScrollBarsShown (false, true);
    setWantsKeyboardFocus (false);
    getHorizontalScrollBar().setTitle (title);
}

CategoriesContainer::~CategoriesContainer()
{
    setViewedComponent (nullptr, false);
}

void CategoriesContainer::setNumColumns (int number)
{
    columns.clear();
    columns.resize (static_cast<size_t> (number));
    layOut();
}

void CategoriesContainer::refresh()
{
    for (auto& column : columns)
        column.isFilled = false;

    update();
}

void CategoriesContainer::layOut()
{
    const auto needsBar = getPreferredWidth() > getWidth();
    places.setSize (getPreferredWidth(), getHeight() - (needsBar ? getScrollBarThickness() : 0));

    for (auto& column : columns)
        if (column.component != nullptr)
            column.component->setSize (column.component->getWidth(), places.getHeight());

    update();
}

void CategoriesContainer::update()
{
    constexpr int margin = 2;
    const auto area = getViewArea();

    for (auto index = area.getX() / columnWidth; index * columnWidth < area.getRight(); ++index)
    {
        if (! juce::isPositiveAndBelow (index, static_cast<int> (columns.size())))
            break;

        auto& column = columns[static_cast<size_t> (index)];

        if (column.component == nullptr)
        {
            column.component = owner.createColumn (index);
            places.addAndMakeVisible (*column.component);
            column.component->setBounds (index * columnWidth + margin, 0, columnWidth - 2 * margin, places.getHeight());
        }

        if (! std::exchange (column.isFilled, true))
            owner.fillColumn (index, *column.component);
    }
}

void CategoriesContainer::resized()
{
    juce::Viewport::resized();
    layOut();
}

} // namespace K7R
