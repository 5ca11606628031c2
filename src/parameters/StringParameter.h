// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/Parameter.h"

namespace K7R
{

/** A text. Guarded by a read-write lock, so neither read nor set on the audio thread. */
class StringParameter final : public Parameter
{
public:
    StringParameter (int id, const juce::String& name, const juce::String& defaultText);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    /** The text read as a number. */
    float getFloat() const override;
    float getNormalised() const override;
    int getInt() const override;

    /** True when the text read as an integer is 0: the reverse of every other class. */
    bool getBool() const override;
    juce::String getString() const override;
    juce::var getVar() const override;

    // Each stores the decimal text of the number, or "true" or "false".
    bool setFloat (float value, bool notify) override;
    bool setNormalised (float value, bool notify) override;
    bool setInt (int value, bool notify) override;
    bool setBool (bool value, bool notify) override;

    bool setString (const juce::String& text, bool notify) override;
    bool copyFrom (const Parameter& other, bool notify) override;

    /** Stores its decimal text. */
    bool setTypedNumber (double number, bool notify) override;

protected:
    /** Takes any text. */
    bool setTypedText (const juce::String& text, bool notify) override;

private:
    juce::ReadWriteLock lock;
    juce::String value;
};

} // namespace K7R
