// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/controls/CheckBox_V2.h"

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int boxMargin = 2;
constexpr int tickMargin = 3;
constexpr int roomBetween = 6; // box and text
constexpr float fontHeight = 13.0f;

} // namespace

CheckBox_V2::CheckBox_V2 (const juce::String& label, int height) :
    juce::TextButton (label),
    tick (Icons::create (Icons::Name::tick, juce::Colours::black))
{
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
    setClickingTogglesState (true);

    tick->setInterceptsMouseClicks (false, false);
    addChildComponent (*tick);

    setSize (height + roomBetween + juce::Font (fontHeight).getStringWidth (label), height);
}

juce::Rectangle<int> CheckBox_V2::getBox() const
{
    const auto side = juce::jmax (4, getHeight() - 2 * boxMargin);
    return { boxMargin, boxMargin, side, side };
}

void CheckBox_V2::resized()
{
    tick->setTransformToFit (juce::Rectangle<int> (getHeight(), getHeight()).reduced (tickMargin).toFloat(),
                             juce::RectanglePlacement::centred);
}

void CheckBox_V2::buttonStateChanged()
{
    tick->setVisible (getToggleState());
}

void CheckBox_V2::clicked()
{
    if (auto* parameter = getParameter (0))
        setInGesture (*parameter, getToggleState() ? 1 : 0);
}

void CheckBox_V2::updateFromParameter (Parameter& parameter)
{
    setToggleState (parameter.getBool(), juce::dontSendNotification);
    buttonStateChanged();
}

void CheckBox_V2::paintButton (juce::Graphics& g, bool isOver, bool)
{
    const auto box = getBox();
    g.setColour (findColour (juce::TextButton::buttonColourId).brighter (isOver ? 0.2f : 0.0f));
    g.fillRect (box);
    g.setColour (findColour (juce::TextEditor::outlineColourId));
    g.drawRect (box);

    g.setColour (juce::Colours::black.withAlpha (isEnabled() ? 1.0f : 0.5f));
    g.setFont (fontHeight);
    g.drawText (getButtonText(), getLocalBounds().withTrimmedLeft (box.getRight() + roomBetween),
                juce::Justification::centredLeft);
}

} // namespace K7R
