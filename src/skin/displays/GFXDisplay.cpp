// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/GFXDisplay.h"

#include <utility>

#include "parameters/StringParameter.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

constexpr int caretIntervalMs = 500;
constexpr juce::juce_wchar ellipsis = 0x2026;

} // namespace

GFXDisplay::GFXDisplay (const juce::String& controlName) : juce::Component (controlName)
{
    // A click that begins an edit asks for the focus itself.
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
            font.readFromXml (*child, skin);
        else if (child->hasTagName ("size"))
            setSize (readSize (*child).x, readSize (*child).y);
        else if (child->hasTagName ("pos"))
            setTopLeftPosition (readPosition (*child));
    }

    setText (element.getStringAttribute ("name"));
}

void GFXDisplay::updateFromParameter (Parameter& parameter)
{
    // The text that the user types stays until the edit ends.
    if (! isEditing)
        setText (parameter.getDisplayText());
}

void GFXDisplayFloat::updateFromParameter (Parameter& parameter)
{
    if (isBeingEdited())
        return;

    juce::String number (parameter.getFloat());
    const auto numVisible = countVisible();

    // A point that would be the last character to be seen is pushed out.
    if (number.length() >= numVisible && number[numVisible - 1] == '.')
        number = " " + number;

    setText (number);
}

bool GFXDisplayFloat::sendText (const juce::String& typed)
{
    if (const auto number = readNumber (typed, {}))
        return sendTypedNumber (*number);

    return GFXDisplay::sendText (typed);
}

void GFXDisplay::setText (const juce::String& newText)
{
    const auto shortened = newText.substring (0, longestShownText);

    if (shortened == text)
        return;

    text = shortened;
    repaint();
}

int GFXDisplay::countVisible() const
{
    return juce::jmax (1, getWidth() / font.getGlyphWidth());
}

bool GFXDisplay::isName() const
{
    return dynamic_cast<const StringParameter*> (getParameter()) != nullptr;
}

bool GFXDisplay::isCutOff() const
{
    const auto isLonger =
        font.isValid() ? text.length() > countVisible() : juce::Font().getStringWidth (text) > getWidth();
    return isLonger && ! isEditing;
}

juce::String GFXDisplay::getTooltip()
{
    return getParameter() != nullptr && isCutOff() ? text : juce::String();
}

//==============================================================================
void GFXDisplay::mouseDown (const juce::MouseEvent& e)
{
    if (! isEnabled() || belongsToEditor (e.mods))
        return;

    if (! isEditing)
        startEditing();
    else
        clearSelection();

    if (isShowing())
        grabKeyboardFocus();
}

void GFXDisplay::mouseDoubleClick (const juce::MouseEvent& e)
{
    // The editor resets the parameter now.
    if (getParameter() != nullptr && canResetParameterAt (e))
        stopEditing (false);
}

void GFXDisplay::startEditing()
{
    // A value is edited as it is seen: a longer text without the end of its unit.
    if (auto* parameter = getParameter(); parameter != nullptr && isCutOff())
    {
        const auto seen = text.substring (0, countVisible());
        const auto probe = parameter->clone (parameter->getId(), parameter->getName());

        if (probe->setDisplayText (seen, false) && probe->getDisplayText() == text)
            text = seen;
    }

    // Only now: a window that is given the focus passes it on to whoever had it last and wants it.
    setWantsKeyboardFocus (true);
    isEditing = true;
    caretPosition = text.length();
    caretVisible = true;
    allIsSelected = getParameter() != nullptr && ! isName();
    editStartText = text;
    startTimer (caretIntervalMs);
    fieldWatcher.start();
    showCaret();
}

void GFXDisplay::endPendingGesture()
{
    GUIController::endPendingGesture();
    stopEditing (false);
}

void GFXDisplay::stopEditing (bool keepsText)
{
    // To give the focus away is to lose it, which ends here again.
    if (! std::exchange (isEditing, false))
        return;

    stopTimer();
    fieldWatcher.stop();
    caretPosition = firstVisible = 0;
    giveAwayKeyboardFocus();
    setWantsKeyboardFocus (false);
    repaint();

    const auto isEdited = keepsText && text != editStartText;

    if (! isEdited)
        text = editStartText;
    else if (getParameter() != nullptr)
        sendText (text);

    // Shows the value that the parameter took, or has; it may have moved meanwhile.
    if (auto* parameter = getParameter())
        updateFromParameter (*parameter);

    if (isEdited && text != editStartText)
        textListeners.call ([this] (auto& listener) { listener.displayTextEdited (*this); });
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
    // Other keys with modifiers are commands.
    if (! isEditing || key.getModifiers().withoutFlags (juce::ModifierKeys::shiftModifier).isAnyModifierKeyDown())
        return false;

    if (! edit (key))
        return false;

    if (isEditing)
        showCaret();

    return true;
}

