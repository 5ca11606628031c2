// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "skin/composite/PlacedComponent.h"
#include "widgets/controls/ModalTextEditor.h"

namespace K7R
{

/** Shows a text, or its parameter's, and lets the user edit it in place. Without a text it shows a default text. */
class TextInput final : public PlacedComponent, private ModalTextEditor::ModalListener
{
public:
    explicit TextInput (const juce::String& controlName);

    /** Reads further "name", the first text, "editable", "defaultText", "justification", the colours, and the child
        "font". A double click only resets the parameter if "paramReset" says so. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;
    void endPendingGesture() override;

    void setText (const juce::String&);
    const juce::String& getText() const noexcept { return text; }

    const juce::Font& getFont() const noexcept { return font; }
    juce::Justification getJustification() const noexcept { return justification; }

    /** The editor while it is open, else null. */
    ModalTextEditor* getOpenEditor() const noexcept;

    void mouseUp (const juce::MouseEvent&) override;
    void mouseDoubleClick (const juce::MouseEvent&) override;
    void paint (juce::Graphics&) override;

private:
    enum class Opening
    {
        never,
        onClick,
        onDoubleClick,
    };

    void readFont (const juce::XmlElement&, SkinFile&);
    void openEditor (Opening, const juce::MouseEvent&);

    void modalEditingFinished (ModalTextEditor&) override;
    void modalTextChanged (ModalTextEditor&, const juce::String& newText) override;

    juce::String text, defaultText;
    Opening opening = Opening::never;
    juce::Font font;
    juce::Justification justification = juce::Justification::left;
    std::unique_ptr<ModalTextEditor> editor; // made when it's first opened
};

} // namespace K7R
