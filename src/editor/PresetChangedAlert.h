// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/controls/FocusableCheckBox.h"
#include "widgets/windows/AlertWindow.h"

namespace K7R
{

/** Warns that stepping to another preset loses changes. Its results are "Yes", "No" and "Cancel". */
class PresetChangedAlert final : public AlertWindow
{
public:
    explicit PresetChangedAlert (Caller*);
    ~PresetChangedAlert() override;

    /** Whether the user doesn't want to be asked again. */
    bool isUnwanted() const { return box.isOn(); }

    void resized() override;

private:
    class LAF;

    std::vector<juce::Component*> getFocusOrder() override;
    int getExtraHeight() const override;

    std::unique_ptr<LAF> look;
    FocusableCheckBox box { "Don't show this warning again" };
};

} // namespace K7R