void GFXDisplay::showCaret()
{
    caretPosition = juce::jlimit (0, text.length(), caretPosition);
    firstVisible = juce::jlimit (juce::jmax (0, caretPosition - countVisible() + 1), caretPosition, firstVisible);
    repaint();
}

bool GFXDisplay::edit (const juce::KeyPress& key)
{
    const auto character = key.getTextCharacter();

    if (! key.getModifiers().isShiftDown() && editWithControlKey (key.getKeyCode()))
        return true;

    if (! juce::CharacterFunctions::isPrintable (character))
        return false;

    removeSelected();

    if (text.length() < longestShownText)
    {
        text =
            text.substring (0, caretPosition) + juce::String::charToString (character) + text.substring (caretPosition);
        ++caretPosition;
    }

    return true;
}

bool GFXDisplay::editWithControlKey (int code)
{
    const auto removeAt = [this] (int index) { text = text.substring (0, index) + text.substring (index + 1); };

    if (code == juce::KeyPress::returnKey)
        stopEditing (true);
    else if (code == juce::KeyPress::escapeKey)
        stopEditing (false);
    else if (code == juce::KeyPress::backspaceKey)
    {
        if (! removeSelected() && caretPosition > 0)
            removeAt (--caretPosition);
    }
    else if (code == juce::KeyPress::deleteKey)
    {
        if (! removeSelected())
            removeAt (caretPosition);
    }
    else if (code == juce::KeyPress::homeKey)
        caretPosition = 0;
    else if (code == juce::KeyPress::endKey)
        caretPosition = text.length();
    else if (code == juce::KeyPress::leftKey)
        --caretPosition;
    else if (code == juce::KeyPress::rightKey)
        ++caretPosition;
    else
        return false;

    clearSelection();
    return true;
}

bool GFXDisplay::removeSelected()
{
    if (! std::exchange (allIsSelected, false))
        return false;

    text.clear();
    caretPosition = 0;
    return true;
}

void GFXDisplay::clearSelection()
{
    if (std::exchange (allIsSelected, false))
        repaint();
}

//==============================================================================
juce::String GFXDisplay::getShownText() const
{
    if (isBlinkedOff() && ! isEditing)
        return {};

    // A value loses only the end of its unit.
    if (font.isValid() && isName() && isCutOff())
        return text.substring (0, countVisible() - 1).trimEnd() + juce::String::charToString (ellipsis);

    return text;
}

void GFXDisplay::paint (juce::Graphics& g)
{
    g.fillAll (findColour (juce::TextEditor::backgroundColourId));

    const auto shown = getShownText();
    const auto withCaret = isEditing && caretVisible;
    const auto isSelected = isEditing && allIsSelected;

    if (! font.isValid())
        return paintPlain (g, shown, withCaret);

    const auto numColumns = getWidth() / font.getGlyphWidth() + 1;
    auto character = shown.getCharPointer();

    for (int i = 0; i < firstVisible && ! character.isEmpty(); ++i)
        ++character;

    for (int column = 0; column < numColumns; ++column)
    {
        const auto atCaret = withCaret && firstVisible + column == caretPosition;

        // Behind the last character the caret stands on a blank.
        if (character.isEmpty() && ! atCaret)
            break;

        const auto isMarked = atCaret || (isSelected && ! character.isEmpty());
        font.draw (g, character.isEmpty() ? ' ' : character.getAndAdvance(), column * font.getGlyphWidth(), isMarked);
    }
}

void GFXDisplay::paintPlain (juce::Graphics& g, const juce::String& shown, bool withCaret)
{
    if (isEditing && allIsSelected)
    {
        g.setColour (findColour (juce::CaretComponent::caretColourId).withMultipliedAlpha (0.5f));
        g.fillRect (0, 0, g.getCurrentFont().getStringWidth (shown), getHeight());
    }

    g.setColour (juce::Colours::white);
    g.drawText (shown, getLocalBounds(), juce::Justification::centredLeft, isName());

    if (withCaret)
    {
        const auto x = g.getCurrentFont().getStringWidth (shown.substring (0, caretPosition));
        g.setColour (findColour (juce::CaretComponent::caretColourId));
        g.fillRect (x, 0, 1, getHeight());
    }
}

} // namespace K7R
