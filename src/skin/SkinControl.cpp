// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinControl.h"

#include <algorithm>
#include <utility>

#include "parameters/Parameter.h"

namespace K7R
{

SkinControl::~SkinControl()
{
    closeGestures();
}

void SkinControl::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.add (listener);
}

void SkinControl::removeListener (Listener* listener)
{
    listeners.remove (listener);
}

void SkinControl::openGesture (Parameter& parameter)
{
    if (std::find (openGestures.begin(), openGestures.end(), &parameter) != openGestures.end())
        return;

    openGestures.push_back (&parameter);
    parameter.beginGesture();
}

void SkinControl::closeGestures()
{
    for (auto* parameter : std::exchange (openGestures, {}))
        parameter->endGesture();
}

} // namespace K7R
