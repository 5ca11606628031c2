// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "browser/CategoryComponent.h"

namespace quilvane
{

/** Lays columns out side by side. */
class CategoriesContainer final : public juce::Component
{
public:
    /** Takes other columns, which it owns. */
    void setColumns (std::vector<std::unique_ptr<CategoryComponent>>);

    int getNumColumns() const noexcept { return static_cast<int> (columns.size()); }
    CategoryComponent& getColumn (int index) { return *columns[static_cast<size_t> (index)]; }

    /** The position of a column. */
    int indexOf (const CategoryComponent&) const;

    void resized() override;

private:
    std::vector<std::unique_ptr<CategoryComponent>> columns;
};

} // namespace quilvane
