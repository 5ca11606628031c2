// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinParameterController.h"

#include <algorithm>

#include "core/BasePlugin.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

void SkinParameterController::readParameter (const juce::XmlElement& param, SkinFile& skin)
{
    auto* parameter = skin.readParameter (param, "name");

    if (parameter != nullptr && ! readBool (param, "reset", true))
        notReset.push_back (parameter);

    addParameter (parameter);
}

bool SkinParameterController::canResetParameterAt (const juce::MouseEvent& e)
{
    const auto* parameter = getParameterAt (e, nullptr);
    return parameter != nullptr && std::find (notReset.begin(), notReset.end(), parameter) == notReset.end();
}

void SkinParameterController::notifyMoved (Parameter& parameter)
{
    listeners.call ([&] (auto& listener) { listener.controllerParameterMoved (parameter); });
}

} // namespace K7R
