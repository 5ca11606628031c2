// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/Parameter.h"

namespace K7R
{

/** A number in a range, with a curve between its normalised and its plain value.

    The curve here is linear; a subclass overrides both directions. Both words are stored, the plain
    one clamped to the range, the normalised one to 0..1: where a curve covers less than the range,
    a plain value beyond its ends is kept while the normalised one stays at its end.
*/
class FloatParameter : public Parameter
{
public:
    /** The ends may come in either order; the default is clamped between them. */
    FloatParameter (int id, const juce::String& name, float end1, float end2, float defaultValue);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    float getMinimum() const noexcept { return minimum; }
    float getMaximum() const noexcept { return maximum; }

    float getFloat() const override;
    float getNormalised() const override;
    int getInt() const override;

    /** True from a normalised value of 0.5 on. */
    bool getBool() const override;
    juce::String getString() const override;
    juce::var getVar() const override;

    bool setFloat (float value, bool notify) override;
    bool setNormalised (float value, bool notify) override;
    bool setInt (int value, bool notify) override;

    /** True stores the maximum with a normalised value of 0, false the minimum with 1: here, and
        only here, the normalised word runs against the plain one. */
    bool setBool (bool value, bool notify) override;
    bool setString (const juce::String& text, bool notify) override;
    bool copyFrom (const Parameter& other, bool notify) override;
    bool setTypedNumber (double number, bool notify) override;

protected:
    virtual float normalisedToValue (float normalisedValue) const;
    virtual float valueToNormalised (float plainValue) const;

    /** For the constructor of a subclass: takes the default's normalised value from its own curve,
        unclamped. */
    void initialiseNormalised (float normalisedValue) noexcept { normalised = normalisedValue; }

    void copyStateTo (FloatParameter& other) const;
    bool setTypedText (const juce::String& text, bool notify) override;

private:
    bool store (float newValue, float newNormalised, bool notify);

    const float minimum;
    const float maximum;
    std::atomic<float> value;
    std::atomic<float> normalised;
};

} // namespace K7R
