// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "skin/composite/ModulationMatrixModel.h"

namespace K7R::test
{

/** Modulations in place of an instrument's. */
class InMemoryModulation final : public ModulationMatrixModel
{
public:
    int getNumRows() const override { return static_cast<int> (rows.size()); }
    Row getRow (int index) const override { return rows.at (static_cast<size_t> (index)); }
    juce::StringArray getDestinations() const override { return destinations; }

    void addRow (const Row& row) override { rows.push_back (row); }
    void removeRow (int index) override { rows.erase (rows.begin() + index); }
    void moveRow (int from, int to) override
    {
        std::swap (rows.at (static_cast<size_t> (from)), rows.at (static_cast<size_t> (to)));
    }
    void changeRow (int index, const Row& row) override { rows.at (static_cast<size_t> (index)) = row; }

    std::vector<Row> rows;
    juce::StringArray destinations { "Cutoff", "Resonance", "Oscillator 2 fine tuning", "Volume" };
};

} // namespace K7R::test
