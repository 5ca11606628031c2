// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/Parameter.h"

namespace K7R
{

/** An integer in a range. */
class IntParameter : public Parameter
{
public:
    IntParameter (int id, const juce::String& name, int minimum, int maximum, int defaultValue);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    int getMinimum() const noexcept { return minimum; }
    int getMaximum() const noexcept { return maximum; }

    float getFloat() const override;
    float getNormalised() const override;
    int getInt() const override;

    /** True for every value but the minimum. */
    bool getBool() const override;
    juce::String getString() const override;
    juce::var getVar() const override;

    /** Truncates towards zero. */
    bool setFloat (float value, bool notify) override;

    /** Rounds to the nearest value. */
    bool setNormalised (float value, bool notify) override;
    bool setInt (int value, bool notify) override;
    bool setBool (bool value, bool notify) override;
    bool setString (const juce::String& text, bool notify) override;
    bool copyFrom (const Parameter& other, bool notify) override;

    /** Takes whole numbers only. */
    bool setTypedNumber (double number, bool notify) override;

protected:
    bool setTypedText (const juce::String& text, bool notify) override;

    /** Changes the range and clamps the value into it, with a notification if that changed it. */
    void setRange (int newMinimum, int newMaximum);

private:
    bool store (int newValue, bool notify);

    int minimum;
    int maximum;
    std::atomic<int> value;
};

//==============================================================================
/** One of a list of names; the value is the index in the list. */
class EnumParameter : public IntParameter
{
public:
    /** Starts with no names and the value 0. */
    EnumParameter (int id, const juce::String& name);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    /** Takes the names from a text that separates them with ";". */
    void setEnumNames (const juce::String& text);

    const juce::StringArray& getEnumNames() const noexcept { return names; }

    /** The name of the value. */
    juce::String getString() const override;

    /** Takes a name, compared exactly; any other text is read as a normalised number. */
    bool setString (const juce::String& text, bool notify) override;

protected:
    /** Takes a name in any case, and no number that isn't one. */
    bool setTypedText (const juce::String& text, bool notify) override;

private:
    juce::StringArray names;
    juce::String namesText;
};

//==============================================================================
/** A MIDI note, 0 to 127, written as letter, "-" or "#", and octave: "C-4", "F#H" (H is octave 10). */
class NoteParameter : public IntParameter
{
public:
    NoteParameter (int id, const juce::String& name, int defaultNote);

    std::unique_ptr<Parameter> clone (int newId, const juce::String& newName) const override;

    juce::String getString() const override;

    /** Takes a note name; any other text is read as a normalised number. */
    bool setString (const juce::String& text, bool notify) override;

    /** The note of a three-character name, at most 127; -1 for any other text. */
    static int parseNoteName (const juce::String& text);

protected:
    /** Takes a note name in any case, with or without the "-" of a natural, and the note's number. */
    bool setTypedText (const juce::String& text, bool notify) override;
};

} // namespace K7R
