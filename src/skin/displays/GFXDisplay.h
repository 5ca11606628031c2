// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "skin/GUIController.h"
#include "skin/displays/BitmapFont.h"
#include "widgets/controls/FieldWatcher.h"

namespace K7R
{

/** Shows a text in a bitmap font, from its left edge on, and lets the user edit it in place.

    A click on a value selects the whole of it, so that the first character that is typed replaces it; in any other
    text the caret stands behind the last character. What was typed goes to the parameter. A text that names none of its values is refused, and what stood there comes
    back. A name that is too long ends in an ellipsis; the tooltip tells the whole of what is cut off.
*/
class GFXDisplay : public GUIController, public juce::Component, public juce::TooltipClient, private juce::Timer
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

    juce::String getTooltip() override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDoubleClick (const juce::MouseEvent&) override;
    void focusLost (FocusChangeType) override { fieldWatcher.fieldLostFocus(); }
    bool keyPressed (const juce::KeyPress&) override;
    void paint (juce::Graphics&) override;

protected:
    /** How many characters are seen as a whole, at least 1. */
    int countVisible() const;

    /** Gives what the user typed to the parameter; false if it's refused. */
    virtual bool sendText (const juce::String& typed) { return sendTypedText (typed); }

private:
    void blinkChanged() override { repaint(); }
    void timerCallback() override;
    void startEditing();
    void stopEditing (bool keepsText);
    bool edit (const juce::KeyPress&);
    bool editWithControlKey (int code);
    bool removeSelected();
    void clearSelection();
    void showCaret();
    juce::String getShownText() const;
    bool isName() const;
    bool isCutOff() const;
    void paintPlain (juce::Graphics&, const juce::String& shown, bool withCaret);

    BitmapFont font;
    juce::String text;
    juce::String editStartText;
    bool isEditing = false;
    bool caretVisible = false;
    bool allIsSelected = false; // while a value is edited, until the first key
    int caretPosition = 0;
    int firstVisible = 0; // the character at the left edge
    ListenerArray<TextListener> textListeners;
    FieldWatcher fieldWatcher { *this, [this] { stopEditing (true); } };
};

/** Shows a parameter's plain value as a number. */
class GFXDisplayFloat final : public GFXDisplay
{
public:
    using GFXDisplay::GFXDisplay;

    void updateFromParameter (Parameter&) override;

private:
    bool sendText (const juce::String& typed) override;
};

} // namespace K7R
