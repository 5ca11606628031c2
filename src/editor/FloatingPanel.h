// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/PanelComponent.h"

namespace quilvane
{

/** The ground of what floats over the panel: dark, as the status bar is. Escape hides it. */
class FloatingPanel : public PanelComponent
{
public:
    FloatingPanel();

    bool keyPressed (const juce::KeyPress&) override;

    static constexpr int margin = 10;
};

} // namespace quilvane
