// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/CategoriesContainer.h"

#include <algorithm>

namespace quilvane
{

void CategoriesContainer::setColumns (std::vector<std::unique_ptr<CategoryComponent>> newColumns)
{
    columns = std::move (newColumns);

    for (auto& column : columns)
        addAndMakeVisible (*column);

    resized();
}

int CategoriesContainer::indexOf (const CategoryComponent& wanted) const
{
    const auto found =
        std::find_if (columns.begin(), columns.end(), [&] (const auto& column) { return column.get() == &wanted; });
    return found != columns.end() ? static_cast<int> (found - columns.begin()) : -1;
}

void CategoriesContainer::resized()
{
    constexpr int margin = 2;

    if (columns.empty())
        return;

    const auto pitch = getWidth() / getNumColumns();

    for (int i = 0; i < getNumColumns(); ++i)
        getColumn (i).setBounds (margin + i * pitch, 0, pitch - 2 * margin, getHeight());

    auto& last = *columns.back();
    last.setBounds (last.getBounds().withRight (getWidth() - margin));
}

} // namespace quilvane
