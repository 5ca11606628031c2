// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinParameterController.h"

#include <algorithm>

#include "core/BasePlugin.h"
#include "skin/SkinElement.h"
#include "skin/SkinFile.h"

namespace quilvane
{

SkinParameterController::~SkinParameterController()
{
    endGestures();
}

void SkinParameterController::addListener (GUIController::Listener* listener)
{
    if (listener != nullptr)
        listeners.add (listener);
}

void SkinParameterController::removeListener (GUIController::Listener* listener)
{
    listeners.remove (listener);
}

void SkinParameterController::readParameter (const juce::XmlElement& param, SkinFile& skin)
{
    auto* parameter = skin.getPlugin().getParameters().getParameterByName (param.getStringAttribute ("name"));

    if (parameter != nullptr && ! readBool (param, "reset", true))
        notReset.push_back (parameter);

    addParameter (parameter);
}

bool SkinParameterController::canResetParameterAt (const juce::MouseEvent& e)
{
    const auto* parameter = getParameterAt (e, nullptr);
    return parameter != nullptr && std::find (notReset.begin(), notReset.end(), parameter) == notReset.end();
}

//==============================================================================
void SkinParameterController::beginGesture (Parameter& parameter)
{
    if (std::find (openGestures.begin(), openGestures.end(), &parameter) != openGestures.end())
        return;

    openGestures.push_back (&parameter);
    parameter.beginGesture();
}

void SkinParameterController::notifyMoved (Parameter& parameter)
{
    listeners.call ([&] (auto& listener) { listener.controllerParameterMoved (parameter); });
}

void SkinParameterController::endGestures()
{
    for (auto* parameter : std::exchange (openGestures, {}))
        parameter->endGesture();
}

} // namespace quilvane
