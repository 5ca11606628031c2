// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/IntParameter.h"

#include <array>
#include <cmath>

namespace K7R
{

IntParameter::IntParameter (int id, const juce::String& name, int lowest, int highest, int defaultValue) :
    Parameter (id, name),
    minimum (juce::jmin (lowest, highest)),
    maximum (juce::jmax (lowest, highest)),
    value (juce::jlimit (minimum, maximum, defaultValue))
{
}

std::unique_ptr<Parameter> IntParameter::clone (int newId, const juce::String& newName) const
{
    auto copy = std::make_unique<IntParameter> (newId, newName, minimum, maximum, value.load());
    copyPropertiesTo (*copy);
    return copy;
}

void IntParameter::setRange (int newMinimum, int newMaximum)
{
    minimum = newMinimum;
    maximum = juce::jmax (newMinimum, newMaximum);
    setInt (value, true);
}

float IntParameter::getFloat() const
{
    return static_cast<float> (value.load());
}

float IntParameter::getNormalised() const
{
    return maximum > minimum ? static_cast<float> (value - minimum) / static_cast<float> (maximum - minimum) : 0.0f;
}

int IntParameter::getInt() const
{
    return value;
}

bool IntParameter::getBool() const
{
    return value != minimum;
}

juce::String IntParameter::getString() const
{
    return juce::String (value.load());
}

juce::var IntParameter::getVar() const
{
    return value.load();
}

bool IntParameter::setFloat (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return false;

    // Clamped before the conversion, which is undefined for a number that no integer can hold.
    const auto clamped =
        juce::jlimit (static_cast<double> (minimum), static_cast<double> (maximum), static_cast<double> (newValue));
    return store (static_cast<int> (clamped), notify);
}

bool IntParameter::setNormalised (float newValue, bool notify)
{
    if (std::isnan (newValue))
        return false;

    const auto range = static_cast<float> (maximum - minimum);
    const auto step = static_cast<int> (std::floor (range * juce::jlimit (0.0f, 1.0f, newValue) + 0.5f));
    return store (step + minimum, notify);
}

bool IntParameter::setInt (int newValue, bool notify)
{
    return store (juce::jlimit (minimum, maximum, newValue), notify);
}

bool IntParameter::setBool (bool newValue, bool notify)
{
    return store (newValue ? maximum : minimum, notify);
}

bool IntParameter::setString (const juce::String& text, bool notify)
{
    return setInt (text.getIntValue(), notify);
}

bool IntParameter::copyFrom (const Parameter& other, bool notify)
{
    return setInt (other.getInt(), notify);
}

bool IntParameter::setTypedNumber (double number, bool notify)
{
    if (number != std::floor (number))
        return false;

    setInt (static_cast<int> (juce::jlimit<double> (minimum, maximum, number)), notify);
    return true;
}

bool IntParameter::setTypedText (const juce::String& text, bool notify)
{
    const auto number = readNumber (text, getUnit());
    return number.has_value() && setTypedNumber (*number, notify);
}

bool IntParameter::store (int newValue, bool notify)
{
    if (value.exchange (newValue) == newValue)
        return false;

    if (notify)
        notifyListeners();

    return true;
}

//==============================================================================
EnumParameter::EnumParameter (int id, const juce::String& name) : IntParameter (id, name, 0, 0, 0) {}

std::unique_ptr<Parameter> EnumParameter::clone (int newId, const juce::String& newName) const
{
    auto copy = std::make_unique<EnumParameter> (newId, newName);
    copy->setEnumNames (namesText);
    copy->setInt (getInt(), false);
    copyPropertiesTo (*copy);
    return copy;
}

void EnumParameter::setEnumNames (const juce::String& text)
{
    if (text == namesText)
        return;

    namesText = text;
    names.clear();
    names.addTokens (text, ";", "");
    setRange (0, names.size() - 1);
}

juce::String EnumParameter::getString() const
{
    return names[getInt()];
}

bool EnumParameter::setString (const juce::String& text, bool notify)
{
    const auto index = names.indexOf (text);

    return index >= 0 ? setInt (index, notify) : setNormalised (text.getFloatValue(), notify);
}

bool EnumParameter::setTypedText (const juce::String& text, bool notify)
{
    const auto name = text.trim();

    for (const auto ignoresCase : { false, true })
        for (const auto* ending : { "", getUnit().toRawUTF8() })
            for (int i = 0; i < names.size(); ++i)
                if (const auto shown = (names[i] + juce::String::fromUTF8 (ending)).trim();
                    ignoresCase ? shown.equalsIgnoreCase (name) : shown == name)
                {
                    setInt (i, notify);
                    return true;
                }

    return false;
}

//==============================================================================
namespace
{

constexpr int notesPerOctave = 12;
constexpr int highestNote = 127;
constexpr juce::juce_wchar tenthOctave = 'H';

/** The semitone of a letter from A to G; E sharp and B sharp are written, but not raised. */
int semitone (juce::juce_wchar letter, bool sharp)
{
    static constexpr std::array<int, 7> naturals { 9, 11, 0, 2, 4, 5, 7 };
    static constexpr std::array<int, 7> sharps { 10, 11, 1, 3, 4, 6, 8 };
    const auto index = static_cast<size_t> (letter - 'A');

    return sharp ? sharps[index] : naturals[index];
}

} // namespace

NoteParameter::NoteParameter (int id, const juce::String& name, int defaultNote) :
    IntParameter (id, name, 0, highestNote, defaultNote)
{
}

std::unique_ptr<Parameter> NoteParameter::clone (int newId, const juce::String& newName) const
{
    auto copy = std::make_unique<NoteParameter> (newId, newName, getInt());
    copyPropertiesTo (*copy);
    return copy;
}

juce::String NoteParameter::getString() const
{
    static constexpr std::array<const char*, notesPerOctave> names { "C-", "C#", "D-", "D#", "E-", "F-",
                                                                     "F#", "G-", "G#", "A-", "A#", "B-" };
    const auto note = getInt();
    const auto octave = note / notesPerOctave;

    return juce::String (names[static_cast<size_t> (note % notesPerOctave)])
           + (octave < 10 ? juce::String (octave) : juce::String::charToString (tenthOctave));
}

bool NoteParameter::setString (const juce::String& text, bool notify)
{
    const auto note = parseNoteName (text);

    return note >= 0 ? setInt (note, notify) : setNormalised (text.getFloatValue(), notify);
}

bool NoteParameter::setTypedText (const juce::String& text, bool notify)
{
    auto name = text.trim().toUpperCase();

    if (name.length() == 2)
        name = name.substring (0, 1) + "-" + name.substring (1);

    const auto note = parseNoteName (name);

    if (note < 0)
        return IntParameter::setTypedText (text, notify);

    setInt (note, notify);
    return true;
}

int NoteParameter::parseNoteName (const juce::String& text)
{
    if (text.length() != 3)
        return -1;

    const auto letter = text[0];
    const auto accidental = text[1];
    const auto octave = text[2];

    if (letter < 'A' || letter > 'G' || (accidental != '-' && accidental != '#'))
        return -1;

    if (octave != tenthOctave && (octave < '0' || octave > '9'))
        return -1;

    const auto octaveNumber = octave == tenthOctave ? 10 : static_cast<int> (octave - '0');

    return juce::jmin (highestNote, octaveNumber * notesPerOctave + semitone (letter, accidental == '#'));
}

} // namespace K7R
