// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/displays/NumericDisplay.h"

#include <cmath>
#include <utility>

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int maximumDigits = 10;
constexpr int pixelsPerStep = 4; // of a drag

double powerOfTen (int exponent)
{
    return std::pow (10.0, exponent);
}

double clampInto (double number, double low, double high)
{
    return number >= low ? juce::jmin (number, high) : low; // the lowest for what is no number
}

} // namespace

void DisplayCell::paint (juce::Graphics& g)
{
    Fallbacks::paintCell (g, strip, getLocalBounds(), ! isEnabled() || isBlinkedOff(), getFrame(), getFallbackText());
}

void NumericDisplayDigit::show (int newDigit, bool blank)
{
    if (digit == newDigit && isBlank == blank)
        return;

    digit = newDigit;
    isBlank = blank;
    repaint();
}

void NumericDisplaySign::show (bool negative)
{
    if (std::exchange (isNegative, negative) != negative)
        repaint();
}

//==============================================================================
NumericDisplay::NumericDisplay (const juce::String& controlName) : juce::Component (controlName)
{
    setMouseClickGrabsKeyboardFocus (false); // a click that begins an edit asks for it
}

NumericDisplay::~NumericDisplay() = default;

void NumericDisplay::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);

    digitsNum = juce::jlimit (1, maximumDigits, element.getIntAttribute ("digitsNum", 1));
    readRange (element);
    continuousControl = element.getStringAttribute ("control").equalsIgnoreCase ("continous");

    if (const auto* size = element.getChildByName ("size"))
    {
        digitWidth = size->hasAttribute ("width") ? readSize (*size).x : digitWidth;
        digitHeight = size->hasAttribute ("height") ? readSize (*size).y : digitHeight;
    }

    buildCells (element, skin);

    applyPosition (*this, element.getChildByName ("pos"));

    value = clampInto (value, minValue, maxValue);
    showValue();
}

void NumericDisplay::readRange (const juce::XmlElement& element)
{
    // The weight of the first digit, such as 100; 1 and less count one place further down, so a skin that wants
    // units writes 9.
    const auto order = std::log10 (clampInto (element.getDoubleAttribute ("firstDigitOrder", 1.0), 1.0e-9, 1.0e9));
    firstDigitOrder = static_cast<int> (order) - (order > 0.0 ? 0 : 1);

    absoluteMax = powerOfTen (firstDigitOrder + 1) - powerOfTen (firstDigitOrder - digitsNum + 1);
    absoluteMin = -absoluteMax;
    minValue = clampInto (element.getDoubleAttribute ("minValue", absoluteMin), absoluteMin, absoluteMax);
    maxValue = clampInto (element.getDoubleAttribute ("maxValue", absoluteMax), minValue, absoluteMax);
}

void NumericDisplay::buildCells (const juce::XmlElement& element, SkinFile& skin)
{
    const auto* gfx = element.getChildByName ("gfx");
    const auto readCellStrip = [&] (const char* tag, int numFrames)
    {
        const auto* strip = gfx != nullptr ? gfx->getChildByName (tag) : nullptr;
        return strip != nullptr ? readStrip (*strip, "resource", numFrames, skin) : FilmStrip();
    };

    int x = 0;
    const auto add = [&] (DisplayCell& cell, const FilmStrip& strip)
    {
        cell.setStrip (strip);
        cell.setBounds (x, 0, digitWidth, digitHeight);
        cell.setInterceptsMouseClicks (false, false);
        addAndMakeVisible (cell);
        x += digitWidth;
    };

    digits.clear();
    sign = nullptr;

    if (minValue < 0.0)
    {
        sign = std::make_unique<NumericDisplaySign>();
        add (*sign, readCellStrip ("sign", NumericDisplaySign::numFrames));
    }

    const auto strip = readCellStrip ("digits", NumericDisplayDigit::numFrames);

    for (int i = 0; i < digitsNum; ++i)
        add (*digits.emplace_back (std::make_unique<NumericDisplayDigit>()), strip);

    setSize (x, digitHeight);
}

//==============================================================================
void NumericDisplay::updateFromParameter (Parameter& parameter)
{
    // The text that the user types stays until the edit ends.
    if (! isEditing)
        setValue (static_cast<double> (parameter.getFloat()), false);
}

void NumericDisplay::setValue (double newValue, bool notify)
{
    newValue = clampInto (newValue, minValue, maxValue);

    if (newValue == value)
        return;

    value = newValue;
    showValue();

    if (auto* parameter = getParameter(); notify && parameter != nullptr)
    {
        parameter->setFloat (static_cast<float> (value), true);
        notifyValueChanged();
        updateFromParameter (*parameter); // which may have refused a part of it
    }
}

double NumericDisplay::weightOf (int digitIndex) const
{
    return powerOfTen (firstDigitOrder - digitIndex);
}

