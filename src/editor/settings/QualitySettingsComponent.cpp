// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/QualitySettingsComponent.h"

#include "parameters/IntParameter.h"

namespace K7R
{

namespace
{

constexpr int buttonsWidth = 110;
const juce::BorderSize<int> line { 1 };

} // namespace

QualitySettingsComponent::QualitySettingsComponent (EnumParameter& realTime, EnumParameter& offline) :
    realTimeButtons (&realTime, line),
    offlineButtons (&offline, line)
{
    for (auto* buttons : { &realTimeButtons, &offlineButtons })
        buttons->setSize (buttonsWidth, buttons->getHeight());

    addSetting ("Real-time quality", realTimeButtons);
    addSetting ("Offline quality", offlineButtons);
}

} // namespace K7R
