// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/Parameter.h"

namespace K7R
{

/** A switch; its machine text is "true" or "false". */
class BoolParameter : public Parameter
{
public:
    BoolParameter (int id, const juce::String& name);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    float getFloat() const override;
    float getNormalised() const override;
    int getInt() const override;
    bool getBool() const override;
    juce::String getString() const override;
    juce::var getVar() const override;

    /** On for every value but 0. */
    bool setFloat (float value, bool notify) override;

    /** On from 0.5. */
    bool setNormalised (float value, bool notify) override;
    bool setInt (int value, bool notify) override;
    bool setBool (bool value, bool notify) override;

    /** Takes "true", "1", "on", "yes" and their opposites, compared exactly; any other text is read
        as a normalised number. */
    bool setString (const juce::String& text, bool notify) override;
    bool copyFrom (const Parameter& other, bool notify) override;

    /** Takes 0 and 1. */
    bool setTypedNumber (double number, bool notify) override;

protected:
    /** Takes the words of setString() in any case. */
    bool setTypedText (const juce::String& text, bool notify) override;

    template <typename Class>
    std::unique_ptr<Parameter> cloneAs (int newId, const juce::String& newName) const
    {
        auto copy = std::make_unique<Class> (newId, newName);
        copy->setBool (getBool(), false);
        copyPropertiesTo (*copy);
        return copy;
    }

private:
    std::atomic<bool> value { false };
};

//==============================================================================
/** A switch that reads "On" or "Off", in any case. */
class StateParameter final : public BoolParameter
{
public:
    using BoolParameter::BoolParameter;

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;
    juce::String getString() const override;
    bool setString (const juce::String& text, bool notify) override;
};

/** A switch that reads "1" or "0". */
class LogicParameter final : public BoolParameter
{
public:
    using BoolParameter::BoolParameter;

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;
    juce::String getString() const override;
};

/** A switch that reads "yes" or "no". */
class AnswerParameter final : public BoolParameter
{
public:
    using BoolParameter::BoolParameter;

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;
    juce::String getString() const override;
};

} // namespace K7R
