// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editor/DefaultSettingsComponent.h"
#include "widgets/RadioTextButtons.h"

namespace quilvane
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

} // namespace quilvane
