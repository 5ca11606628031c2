// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include "skin/FilmStrip.h"
#include "skin/GUIController.h"
#include "widgets/controls/FieldWatcher.h"

namespace K7R
{

/** One image cell of a display: a frame of a strip, which blinks with its own clock. */
class DisplayCell : public juce::Component, public BlinkingComponent
{
public:
    void setStrip (const FilmStrip& newStrip)
    {
        strip = newStrip;
        repaint();
    }

    void enablementChanged() override { repaint(); }
    void paint (juce::Graphics&) override;

protected:
    virtual int getFrame() const = 0;
    virtual juce::String getFallbackText() const = 0;

private:
    void blinkChanged() override { repaint(); }

    FilmStrip strip;
};

/** Shows a digit, or nothing. Its strip has the frames blank and 0 to 9. */
class NumericDisplayDigit final : public DisplayCell
{
public:
    static constexpr int numFrames = 11;

    void show (int newDigit, bool blank);
    int getDigit() const noexcept { return digit; }
    bool isShownBlank() const noexcept { return isBlank; }

private:
    int getFrame() const override { return isBlank ? 0 : digit + 1; }
    juce::String getFallbackText() const override { return isBlank ? juce::String() : juce::String (digit); }

    int digit = 0;
    bool isBlank = false;
};

/** Shows a minus, or nothing. Its strip has the frames blank and minus. */
class NumericDisplaySign final : public DisplayCell
{
public:
    static constexpr int numFrames = 2;

    void show (bool negative);
    bool isShownNegative() const noexcept { return isNegative; }

private:
    int getFrame() const override { return isNegative ? 1 : 0; }
    juce::String getFallbackText() const override { return isNegative ? "-" : juce::String(); }

    bool isNegative = false;
};

/** Shows a number by one image cell for each digit, and moves it by vertical drags: the digit under the mouse, or
    the whole value. After a click digits can be typed: they come in from the right, until Return, Escape or a press
    elsewhere. */
class NumericDisplay final : public GUIController, public juce::Component
{
public:
    explicit NumericDisplay (const juce::String& controlName);
    ~NumericDisplay() override;

    /** Reads further "digitsNum", "firstDigitOrder", "minValue", "maxValue" and "control", and the children "size"
        (of one digit), "pos" and "gfx" with its children "sign" and "digits". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;
    void updateFromParameter (Parameter&) override;

    /** Clamps the value into the range and shows it.
        @param notify gives it to the parameter, too, if it is another one */
    void setValue (double newValue, bool notify);

    double getValue() const noexcept { return value; }
    double getMinimum() const noexcept { return minValue; }
    double getMaximum() const noexcept { return maxValue; }
    bool hasSign() const noexcept { return sign != nullptr; }
    bool isShownNegative() const noexcept { return sign != nullptr && sign->isShownNegative(); }

    /** The digits as they are shown, from the left: "042". */
    juce::String getShownDigits() const;

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusLost (FocusChangeType) override { fieldWatcher.fieldLostFocus(); }
    void endPendingGesture() override;
    void paintOverChildren (juce::Graphics&) override;

private:
    void startEditing();
    void stopEditing (bool keepsNumber);
    bool edit (const juce::KeyPress&);
    void sendTypedDigits();
    void showTypedDigits();
    void readRange (const juce::XmlElement&);
    void buildCells (const juce::XmlElement&, SkinFile&);
    void showValue();
    double weightOf (int digitIndex) const;

    std::vector<std::unique_ptr<NumericDisplayDigit>> digits;
    std::unique_ptr<NumericDisplaySign> sign;
    int digitsNum = 1;
    int firstDigitOrder = 1; // its decimal exponent
    double absoluteMin = 0.0, absoluteMax = 0.0;
    double minValue = 0.0, maxValue = 0.0;
    double value = 0.0;
    int digitWidth = 10, digitHeight = 16;
    bool continuousControl = false;

    double dragStartValue = 0.0;
    double dragWeight = 0.0; // 0 for no drag

    bool isEditing = false;
    bool typedMinus = false;
    juce::String typed; // digits; what is shown before there are any is the value
    FieldWatcher fieldWatcher { *this, [this] { stopEditing (true); } };
};

} // namespace K7R
