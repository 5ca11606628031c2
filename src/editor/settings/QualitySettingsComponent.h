// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editor/settings/DefaultSettingsComponent.h"
#include "widgets/controls/RadioTextButtons.h"

namespace K7R
{

class EnumParameter;

/** The two qualities of processing: those of one instance, or the defaults of new ones. */
class QualitySettingsComponent final : public DefaultSettingsComponent
{
public:
    QualitySettingsComponent (EnumParameter& realTime, EnumParameter& offline);

private:
    RadioTextButtons realTimeButtons, offlineButtons;
};

} // namespace K7R
