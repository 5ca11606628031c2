// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R
{

/** What a modulation matrix shows and edits: rows that each lead a source to a destination. An instrument that has such
    a list implements this and gives itself to the component of its skin.

    Called on the message thread. Indexes of rows are those of rows that there are.
*/
class ModulationMatrixModel
{
public:
    struct Row
    {
        int source = -1;      // index in ModulationMatrixComponent::getSources(), -1 for none
        int destination = -1; // index in getDestinations(), -1 for none
        float amount = 0.0f;  // -1 to +1
    };

    /** Of which the component makes no more. */
    static constexpr int maximumRows = 64;

    virtual ~ModulationMatrixModel() = default;

    virtual int getNumRows() const = 0;
    virtual Row getRow (int index) const = 0;

    /** The names of all that can be modulated. */
    virtual juce::StringArray getDestinations() const = 0;

    /** Appends a row. A model that has no more room does nothing. */
    virtual void addRow (const Row&) = 0;
    virtual void removeRow (int index) = 0;

    /** Exchanges two rows. */
    virtual void moveRow (int from, int to) = 0;

    virtual void changeRow (int index, const Row&) = 0;
};

} // namespace K7R
