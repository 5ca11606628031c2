// SPDX-License-Identifier: GPL-3.0-or-later

#include "Formula.h"

#include <cmath>

#include "Failure.h"
#include "Options.h"

namespace K7R::skin
{

namespace
{

constexpr double equalityTolerance = 1.0e-6;

struct Function
{
    const char* name;
    int numArguments;
    double (*compute) (const double*);
};

double sineOfDegrees (const double* a)
{
    return std::sin (juce::degreesToRadians (a[0]));
}

double cosineOfDegrees (const double* a)
{
    return std::cos (juce::degreesToRadians (a[0]));
}

const Function functions[] {
    { "sin", 1, sineOfDegrees },
    { "cos", 1, cosineOfDegrees },
    { "sqrt", 1, [] (const double* a) { return std::sqrt (a[0]); } },
    { "pow", 2, [] (const double* a) { return std::pow (a[0], a[1]); } },
    { "log", 1, [] (const double* a) { return std::log (a[0]); } },
    { "abs", 1, [] (const double* a) { return std::abs (a[0]); } },
    { "floor", 1, [] (const double* a) { return std::floor (a[0]); } },
    { "round", 1, [] (const double* a) { return std::round (a[0]); } },
    { "min", 2, [] (const double* a) { return std::min (a[0], a[1]); } },
    { "max", 2, [] (const double* a) { return std::max (a[0], a[1]); } },
    { "clamp", 3, [] (const double* a) { return std::min (std::max (a[0], a[1]), a[2]); } },
    { "mix", 3, [] (const double* a) { return a[0] + (a[1] - a[0]) * a[2]; } },
    { "atLeast", 2, [] (const double* a) { return a[0] >= a[1] - equalityTolerance ? 1.0 : 0.0; } },
    { "equal", 2, [] (const double* a) { return std::abs (a[0] - a[1]) < equalityTolerance ? 1.0 : 0.0; } },
};

class VariableScope : public juce::Expression::Scope
{
public:
    explicit VariableScope (const Variables& v) : variables (v) {}

    juce::Expression getSymbolValue (const juce::String& symbol) const override
    {
        const auto found = variables.find (symbol);

        if (found == variables.end())
            throw Failure ("there is no variable \"" + symbol + "\"");

        return juce::Expression (found->second);
    }

    double evaluateFunction (const juce::String& name, const double* arguments, int numArguments) const override
    {
        for (const auto& function : functions)
            if (name == function.name && numArguments == function.numArguments)
                return function.compute (arguments);

        throw Failure ("there is no function \"" + name + "\" of " + juce::String (numArguments) + " arguments");
    }

private:
    const Variables& variables;
};

} // namespace

double evaluate (const juce::String& formula, const Variables& variables)
{
    if (const auto number = parseNumber (formula))
        return *number;

    juce::String error;
    const juce::Expression expression (formula, error);

    if (error.isNotEmpty())
        throw Failure ("\"" + formula + "\" is no formula: " + error);

    const auto result = expression.evaluate (VariableScope (variables), error);

    if (error.isNotEmpty() || ! std::isfinite (result))
        throw Failure ("\"" + formula + "\" has no value: " + error);

    return result;
}

} // namespace K7R::skin
