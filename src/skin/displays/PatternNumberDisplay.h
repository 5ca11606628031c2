// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "skin/displays/GFXAnimation.h"

namespace K7R
{

/** One of the four cells of a PatternNumberDisplay; without a strip it shows a text of its own. */
class PatternNumberDisplayDigit : public GFXAnimation
{
public:
    explicit PatternNumberDisplayDigit (int numFrames);

    /** Takes the strip that an attribute names, of the digit's own number of frames. */
    void readStripFrom (const juce::XmlElement& gfx, const char* attribute, SkinFile&);

    void show (int frame) { showFrame (frame); }

protected:
    /** What stands in for a frame; frame 0 is blank. */
    virtual juce::String getText (int frame) const = 0;

private:
    void paintFallback (juce::Graphics&) override;

    const int numFrames;
};

/** A blank, the digits 0 to 9 or the letters of banks, and the mark of a note. */
class PatternNumberDisplayFirstDigit final : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayFirstDigit() : PatternNumberDisplayDigit (12) {}

private:
    juce::String getText (int frame) const override;
};

/** A blank, the digits, the letters of notes, and the separator between bank and slot. */
class PatternNumberDisplaySecondDigit final : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplaySecondDigit() : PatternNumberDisplayDigit (19) {}

private:
    juce::String getText (int frame) const override;
};

/** A blank, the digits, sharp and natural. */
class PatternNumberDisplayThirdDigit final : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayThirdDigit() : PatternNumberDisplayDigit (13) {}

private:
    juce::String getText (int frame) const override;
};

/** A blank and the digits. */
class PatternNumberDisplayFourthDigit final : public PatternNumberDisplayDigit
{
public:
    PatternNumberDisplayFourthDigit() : PatternNumberDisplayDigit (11) {}

private:
    juce::String getText (int frame) const override;
};

/** Shows a pattern's number in one of three ways: as a note, as a number, or as bank and slot. */
class PatternNumberDisplay final : public GUIController, public juce::Component
{
public:
    enum class Mode
    {
        note,
        numeric,
        bankAndSlot,
    };

    /** With 12 slots in a bank. */
    explicit PatternNumberDisplay (const juce::String& controlName);

    /** Reads further the ranges of the three modes and "slotMax", and the children "pos", "size" and "gfx" with a
        strip for each digit. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;

    /** Nothing in the product changes it from the note yet. */
    void setMode (Mode);

    int getSlotMax() const noexcept { return slotMax; }

    /** The frames that the four digits show. */
    std::array<int, 4> getFrames() const;

    void enablementChanged() override { show(); }

private:
    struct Range
    {
        int minimum, maximum;
    };

    const Range& rangeOf (Mode) const;
    void show();

    Range noteRange { 0, 127 }, numericRange { 1, 16 }, bankAndSlotRange { 1, 96 };
    int slotMax = 12;
    Mode displayMode = Mode::note;
    int value = 0;

    PatternNumberDisplayFirstDigit firstDigit;
    PatternNumberDisplaySecondDigit secondDigit;
    PatternNumberDisplayThirdDigit thirdDigit;
    PatternNumberDisplayFourthDigit fourthDigit;
    const std::array<PatternNumberDisplayDigit*, 4> digits { &firstDigit, &secondDigit, &thirdDigit, &fourthDigit };
};

} // namespace K7R
