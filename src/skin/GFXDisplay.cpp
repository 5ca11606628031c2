// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/GFXDisplay.h"

#include "skin/SkinElement.h"
#include "skin/SkinFile.h"

namespace quilvane
{

namespace
{

constexpr int caretIntervalMs = 500;
constexpr int longestText = 1024;

} // namespace

GFXDisplay::GFXDisplay (const juce::String& controlName) : juce::Component (controlName)
{
    setWantsKeyboardFocus (true);

    // The click asks for the focus itself, as a direct wish, which begins the edit.
    setMouseClickGrabsKeyboardFocus (false);
}

void GFXDisplay::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);

    setColour (juce::CaretComponent::caretColourId, readColour (element, "caretColour"));
    setColour (juce::TextEditor::backgroundColourId, readColour (element, "backgroundColour"));
    setEnabled (element.getStringAttribute ("readonly", "no") != "yes");

    for (const auto* child : element.getChildIterator())
    {
        if (child->hasTagName ("gfx"))
            readFont (*child, skin);
        else if (child->hasTagName ("size"))
            setSize (readSize (*child).x, readSize (*child).y);
        else if (child->hasTagName ("pos"))
            setTopLeftPosition (readPosition (*child));
    }

    setText (element.getStringAttribute ("name"));
}

void GFXDisplay::readFont (const juce::XmlElement& gfx, SkinFile& skin)
{
    if (const auto image = skin.getImage (gfx.getStringAttribute ("resource")); image.isValid())
    {
        fontImage = image;
        glyphWidth = image.getWidth();
    }

    fontHeight = juce::jlimit (0, maximumControlSize, gfx.getIntAttribute ("fontHeight"));

    if (const auto first = gfx.getStringAttribute ("firstASCII", " "); first.isNotEmpty())
        firstASCII = static_cast<int> (static_cast<juce::uint32> (first[0]));

    // Half of the image's rows are for the caret.
    const auto numGlyphs = fontHeight >= 1 ? fontImage.getHeight() / 2 / fontHeight : 1;
    lastASCII = firstASCII + juce::jmax (0, numGlyphs - 1);
}

void GFXDisplay::updateFromParameter (Parameter& parameter)
{
    // What the user types stands until it's done.
    if (! isEditing)
        setText (parameter.getDisplayText());
}

void GFXDisplayFloat::updateFromParameter (Parameter& parameter)
{
    if (isBeingEdited())
        return;

    juce::String number (parameter.getFloat());
    const auto numVisible = getWidth() / juce::jmax (1, getGlyphWidth());

    // A point that would be the last character to be seen is pushed out.
    if (numVisible > 0 && number.length() >= numVisible && number[numVisible - 1] == '.')
        number = " " + number;

    setText (number);
}

void GFXDisplay::setText (const juce::String& newText)
{
    // No display is as long; texts of presets and skins can be.
    const auto shortened = newText.substring (0, longestText);

    if (shortened == text)
        return;

    text = shortened;
    repaint();
}

//==============================================================================
void GFXDisplay::mouseDown (const juce::MouseEvent& e)
{
    if (! isEnabled() || belongsToEditor (e.mods))
        return;

    // A window that is given the focus passes it on to any field that wants it; only a click begins an edit.
    if (! isEditing)
        startEditing();

    if (isShowing())
        grabKeyboardFocus();
}

void GFXDisplay::startEditing()
{
    isEditing = true;
    caretPosition = text.length();
    caretVisible = true;
    editStartText = text;
    startTimer (caretIntervalMs);

    if (homeParent == nullptr && getParentComponent() != nullptr && isShowing())
    {
        homeParent = getParentComponent();
        homeBounds = getBounds();
        homeIndex = homeParent->getIndexOfChildComponent (this);

        const auto screenBounds = getScreenBounds();
        addToDesktop (juce::ComponentPeer::windowIsTemporary);
        setBounds (screenBounds);
        setVisible (true);
        toFront (true);
        grabKeyboardFocus();
    }

    repaint();
}

void GFXDisplay::focusLost (FocusChangeType)
{
    // Moving to the desktop takes the focus for a moment.
    juce::MessageManager::callAsync (
        [safe = juce::Component::SafePointer<GFXDisplay> (this)]
        {
            if (safe != nullptr && ! safe->hasKeyboardFocus (true))
                safe->stopEditing();
        });
}

void GFXDisplay::endPendingGesture()
{
    GUIController::endPendingGesture();
    stopEditing();
}

