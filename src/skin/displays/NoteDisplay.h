// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "skin/FilmStrip.h"
#include "skin/GUIController.h"

namespace K7R
{

/** Shows a note by its letter, its sharp and its octave, each a cell of its own strip. Frame 0 of each strip is
    blank, and the last one stands for no note. */
class NoteDisplay final : public GUIController, public juce::Component
{
public:
    explicit NoteDisplay (const juce::String& controlName);

    /** Reads further the children "size" (of one cell), "pos", and "gfx" with its children "notes" (9 frames),
        "tones" (4) and "octaves" (13). */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;

    /** @param midiNote 0 to 127; 60 is C5 */
    void setNote (int midiNote);
    void setNoteOff (bool shouldShowNoNote);

    /** What the cells show, as their fallbacks do: "C#5". */
    juce::String getShownText() const;

    void enablementChanged() override { repaint(); }
    void paint (juce::Graphics&) override;

private:
    struct Cell
    {
        FilmStrip strip;
        juce::Rectangle<int> area;
    };

    void blinkChanged() override { repaint(); }
    juce::String textOf (size_t cell) const;
    int frameOf (size_t cell) const;

    std::array<Cell, 3> cells; // note, tone, octave
    int note = 0;
    bool noteOff = false;
};

} // namespace K7R
