// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/ParameterInfo.h"

#include "parameters/BoolParameter.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int width = 292, titleHeight = 22, valueHeight = 26, rangeHeight = 18;
constexpr int separatorRoom = 14, rowHeight = 22, spacing = 8, iconSize = 18;
constexpr int learnWidth = 76, buttonWidth = 58;
constexpr int captionWidth = 60, numberWidth = 40;
constexpr float valueFontHeight = 20.0f, smallFontHeight = 11.5f;
constexpr int refreshMs = 50;
constexpr int middle = FloatingPanel::margin + titleHeight + valueHeight + rangeHeight + separatorRoom / 2;

juce::String textAt (const Parameter& parameter, float normalised)
{
    // A parameter knows the text of its own value only.
    const auto probe = parameter.clone (parameter.getId(), parameter.getName());
    probe->setNormalised (normalised, false);
    return probe->getDisplayText();
}

} // namespace

//==============================================================================
ParameterInfo::MidiCCComponent::MidiCCComponent (Parameter& shown, MidiControlMap& controlMap, ParameterInfo& parent) :
    parameter (shown),
    map (controlMap),
    info (parent),
    before (controlMap.takeSnapshot()),
    controllerBefore (controlMap.getController (shown)),
    caption ({}, "MIDI CC"),
    learnButton ("Learn", *Icons::create (Icons::Name::record), juce::Colour (Icons::colour))
{
    for (auto* label : { &caption, &number, &name })
    {
        label->setBorderSize ({});
        addAndMakeVisible (label);
    }

    learnButton.setColour (juce::TextButton::textColourOnId, juce::Colour (Icons::litColour));
    learnButton.setTooltip ("Then move a controller of the MIDI device");
    learnButton.setEnabled (parameter.isAutomatable());
    learnButton.onClick = [this] { startLearning(); };
    clearButton.setTooltip ("No controller moves the parameter");
    clearButton.onClick = [this] { clear(); };
    okButton.onClick = [this] { confirm(); };
    cancelButton.onClick = [this] { cancel(); };

    for (auto* button : { static_cast<juce::TextButton*> (&learnButton), &clearButton, &okButton, &cancelButton })
        addAndMakeVisible (button);

    updateLabels();
}

ParameterInfo::MidiCCComponent::~MidiCCComponent()
{
    stopTimer();
}

void ParameterInfo::MidiCCComponent::startLearning()
{
    if (! parameter.isAutomatable())
        return;

    map.startLearn (parameter);
    isLearning = true;
    learnButton.setToggleState (true, juce::dontSendNotification);
    startTimer (refreshMs);
}

void ParameterInfo::MidiCCComponent::endLearning()
{
    stopTimer();
    isLearning = false;
    learnButton.setToggleState (false, juce::dontSendNotification);
    updateLabels();
}

void ParameterInfo::MidiCCComponent::clear()
{
    // What the learning took from others goes back to them first.
    if (isLearning)
        map.cancelLearn();

    map.assign (parameter, MidiControlMap::noController);
    endLearning();
}

void ParameterInfo::MidiCCComponent::confirm()
{
    if (isLearning)
        map.stopLearn();

    endLearning();
    info.close (true);
}

void ParameterInfo::MidiCCComponent::cancel()
{
    // A map that came in meanwhile owes nothing to the one before.
    const auto hasMoved = map.isCurrent (before) && map.getController (parameter) != controllerBefore;
    const auto hasWork = isLearning || hasMoved;

    if (isLearning)
        map.cancelLearn();
    else if (hasMoved)
        map.assign (parameter, controllerBefore);

    endLearning();

    if (! hasWork)
        info.close (false);
}

void ParameterInfo::MidiCCComponent::revert()
{
    map.restore (before);
}

void ParameterInfo::MidiCCComponent::timerCallback()
{
    // A map that came in has ended the learning.
    if (map.getLearnParameter() != &parameter)
        endLearning();
    else
        updateLabels();
}

void ParameterInfo::MidiCCComponent::updateLabels()
{
    const auto controller = map.getController (parameter);
    const auto isAssigned = controller != MidiControlMap::noController;
    const auto takesFocus = ! isAssigned && clearButton.hasKeyboardFocus (false);
    const auto* known = isAssigned ? juce::MidiMessage::getControllerName (controller) : nullptr;

    number.setText (isAssigned ? "# " + juce::String (controller) : "# --", juce::dontSendNotification);
    name.setText (isAssigned ? juce::String (known != nullptr ? known : "") : "unassigned", juce::dontSendNotification);
    clearButton.setEnabled (isAssigned);

    // A button that is disabled drops the keyboard's focus, and with it Escape and Return.
    if (takesFocus)
        okButton.grabKeyboardFocus();
}

