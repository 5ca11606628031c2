// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/GUIController.h"

namespace quilvane
{

/** Shows a text in a bitmap font, from its left edge on, and lets the user edit it.

    The font is an image as wide as one glyph, with the glyphs from the top down, and twice: the second set is for
    the character under the caret. While the text is edited the field lies over its place as a window of its own.
*/
class GFXDisplay : public GUIController, public juce::Component, private juce::Timer
{
public:
    class TextListener
    {
    public:
        virtual ~TextListener() = default;

        /** An edit has ended, and the text is another one. */
        virtual void displayTextEdited (GFXDisplay&) = 0;
    };

    explicit GFXDisplay (const juce::String& controlName);

    /** Reads further "name" (the first text), "caretColour", "backgroundColour", "readonly", and the children "gfx"
        ("resource", "fontHeight", "firstASCII"), "size" and "pos". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;
    void endPendingGesture() override;

    void setText (const juce::String&);
    const juce::String& getText() const noexcept { return text; }
    bool isBeingEdited() const noexcept { return isEditing; }

    void addTextListener (TextListener* listener) { textListeners.add (listener); }
    void removeTextListener (TextListener* listener) { textListeners.remove (listener); }

    void mouseDown (const juce::MouseEvent&) override;
    void focusLost (FocusChangeType) override;
    bool keyPressed (const juce::KeyPress&) override;
    void paint (juce::Graphics&) override;

protected:
    int getGlyphWidth() const noexcept { return glyphWidth; }

private:
    void readFont (const juce::XmlElement& gfx, SkinFile&);
    void blinkChanged() override { repaint(); }
    void timerCallback() override;
    void startEditing();
    void stopEditing();
    bool edit (const juce::KeyPress&);
    void drawGlyph (juce::Graphics&, juce::juce_wchar character, int column, bool atCaret) const;

    juce::Image fontImage;
    int glyphWidth = 8;
    int fontHeight = 0;
    int firstASCII = 32, lastASCII = 160;

    juce::String text;
    juce::String editStartText;
    bool isEditing = false;
    bool caretVisible = false;
    int caretPosition = 0;
    int firstVisible = 0; // the character at the left edge

    juce::Component::SafePointer<juce::Component> homeParent;
    juce::Rectangle<int> homeBounds;
    int homeIndex = -1; // among the parent's children
    ListenerArray<TextListener> textListeners;
};

/** Shows a parameter's plain value as a number. */
class GFXDisplayFloat final : public GFXDisplay
{
public:
    using GFXDisplay::GFXDisplay;

    void updateFromParameter (Parameter&) override;
};

} // namespace quilvane
