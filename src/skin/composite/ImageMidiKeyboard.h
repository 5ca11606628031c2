// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include <juce_audio_utils/juce_audio_utils.h>

#include "skin/FilmStrip.h"
#include "skin/GUIController.h"

namespace K7R
{

/** Holds the notes of a keyboard. A base of the control, because it has to outlive the component. */
struct KeyboardNotes
{
    juce::MidiKeyboardState noteState;
};

/** A keyboard whose keys are images, each where the skin puts it. What the mouse and the computer's keys do is JUCE's,
    and so is the look of keys without an image. The notes stay in the control's own state: an effect has no use for
    them, and an owner may listen to it. */
class ImageMidiKeyboard final : private KeyboardNotes, public GUIController, public juce::MidiKeyboardComponent
{
public:
    explicit ImageMidiKeyboard (const juce::String& controlName);

    /** Reads further "size", "pos", "firstKey" with "lastKey", and the child "Keys" with "Key" elements, the first of
        which is the first key. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    juce::MidiKeyboardState& getNotes() noexcept { return noteState; }

    /** The key at a place, black ones before white ones; -1 for none. */
    int findKey (juce::Point<int>) const;

    /** Lets go of the keys that are held. */
    void endPendingGesture() override;

    void mouseMove (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void mouseEnter (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override;
    void focusLost (FocusChangeType) override;

    void drawWhiteNote (int note, juce::Graphics&, juce::Rectangle<float> area, bool isDown, bool isOver,
                        juce::Colour lineColour, juce::Colour textColour) override;
    void drawBlackNote (int note, juce::Graphics&, juce::Rectangle<float> area, bool isDown, bool isOver,
                        juce::Colour fillColour) override;
    void timerCallback() override;
    void colourChanged() override;
    void resized() override;
    void paint (juce::Graphics&) override;

private:
    static constexpr int numNotes = 128;

    struct Key
    {
        FilmStrip strip; // up, over, down
        int left = 0, right = 0;
        juce::Rectangle<int> area;
    };

    void readKeys (const juce::XmlElement&, SkinFile&);

    /** Where the mouse finds a key. */
    juce::Rectangle<int> getTarget (int note) const;

    /** @returns whether the key has an image */
    bool drawImage (int note, juce::Graphics&, bool isDown, bool isOver) const;

    /** The same event where JUCE's own layout has the key that it's over. */
    juce::MouseEvent mapped (const juce::MouseEvent&) const;

    /** Repaints if the mouse is on another key now, or presses one. */
    void showMouse (const juce::MouseEvent&);

    template <typename Callback>
    void forEachKey (bool black, Callback&&) const;

    std::array<Key, numNotes> keys;
    std::array<bool, numNotes> shownDown {};
    int shownOver = -1;
    bool hasImages = false;
};

} // namespace K7R
