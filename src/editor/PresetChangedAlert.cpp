// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/PresetChangedAlert.h"

#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int roomAboveBox = 10;

} // namespace

/** The title bar of a warning. */
class PresetChangedAlert::LAF final : public DefaultLookAndFeel
{
public:
    LAF() { setColour (windowTitleId, findColour (accentDarkId)); }
};

PresetChangedAlert::PresetChangedAlert (Caller* toTell) :
    AlertWindow (toTell, "Preset change warning",
                 "Parameters have been changed.\nDo you want to save them before changing preset?"),
    look (std::make_unique<LAF>())
{
    setLookAndFeel (look.get());
    addAndMakeVisible (box);
    addButton (yes, false, true);
    addButton (no, false, false);
    addButton (cancel, true, false);
}

PresetChangedAlert::~PresetChangedAlert()
{
    setLookAndFeel (nullptr);
}

int PresetChangedAlert::getExtraHeight() const
{
    return box.getHeight() + roomAboveBox;
}

void PresetChangedAlert::resized()
{
    AlertWindow::resized();
    box.setTopLeftPosition (getExtraArea().getX(), getExtraArea().getY() + roomAboveBox);
}

std::vector<juce::Component*> PresetChangedAlert::getFocusOrder()
{
    auto order = AlertWindow::getFocusOrder();
    order.insert (order.begin(), &box);
    return order;
}

} // namespace K7R
