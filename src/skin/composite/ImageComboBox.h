// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "skin/FilmStrip.h"
#include "skin/SkinParameterController.h"
#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

/** Shows a parameter's item by a frame of a strip. A press opens a picker with a tile for each item, which floats over
    the editor; a press on a tile chooses the item. */
class ImageComboBox final : public SkinParameterController, private FloatingComponentOwner::Callback
{
public:
    explicit ImageComboBox (const juce::String& controlName);
    ~ImageComboBox() override;

    /** Reads the children "pos", "size", "gfx", "picker" and "param", by their exact names. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Opens the picker, or closes it. Nothing opens without a parameter, or where nobody shows what floats. */
    void togglePicker();
    bool isPickerOpen() const noexcept { return picker != nullptr; }

    Parameter* getParameterAt (const juce::MouseEvent&, juce::Component**) override { return getParameter (0); }
    std::vector<Part> getParts() override;
    void endPendingGesture() override;

    void mouseDown (const juce::MouseEvent&) override;
    void paint (juce::Graphics&) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

protected:
    bool acceptsParameter (const Parameter&) const override { return getNumParameters() == 0; }
    void updateFromParameter (Parameter&) override;

private:
    class Picker;

    enum class Justification
    {
        centred,
        tileAligned,
    };

    juce::String getItemText() const;
    void readPicker (const juce::XmlElement&, SkinFile&);
    const FilmStrip& getTileStrip() const { return tileStrip.isValid() ? tileStrip : strip; }
    void closePicker (const juce::MouseEvent*);

    /** The item that the user took; the picker is gone then. */
    void choose (int index, const juce::MouseEvent*);
    void floatingComponentHidden (juce::Component&, const juce::MouseEvent*) override;

    FilmStrip strip;
    FilmStrip tileStrip; // of the picker, if it has one of its own
    Justification justification = Justification::centred;
    int alignTile = 0;
    int tilesInRow = 1;
    bool showValues = false;
    juce::Point<int> offset;
    int currentIndex = 0;
    std::unique_ptr<Picker> picker; // null while closed
};

} // namespace K7R