void ParameterInfo::MidiCCComponent::resized()
{
    auto area = getLocalBounds();
    auto row = area.removeFromTop (rowHeight);
    caption.setBounds (row.removeFromLeft (captionWidth));
    number.setBounds (row.removeFromLeft (numberWidth));
    name.setBounds (row);

    row = area.removeFromBottom (rowHeight);
    learnButton.setBounds (row.removeFromLeft (learnWidth));
    row.removeFromLeft (spacing / 2);
    clearButton.setBounds (row.removeFromLeft (buttonWidth));
    cancelButton.setBounds (row.removeFromRight (buttonWidth));
    row.removeFromRight (spacing / 2);
    okButton.setBounds (row.removeFromRight (buttonWidth));
}

//==============================================================================
ParameterInfo::ParameterInfo (Parameter& shown, MidiControlMap& map, const Parameter* original, Listener& toTell) :
    parameter (shown),
    listener (toTell),
    title ({}, shown.getName()),
    resetButton ("Reset", juce::DrawableButton::ImageFitted),
    closeButton ("Close", juce::DrawableButton::ImageFitted),
    controllers (shown, map, *this)
{
    setTitle (shown.getName());
    Icons::setUp (resetButton, Icons::Name::reset, "Reset to default");
    Icons::setUp (closeButton, Icons::Name::close, "Close");
    resetButton.onClick = [this] { listener.parameterInfoReset (*this); };
    closeButton.onClick = [this] { close (false); };
    resetButton.setEnabled (shown.isAutomatable());

    title.setColour (DefaultLookAndFeel::hardLabelTextId, juce::Colour (0xffffa35f));
    value.setFont (valueFontHeight);
    range.setFont (smallFontHeight);
    range.setColour (DefaultLookAndFeel::hardLabelTextId, juce::Colour (0xffa2a2a2));

    if (shown.isAutomatable())
        range.setText (textAt (shown, 0.0f) + (dynamic_cast<const BoolParameter*> (&shown) != nullptr ? " or " : " to ")
                           + textAt (shown, 1.0f)
                           + (original != nullptr ? ", default " + original->getDisplayText() : juce::String()),
                       juce::dontSendNotification);

    for (auto* label : { &title, &value, &range })
    {
        label->setBorderSize ({});
        addAndMakeVisible (label);
    }

    addAndMakeVisible (resetButton);
    addAndMakeVisible (closeButton);
    addAndMakeVisible (controllers);

    setSize (width, middle + separatorRoom / 2 + 2 * rowHeight + spacing + margin);
    parameter.addAsyncListener (this);
    ParameterInfo::parameterChanged (parameter);
}

ParameterInfo::~ParameterInfo()
{
    parameter.removeAsyncListener (this);
}

void ParameterInfo::parameterChanged (Parameter&)
{
    value.setText (parameter.getDisplayText(), juce::dontSendNotification);
}

void ParameterInfo::resized()
{
    auto area = getLocalBounds().reduced (margin);
    auto top = area.removeFromTop (titleHeight);
    const auto iconRoom = [&] { return top.removeFromRight (iconSize).withSizeKeepingCentre (iconSize, iconSize); };
    closeButton.setBounds (iconRoom());
    top.removeFromRight (spacing);
    resetButton.setBounds (iconRoom());
    title.setBounds (top);
    value.setBounds (area.removeFromTop (valueHeight));
    range.setBounds (area.removeFromTop (rangeHeight));
    area.removeFromTop (separatorRoom);
    controllers.setBounds (area);
}

void ParameterInfo::paint (juce::Graphics& g)
{
    FloatingPanel::paint (g);
    g.setColour (findColour (DefaultLookAndFeel::panelLineId, true).withAlpha (0.5f));
    g.fillRect (margin, middle, getWidth() - 2 * margin, 1);
}

bool ParameterInfo::keyPressed (const juce::KeyPress& key)
{
    if (key == juce::KeyPress::escapeKey)
        controllers.cancel();
    else if (key == juce::KeyPress::returnKey)
        controllers.confirm();
    else
        return false;

    return true;
}

} // namespace K7R
