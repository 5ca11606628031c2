// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "editor/settings/DefaultSettingsComponent.h"
#include "widgets/controls/FocusableCheckBox.h"

namespace K7R
{

/** Whether stepping to another preset warns of changes that would be lost. */
class PresetSettingsComponent final : public DefaultSettingsComponent
{
public:
    /** @param onChange told of the user's choice */
    explicit PresetSettingsComponent (std::function<void (bool warns)> onChange)
    {
        addSetting (box);
        box.onClick = [this, toCall = std::move (onChange)] { toCall (box.isOn()); };
    }

    void setWarning (bool warns) { box.setOn (warns); }

private:
    FocusableCheckBox box { "If parameters were changed show warning before loading Prev/Next preset" };
};

} // namespace K7R
