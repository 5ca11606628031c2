// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "parameters/Parameter.h"

namespace K7R
{

/** The lighter tie between a widget and any number of parameters, for widgets of windows, and for controls of
    several parameters. Parameters are not owned and outlive the widget. For the message thread. */
class ParameterController : public Parameter::Listener
{
public:
    ParameterController() = default;
    ~ParameterController() override;

    ParameterController (const ParameterController&) = delete;
    ParameterController& operator= (const ParameterController&) = delete;

    /** Adds a parameter, shows it and follows it; ignores null, one that isn't accepted, and one that is there. */
    void addParameter (Parameter*);

    /** Null beyond the last. */
    Parameter* getParameter (size_t index) const noexcept
    {
        return index < parameters.size() ? parameters[index] : nullptr;
    }
    size_t getNumParameters() const noexcept { return parameters.size(); }

    void parameterChanged (Parameter& changed) override { updateFromParameter (changed); }

protected:
    /** Gives a parameter a value that the user chose in one act, in a gesture. */
    static void setInGesture (Parameter&, int value);

    virtual bool acceptsParameter (const Parameter&) const { return true; }
    virtual void updateFromParameter (Parameter&) = 0;
    virtual void parameterAdded (Parameter&, size_t /*index*/) {}

private:
    std::vector<Parameter*> parameters;
};

} // namespace K7R
