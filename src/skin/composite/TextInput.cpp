// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/TextInput.h"

#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

constexpr int margin = 2; // at both sides of the text, in pixels
constexpr const char* defaultTypeface = "Tahoma";
constexpr float defaultHeight = 14.0f;

/** What the element gives a colour to: the editor, and what corresponds to it in the text that is shown. */
struct ColourAttribute
{
    const char* name;
    int editorId;
    int shownId; // 0 for none
};

constexpr ColourAttribute colourAttributes[] {
    { "textColour", juce::TextEditor::textColourId, juce::Label::textColourId },
    { "highlightedTextColour", juce::TextEditor::highlightedTextColourId, 0 },
    { "caretColour", juce::CaretComponent::caretColourId, 0 },
    { "backgroundColour", juce::TextEditor::backgroundColourId, juce::Label::backgroundColourId },
    { "highlightColour", juce::TextEditor::highlightColourId, 0 },
    { "outlineColour", juce::TextEditor::outlineColourId, juce::Label::outlineColourId },
    { "focusedOutlineColour", juce::TextEditor::focusedOutlineColourId, 0 },
};

/** A number of the element within bounds; the fallback for none, and for what is no number. */
float readNumber (const juce::XmlElement& element, const char* attribute, float fallback, float lowest, float highest)
{
    const auto value = static_cast<float> (element.getDoubleAttribute (attribute, static_cast<double> (fallback)));
    return std::isfinite (value) ? juce::jlimit (lowest, highest, value) : fallback;
}

juce::Justification readJustification (const juce::XmlElement& element)
{
    const auto& name = element.getStringAttribute ("justification");

    if (name == "center")
        return juce::Justification::centred;

    return name == "right" ? juce::Justification::right : juce::Justification::left;
}

} // namespace

TextInput::TextInput (const juce::String& controlName) :
    PlacedComponent (controlName),
    font (defaultTypeface, defaultHeight, juce::Font::plain)
{
}

void TextInput::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    setText (element.getStringAttribute ("name"));
    defaultText = element.getStringAttribute ("defaultText").substring (0, longestShownText);
    justification = readJustification (element);

    if (const auto& gesture = element.getStringAttribute ("editable"); gesture == "onClick")
        opening = Opening::onClick;
    else if (gesture == "onDoubleClick")
        opening = Opening::onDoubleClick;

    for (const auto& [name, editorId, shownId] : colourAttributes)
    {
        readColourInto (*this, editorId, element, name);

        if (shownId != 0)
            readColourInto (*this, shownId, element, name);
    }

    if (const auto* child = element.getChildByName ("font"))
        readFont (*child, skin);

    PlacedComponent::readFromXml (element, skin);
    paramReset = element.getBoolAttribute ("paramReset", false);
}

void TextInput::readFont (const juce::XmlElement& element, SkinFile& skin)
{
    constexpr auto largestHeight = static_cast<float> (maximumControlSize);
    constexpr float widestKerning = 10.0f; // of the height

    const auto style = element.getStringAttribute ("styleWIN", element.getStringAttribute ("style", "plain"));
    const auto name = element.getStringAttribute ("name", defaultTypeface);
    const auto isBold = style == "bold";
    const auto height = readNumber (element, "height", defaultHeight, 1.0f, largestHeight);

    if (const auto typeface = skin.getTypeface (name, isBold))
        font = juce::Font (typeface).withHeight (height);
    else
        font = juce::Font (defaultTypeface, height, isBold ? juce::Font::bold : juce::Font::plain);

    font.setExtraKerningFactor (readNumber (element, "extraKerning", 0.0f, -1.0f, widestKerning));
}

void TextInput::updateFromParameter (Parameter& parameter)
{
    setText (parameter.getDisplayText());
}

void TextInput::setText (const juce::String& newText)
{
    text = newText.substring (0, longestShownText);
    repaint();
}

//==============================================================================
ModalTextEditor* TextInput::getOpenEditor() const noexcept
{
    return editor != nullptr && editor->isEditing() ? editor.get() : nullptr;
}

void TextInput::mouseUp (const juce::MouseEvent& e)
{
    if (e.mouseWasClicked() && e.mods.isLeftButtonDown() && getLocalBounds().contains (e.getPosition()))
        openEditor (Opening::onClick, e);
}

void TextInput::mouseDoubleClick (const juce::MouseEvent& e)
{
    openEditor (Opening::onDoubleClick, e);
}

void TextInput::openEditor (Opening gesture, const juce::MouseEvent& e)
{
    if (gesture != opening || ! isEnabled() || belongsToEditor (e.mods) || getOpenEditor() != nullptr)
        return;

    if (editor == nullptr)
    {
        editor = std::make_unique<ModalTextEditor> (getName());
        editor->addModalListener (this);
        editor->setInputRestrictions (longestShownText);
        editor->setBorder ({});
        editor->setIndents (margin, 0);
        editor->setJustification (justification);

        for (const auto& colour : colourAttributes)
            if (isColourSpecified (colour.editorId))
                editor->setColour (colour.editorId, findColour (colour.editorId));

        editor->applyColourToAllText (editor->findColour (juce::TextEditor::textColourId));
    }

    editor->applyFontToAllText (font);
    editor->setText (text, false);
    editor->setBounds (getLocalBounds());
    addAndMakeVisible (*editor);
    editor->startEditing();
}

void TextInput::modalEditingFinished (ModalTextEditor&)
{
    editor->setVisible (false);
    removeChildComponent (editor.get());
}

void TextInput::modalTextChanged (ModalTextEditor&, const juce::String& newText)
{
    if (auto* parameter = getParameter())
    {
        // A text that is refused leaves what stood there.
        sendTypedText (newText);
        return updateFromParameter (*parameter);
    }

    setText (newText);
    notifyValueChanged();
}

void TextInput::endPendingGesture()
{
    if (auto* open = getOpenEditor())
        open->cancelEditing();

    PlacedComponent::endPendingGesture();
}

//==============================================================================
void TextInput::paint (juce::Graphics& g)
{
    g.fillAll (findColour (juce::Label::backgroundColourId));

    g.setColour (findColour (juce::Label::textColourId).withMultipliedAlpha (isEnabled() ? 1.0f : 0.5f));
    g.setFont (font);
    g.drawText (text.isNotEmpty() ? text : defaultText, getLocalBounds().reduced (margin, 0), justification);

    g.setColour (findColour (juce::Label::outlineColourId));
    g.drawRect (getLocalBounds(), 1);
}

} // namespace K7R
