// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/ParameterController.h"

#include <algorithm>

namespace K7R
{

ParameterController::~ParameterController()
{
    for (auto* parameter : parameters)
        parameter->removeAsyncListener (this);
}

void ParameterController::addParameter (Parameter* parameter)
{
    if (parameter == nullptr || ! acceptsParameter (*parameter)
        || std::find (parameters.begin(), parameters.end(), parameter) != parameters.end())
        return;

    parameters.push_back (parameter);
    parameterAdded (*parameter, parameters.size() - 1);
    updateFromParameter (*parameter);
    parameter->addAsyncListener (this);
}

void ParameterController::setInGesture (Parameter& parameter, int value)
{
    parameter.beginGesture();
    parameter.setInt (value, true);
    parameter.endGesture();
}

} // namespace K7R