void NumericDisplay::showValue()
{
    // In units of the last digit, so that 0.3 isn't shown as 0.2.
    auto rest = static_cast<juce::int64> (std::abs (value) / weightOf (digitsNum - 1) + 1.0e-6);

    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit)
    {
        (*digit)->show (static_cast<int> (rest % 10), false);
        rest /= 10;
    }

    if (sign != nullptr)
        sign->show (value < 0.0);
}

juce::String NumericDisplay::getShownDigits() const
{
    juce::String text;

    for (const auto& digit : digits)
        text << (digit->isShownBlank() ? juce::String (" ") : juce::String (digit->getDigit()));

    return text;
}

//==============================================================================
void NumericDisplay::mouseDown (const juce::MouseEvent& e)
{
    if (! isEnabled() || belongsToEditor (e.mods))
        return;

    const auto cell = e.x / juce::jmax (1, digitWidth) - (sign != nullptr ? 1 : 0);
    const auto digit = juce::jlimit (0, digitsNum - 1, cell);

    dragStartValue = value;
    dragWeight = weightOf (continuousControl ? digitsNum - 1 : digit);
    beginGesture();
}

void NumericDisplay::mouseDrag (const juce::MouseEvent& e)
{
    const int numSteps = e.getDistanceFromDragStartY() / pixelsPerStep;

    if (dragWeight > 0.0)
        setValue (dragStartValue - dragWeight * numSteps, true);
}

void NumericDisplay::mouseUp (const juce::MouseEvent& e)
{
    const auto wasPressed = std::exchange (dragWeight, 0.0) > 0.0;
    endGesture();

    // With the second click of a double one the editor resets the parameter.
    if (e.getNumberOfClicks() > 1 && getParameter() != nullptr && canResetParameterAt (e))
        stopEditing (false);
    else if (wasPressed && e.mouseWasClicked())
        startEditing();
}

//==============================================================================
void NumericDisplay::startEditing()
{
    if (std::exchange (isEditing, true))
        return;

    setWantsKeyboardFocus (true); // only now, as by a display
    fieldWatcher.start();
    repaint();

    if (isShowing())
        grabKeyboardFocus();
}

void NumericDisplay::stopEditing (bool keepsNumber)
{
    // To give the focus away is to lose it, which ends here again.
    if (! std::exchange (isEditing, false))
        return;

    fieldWatcher.stop();
    giveAwayKeyboardFocus();
    setWantsKeyboardFocus (false);
    repaint();

    if (keepsNumber && typed.isNotEmpty())
        sendTypedDigits();

    typed.clear();
    typedMinus = false;

    if (auto* parameter = getParameter())
        updateFromParameter (*parameter);

    showValue();
}

void NumericDisplay::sendTypedDigits()
{
    const auto number = typed.getDoubleValue() * weightOf (digitsNum - 1);
    const auto inRange = clampInto (typedMinus ? -number : number, minValue, maxValue);

    if (getParameter() != nullptr)
        sendTypedNumber (inRange);
    else
        setValue (inRange, false);
}

void NumericDisplay::endPendingGesture()
{
    stopEditing (false);
    GUIController::endPendingGesture();
}

bool NumericDisplay::keyPressed (const juce::KeyPress& key)
{
    // Keys with modifiers are commands.
    if (! isEditing || key.getModifiers().isAnyModifierKeyDown() || ! edit (key))
        return false;

    if (isEditing)
        showTypedDigits();

    return true;
}

bool NumericDisplay::edit (const juce::KeyPress& key)
{
    const auto character = key.getTextCharacter();

    if (key == juce::KeyPress::returnKey || key == juce::KeyPress::escapeKey)
        stopEditing (key == juce::KeyPress::returnKey);
    else if (key == juce::KeyPress::backspaceKey || key == juce::KeyPress::deleteKey)
        typed = typed.dropLastCharacters (1);
    else if (character == '-')
        typedMinus = sign != nullptr && ! typedMinus;
    else if (character >= '0' && character <= '9')
        typed += typed.length() < digitsNum ? juce::String::charToString (character) : juce::String();
    else
        return juce::CharacterFunctions::isPrintable (character); // no other is of use here, nor meant for the host

    return true;
}

void NumericDisplay::showTypedDigits()
{
    if (typed.isEmpty())
        return showValue();

    for (int i = 0; i < digitsNum; ++i)
    {
        const auto place = typed.length() - digitsNum + i;
        digits[static_cast<size_t> (i)]->show (place >= 0 ? static_cast<int> (typed[place] - '0') : 0, place < 0);
    }

    if (sign != nullptr)
        sign->show (typedMinus);
}

void NumericDisplay::paintOverChildren (juce::Graphics& g)
{
    if (! isEditing)
        return;

    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        look->drawFocusRing (g, getLocalBounds());
}

} // namespace K7R