void GFXDisplay::stopEditing()
{
    if (! isEditing)
        return;

    stopTimer();
    isEditing = false;
    caretPosition = firstVisible = 0;

    if (auto* parent = homeParent.getComponent())
    {
        homeParent = nullptr;
        removeFromDesktop();
        parent->addChildComponent (this, homeIndex);
        setBounds (homeBounds);
    }

    giveAwayKeyboardFocus();
    repaint();

    if (text != editStartText)
        textListeners.call ([this] (auto& listener) { listener.displayTextEdited (*this); });
    else if (auto* parameter = getParameter())
        updateFromParameter (*parameter); // which may have moved meanwhile
}

void GFXDisplay::timerCallback()
{
    if (! hasKeyboardFocus (true))
        return;

    caretVisible = ! caretVisible;
    repaint();
}

bool GFXDisplay::keyPressed (const juce::KeyPress& key)
{
    if (! isEditing || key.getModifiers().isAnyModifierKeyDown())
        return false;

    if (! edit (key))
        return false;

    if (! isEditing)
        return true; // it was the end of the edit

    caretPosition = juce::jlimit (0, text.length(), caretPosition);

    const auto numVisible = juce::jmax (1, getWidth() / juce::jmax (1, glyphWidth));
    firstVisible = juce::jlimit (juce::jmax (0, caretPosition - numVisible + 1), caretPosition, firstVisible);
    repaint();
    return true;
}

bool GFXDisplay::edit (const juce::KeyPress& key)
{
    const auto code = key.getKeyCode();
    const auto character = key.getTextCharacter();
    const auto removeAt = [this] (int index) { text = text.substring (0, index) + text.substring (index + 1); };

    if (code == juce::KeyPress::returnKey)
        stopEditing();
    else if (code == juce::KeyPress::escapeKey)
    {
        text = editStartText;
        stopEditing();
    }
    else if (code == juce::KeyPress::backspaceKey)
    {
        if (caretPosition > 0)
            removeAt (--caretPosition);
    }
    else if (code == juce::KeyPress::deleteKey)
        removeAt (caretPosition);
    else if (code == juce::KeyPress::homeKey)
        caretPosition = 0;
    else if (code == juce::KeyPress::endKey)
        caretPosition = text.length();
    else if (code == juce::KeyPress::leftKey)
        --caretPosition;
    else if (code == juce::KeyPress::rightKey)
        ++caretPosition;
    else if (juce::CharacterFunctions::isPrintable (character))
    {
        text =
            text.substring (0, caretPosition) + juce::String::charToString (character) + text.substring (caretPosition);
        ++caretPosition;
    }
    else
        return false;

    return true;
}

//==============================================================================
void GFXDisplay::paint (juce::Graphics& g)
{
    g.fillAll (findColour (juce::TextEditor::backgroundColourId));

    const auto shown = isBlinkedOff() && ! isEditing ? juce::String() : text;
    const auto showCaret = isEditing && caretVisible;

    if (! fontImage.isValid())
    {
        g.setColour (juce::Colours::white);
        g.drawText (shown, getLocalBounds(), juce::Justification::centredLeft, false);

        if (showCaret)
        {
            const auto x = g.getCurrentFont().getStringWidth (shown.substring (0, caretPosition));
            g.setColour (findColour (juce::CaretComponent::caretColourId));
            g.fillRect (x, 0, 1, getHeight());
        }

        return;
    }

    const auto numVisible = getWidth() / glyphWidth + 1;
    auto character = shown.getCharPointer();

    for (int i = 0; i < firstVisible && ! character.isEmpty(); ++i)
        ++character;

    for (int column = 0; column < numVisible; ++column)
    {
        const auto atCaret = showCaret && firstVisible + column == caretPosition;

        if (character.isEmpty())
        {
            // Behind the last character the caret stands on a blank.
            if (atCaret)
                drawGlyph (g, ' ', column, true);

            break;
        }

        drawGlyph (g, character.getAndAdvance(), column, atCaret);
    }
}

void GFXDisplay::drawGlyph (juce::Graphics& g, juce::juce_wchar character, int column, bool atCaret) const
{
    const auto code = static_cast<int> (static_cast<juce::uint32> (character));
    const auto index =
        juce::isPositiveAndNotGreaterThan (code - firstASCII, lastASCII - firstASCII) ? code - firstASCII : 0;
    const auto row = index + (atCaret ? lastASCII - firstASCII + 1 : 0);

    g.drawImageAt (fontImage.getClippedImage ({ 0, row * fontHeight, glyphWidth, fontHeight }), column * glyphWidth, 0);
}

} // namespace quilvane
