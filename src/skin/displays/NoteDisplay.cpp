// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/NoteDisplay.h"

#include <utility>

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/displays/NoteNames.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

constexpr std::array<const char*, 3> cellTags { "notes", "tones", "octaves" };
constexpr std::array<int, 3> cellFrames { 9, 4, 13 };
constexpr int lastNote = 127;

} // namespace

NoteDisplay::NoteDisplay (const juce::String& controlName) : juce::Component (controlName)
{
    constexpr int width = 10, height = 16;

    for (size_t i = 0; i < cells.size(); ++i)
        cells[i].area = { static_cast<int> (i) * width, 0, width, height };

    setSize (static_cast<int> (cells.size()) * width, height);
}

void NoteDisplay::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);

    const auto* gfx = element.getChildByName ("gfx");
    auto cellSize = cells[0].area.getBottomRight();

    if (const auto* size = element.getChildByName ("size"))
        cellSize = readSize (*size);

    for (size_t i = 0; i < cells.size(); ++i)
    {
        if (gfx != nullptr)
            if (const auto* strip = gfx->getChildByName (cellTags[i]))
                cells[i].strip = readStrip (*strip, "resource", cellFrames[i], skin);

        cells[i].area = { static_cast<int> (i) * cellSize.x, 0, cellSize.x, cellSize.y };
    }

    setSize (static_cast<int> (cells.size()) * cellSize.x, cellSize.y);

    applyPosition (*this, element.getChildByName ("pos"));
}

void NoteDisplay::updateFromParameter (Parameter& parameter)
{
    setNote (parameter.getInt());
}

void NoteDisplay::setNote (int midiNote)
{
    midiNote = juce::jlimit (0, lastNote, midiNote);

    if (std::exchange (note, midiNote) != midiNote)
        repaint();
}

void NoteDisplay::setNoteOff (bool shouldShowNoNote)
{
    noteOff = shouldShowNoNote;
    repaint();
}

int NoteDisplay::frameOf (size_t cell) const
{
    if (noteOff)
        return cellFrames[cell] - 1;

    const std::array<int, 3> indexes { NoteNames::letterOf (note), NoteNames::isSharp (note) ? 1 : 0,
                                       NoteNames::octaveOf (note) };
    return indexes[cell] + 1;
}

juce::String NoteDisplay::textOf (size_t cell) const
{
    if (noteOff)
        return "-";

    if (cell == 0)
        return juce::String::charToString (
            static_cast<juce::juce_wchar> (NoteNames::letters[NoteNames::letterOf (note)]));

    if (cell == 1)
        return NoteNames::isSharp (note) ? "#" : "";

    return juce::String (NoteNames::octaveOf (note));
}

juce::String NoteDisplay::getShownText() const
{
    return textOf (0) + textOf (1) + textOf (2);
}

void NoteDisplay::paint (juce::Graphics& g)
{
    const auto isDark = ! isEnabled() || isBlinkedOff();

    for (size_t i = 0; i < cells.size(); ++i)
        Fallbacks::paintCell (g, cells[i].strip, cells[i].area, isDark, frameOf (i), textOf (i));
}

} // namespace K7R
