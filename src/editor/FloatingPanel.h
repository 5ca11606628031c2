// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/controls/PanelComponent.h"

namespace K7R
{

/** The ground of what floats over the panel: dark, as the status bar is. Escape hides it. */
class FloatingPanel : public PanelComponent
{
public:
    FloatingPanel();

    bool keyPressed (const juce::KeyPress&) override;

    /** Gives the focus on to what it's for. */
    void focusGained (FocusChangeType) override;

    static constexpr int margin = 10;

protected:
    /** What the keyboard begins with; null for the panel itself. */
    virtual juce::Component* getFirstFocus();
};

} // namespace K7R
