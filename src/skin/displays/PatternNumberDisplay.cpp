// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/PatternNumberDisplay.h"

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/displays/NoteNames.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

constexpr int defaultWidth = 100, defaultHeight = 16;
constexpr int firstLetter = 11; // the frame of the first letter of notes, and of a sharp
constexpr int separator = 18;

/** Frames 1 to 10. */
juce::String digitText (int frame)
{
    return juce::isPositiveAndBelow (frame - 1, 10) ? juce::String (frame - 1) : juce::String();
}

} // namespace

PatternNumberDisplayDigit::PatternNumberDisplayDigit (int frames) : GFXAnimation ({}), numFrames (frames)
{
    framesNum = numFrames;
}

void PatternNumberDisplayDigit::readStripFrom (const juce::XmlElement& gfx, const char* attribute, SkinFile& skin)
{
    setStrip (readStrip (gfx, attribute, numFrames, skin));
}

void PatternNumberDisplayDigit::paintFallback (juce::Graphics& g)
{
    Fallbacks::paintCell (g, getLocalBounds(), getCurrentFrame() == 0, getText (getCurrentFrame()));
}

juce::String PatternNumberDisplayFirstDigit::getText (int frame) const
{
    // Banks count from frame 2.
    return frame == firstLetter ? "N"
           : frame >= 2         ? juce::String::charToString (static_cast<juce::juce_wchar> ('A' + frame - 2))
                                : juce::String();
}

juce::String PatternNumberDisplaySecondDigit::getText (int frame) const
{
    if (frame == separator)
        return "-";

    return juce::isPositiveAndBelow (frame - firstLetter, 7)
               ? juce::String::charToString (static_cast<juce::juce_wchar> (NoteNames::letters[frame - firstLetter]))
               : digitText (frame);
}

juce::String PatternNumberDisplayThirdDigit::getText (int frame) const
{
    return frame == firstLetter ? juce::String ("#") : digitText (frame);
}

juce::String PatternNumberDisplayFourthDigit::getText (int frame) const
{
    return digitText (frame);
}

//==============================================================================
PatternNumberDisplay::PatternNumberDisplay (const juce::String& controlName) : juce::Component (controlName)
{
    for (auto* digit : digits)
    {
        digit->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (digit);
    }

    show();
}

void PatternNumberDisplay::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);

    const auto readRange = [&] (const juce::String& prefix, Range& range)
    {
        range.minimum = juce::jmax (0, element.getIntAttribute (prefix + "Min", range.minimum));
        range.maximum = juce::jmax (range.minimum, element.getIntAttribute (prefix + "Max", range.maximum));
    };

    readRange ("notePattern", noteRange);
    readRange ("numericPattern", numericRange);
    readRange ("bankAndSlotPattern", bankAndSlotRange);
    slotMax = juce::jlimit (4, 16, element.getIntAttribute ("slotMax", slotMax));

    applyPosition (*this, element.getChildByName ("pos"));

    auto size = juce::Point<int> (defaultWidth, defaultHeight);

    if (const auto* xml = element.getChildByName ("size"))
        size = { xml->hasAttribute ("width") ? readSize (*xml).x : defaultWidth, readSize (*xml).y };

    setSize (size.x, size.y);

    const std::array<const char*, 4> attributes { "firstDigit", "secondDigit", "thirdDigit", "fourthDigit" };

    for (size_t i = 0; i < digits.size(); ++i)
    {
        if (const auto* gfx = element.getChildByName ("gfx"))
            digits[i]->readStripFrom (*gfx, attributes[i], skin);

        digits[i]->setBounds (static_cast<int> (i) * getWidth() / 4, 0, getWidth() / 4, getHeight());
    }

    value = juce::jlimit (rangeOf (displayMode).minimum, rangeOf (displayMode).maximum, value);
    show();
}

const PatternNumberDisplay::Range& PatternNumberDisplay::rangeOf (Mode mode) const
{
    return mode == Mode::note ? noteRange : mode == Mode::numeric ? numericRange : bankAndSlotRange;
}

void PatternNumberDisplay::setMode (Mode mode)
{
    displayMode = mode;
    value = juce::jlimit (rangeOf (mode).minimum, rangeOf (mode).maximum, value);
    show();
}

void PatternNumberDisplay::updateFromParameter (Parameter& parameter)
{
    const auto& range = rangeOf (displayMode);
    const auto newValue = juce::jlimit (range.minimum, range.maximum, parameter.getInt());

    if (std::exchange (value, newValue) != newValue)
        show();
}

std::array<int, 4> PatternNumberDisplay::getFrames() const
{
    if (! isEnabled())
        return { 0, 0, 0, 0 };

    if (displayMode == Mode::note)
        return { 11, firstLetter + NoteNames::letterOf (value), NoteNames::isSharp (value) ? 11 : 12,
                 NoteNames::octaveOf (value) + 1 };

    if (displayMode == Mode::numeric)
        return { 0, value / 10 + 1, value % 10 + 1, 0 };

    const auto slot = (value - 1) % slotMax + 1;
    return { (value - 1) / slotMax + 2, separator, slot / 10 + 1, slot % 10 + 1 };
}

void PatternNumberDisplay::show()
{
    const auto frames = getFrames();

    for (size_t i = 0; i < digits.size(); ++i)
        digits[i]->show (frames[i]);
}

} // namespace K7R
