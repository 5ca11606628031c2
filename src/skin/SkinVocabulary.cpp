// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinVocabulary.h"

#include <algorithm>
#include <array>

#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

enum class Kind
{
    control,   // has what all controls have, too
    composite, // says all that it has, and regards the case of names
    part,
};

struct Word
{
    const char* tag;
    Kind kind;
    const char* attributes;
    const char* children;
};

constexpr const char* controlAttributes = "name paramReset";
constexpr const char* controlChildren = "pos size gfx links actions";
constexpr const char* anyControl = "*";

/** The contents of each element: a control, or a part of one or of the document. A part may have what any of the
    controls reads from it: a size without effect beside an image is no mistake. */
constexpr std::array<Word, 43> vocabulary { {
    { "Knob", Kind::control, "", "" },
    { "Switch", Kind::control, "style thumb", "" },
    { "Animation", Kind::control, "", "" },
    { "Button", Kind::control, "clickEvent autorepeat", "" },
    { "ToggleButton", Kind::control, "style clickEvent radioGroupId", "" },
    { "MultiStateButton", Kind::control, "style states clickEvent radioGroupId", "" },
    { "Display", Kind::control, "backgroundColour caretColour readonly", "" },
    { "DisplayFloat", Kind::control, "backgroundColour caretColour readonly", "" },
    { "Rocker", Kind::control, "type", "" },
    { "Panel", Kind::control, "bkgCol", "controls" },
    { "NumericDisplay", Kind::control, "digitsNum firstDigitOrder minValue maxValue control", "" },
    { "NoteDisplay", Kind::control, "", "" },
    { "PatternNumberDisplay", Kind::control,
      "notePatternMin notePatternMax numericPatternMin numericPatternMax bankAndSlotPatternMin bankAndSlotPatternMax "
      "slotMax",
      "" },
    { "MidiKeyboard", Kind::control, "firstKey lastKey", "Keys" },
    { "PitchBender", Kind::control, "", "" },
    { "ModWheel", Kind::control, "", "" },
    { "ModulationMatrix", Kind::control, "", "" },
    { "MidiChannelDisplay", Kind::control, "", "" },
    { "TextInput", Kind::control,
      "editable defaultText justification textColour backgroundColour outlineColour caretColour highlightColour "
      "highlightedTextColour focusedOutlineColour",
      "font" },
    { "ImageComboBox", Kind::composite, "name", "pos size gfx picker param" },
    { "Mixer", Kind::composite, "name background thumb readOnly", "pos size gfx parameters" },

    { "PluginEditor", Kind::part, "", "Fonts Panel" },
    { "Fonts", Kind::part, "", "font" },
    { "font", Kind::part, "typeface style file name styleWIN height extraKerning", "" },
    { "controls", Kind::part, "ofsX ofsY", anyControl },
    { "pos", Kind::part, "left top", "" },
    { "size", Kind::part, "width height", "" },
    { "gfx", Kind::part, "resource framesNum fontHeight firstASCII firstDigit secondDigit thirdDigit fourthDigit gaps",
      "sign digits notes tones octaves image" },
    { "links", Kind::part, "", "link" },
    { "link", Kind::part, "param as", "" },
    { "actions", Kind::part, "", "action" },
    { "action", Kind::part, "type event", "" },
    { "sign", Kind::part, "resource", "" },
    { "digits", Kind::part, "resource", "" },
    { "notes", Kind::part, "resource", "" },
    { "tones", Kind::part, "resource", "" },
    { "octaves", Kind::part, "resource", "" },
    { "image", Kind::part, "strip name frames", "" },
    { "Keys", Kind::part, "", "Key" },
    { "Key", Kind::part, "left right", "gfx pos size" },
    { "picker", Kind::part, "resource framesNum tilesInRow justification tile xOfs yOfs values", "" },
    { "parameters", Kind::part, "", "param" },
    { "param", Kind::part, "name reset", "" },
} };

bool isSame (const juce::String& a, const char* b, bool withCase)
{
    return withCase ? a == b : a.equalsIgnoreCase (b);
}

/** Whether a name stands in a list, which blanks divide. */
bool isIn (const juce::String& name, const juce::String& list, bool withCase)
{
    const auto words = juce::StringArray::fromTokens (list, false);
    return words.contains (name, ! withCase);
}

void check (const juce::XmlElement& element, bool withCase, SkinFile& skin)
{
    const auto word =
        std::find_if (vocabulary.begin(), vocabulary.end(),
                      [&] (const auto& candidate) { return isSame (element.getTagName(), candidate.tag, withCase); });

    if (word == vocabulary.end())
        return; // a control that there isn't

    const auto isControl = word->kind == Kind::control;
    const auto attributes = juce::String (word->attributes) + " " + (isControl ? controlAttributes : "");
    const auto children = juce::String (word->children) + " " + (isControl ? controlChildren : "");
    withCase = withCase || word->kind == Kind::composite;

    for (int i = 0; i < element.getNumAttributes(); ++i)
        if (! isIn (element.getAttributeName (i), attributes, true))
            skin.report (&element, "the attribute \"" + element.getAttributeName (i) + "\" means nothing here");

    for (const auto* child : element.getChildIterator())
    {
        if (child->isTextElement())
            continue;

        if (children.startsWith (anyControl) || isIn (child->getTagName(), children, withCase))
            check (*child, withCase, skin);
        else
            skin.report (child, "the element means nothing here");
    }
}

} // namespace

void reportUnknownNames (const juce::XmlElement& element, SkinFile& skin)
{
    check (element, false, skin);
}

} // namespace K7R
