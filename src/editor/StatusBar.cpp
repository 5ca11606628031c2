// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/StatusBar.h"

#include "core/BasePlugin.h"
#include "editor/GUIPickerComponent.h"
#include "editor/settings/MidiMapComponent.h"
#include "editor/settings/QualitySettingsComponent.h"
#include "parameters/IntParameter.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int defaultHeight = 16;
constexpr int textMargin = 5;
constexpr int qualityWidth = 130, midiWidth = 58, guiWidth = 52;
constexpr int fileMessagePriority = 6, fileMessageMs = 6000;

} // namespace

StatusBar::StatusBar (BasePlugin& shown, Owner& editor) : plugin (shown), owner (editor)
{
    setSize (getWidth(), defaultHeight);
    setInterceptsMouseClicks (false, true);
    setTitle ("Status");
}

StatusBar::~StatusBar()
{
    const auto [realTime, offline] = plugin.getQualityParameters();

    for (auto* parameter : { realTime, offline })
        if (parameter != nullptr)
            parameter->removeAsyncListener (this);
}

void StatusBar::createButtons()
{
    if (settingsOf (Popup::midi).button != nullptr)
        return;

    const auto [realTime, offline] = plugin.getQualityParameters();

    if (realTime != nullptr && offline != nullptr)
    {
        addButton (Popup::quality, "Normal", *Icons::create (Icons::Name::quality),
                   "Processing quality of this instance: offline / real-time");
        realTime->addAsyncListener (this);
        offline->addAsyncListener (this);
        updateQualityText();
    }

    addButton (Popup::midi, "MIDI", *Icons::create (Icons::Name::midi), "Load or save the MIDI CC map");
    addButton (Popup::gui, "GUI", *Icons::create (Icons::Name::skin), "Size of the window");
    resized();
}

void StatusBar::addButton (Popup popup, const juce::String& text, const juce::Drawable& icon,
                           const juce::String& tooltip)
{
    auto& button = settingsOf (popup).button;
    button = std::make_unique<TextButtonWithIcon> (text, icon, juce::Colour (Icons::colour));
    button->setTooltip (tooltip);
    button->setColour (juce::TextButton::buttonColourId, findColour (DefaultLookAndFeel::statusBarBackgroundId));
    button->setClickingTogglesState (true);
    button->onClick = [this, popup] { buttonToggled (popup); };
    addAndMakeVisible (*button);
}

std::unique_ptr<juce::Component> StatusBar::createContent (Popup popup)
{
    switch (popup)
    {
        case Popup::quality:
        {
            const auto [realTime, offline] = plugin.getQualityParameters();
            return std::make_unique<QualitySettingsComponent> (*realTime, *offline);
        }

        case Popup::midi:
            return std::make_unique<MidiMapComponent> (
                plugin, [this] (const juce::String& text) { showMessage (text, fileMessagePriority, fileMessageMs); },
                [this] { FloatingComponentOwner::hideFloating (*this, settingsOf (Popup::midi).panel, nullptr); });

        case Popup::gui:
            return std::make_unique<GUIPickerComponent> (owner.getSkinSizes(), [this] (const juce::String& skin)
                                                         { owner.switchSkin (skin); });
    }

    return nullptr;
}

StatusBar::Settings* StatusBar::settingsOf (const juce::Component& panel)
{
    for (auto& each : settings)
        if (&each.panel == &panel)
            return &each;

    return nullptr;
}

void StatusBar::togglePopup (Popup popup)
{
    createButtons();

    if (auto* button = settingsOf (popup).button.get())
    {
        button->setToggleState (! button->getToggleState(), juce::dontSendNotification);
        buttonToggled (popup);
    }
}

void StatusBar::buttonToggled (Popup popup)
{
    auto& [button, content, panel] = settingsOf (popup);

    if (! button->getToggleState())
    {
        FloatingComponentOwner::hideFloating (*this, panel, nullptr);
        return;
    }

    if (content == nullptr)
    {
        content = createContent (popup);
        content->setTopLeftPosition (FloatingPanel::margin, FloatingPanel::margin);
        panel.addAndMakeVisible (*content);
        panel.setSize (content->getWidth() + 2 * FloatingPanel::margin,
                       content->getHeight() + 2 * FloatingPanel::margin);
        panel.setTitle (button->getTooltip());
    }

    if (auto* picker = dynamic_cast<GUIPickerComponent*> (content.get()))
        picker->setCurrent (owner.getSkinName());

    FloatingComponentOwner::showFloating (*this, panel, { button->getRight() - panel.getWidth(), -panel.getHeight() },
                                          this, this);
}

void StatusBar::floatingComponentHidden (juce::Component& panel, const juce::MouseEvent*)
{
    if (auto* hidden = settingsOf (panel))
        hidden->button->setToggleState (false, juce::dontSendNotification);
}

bool StatusBar::keepsFloatingComponent (juce::Component& panel, const juce::MouseEvent& event)
{
    // The click is on the button of the popup, and will close it by itself.
    const auto* shown = settingsOf (panel);
    return shown != nullptr && event.originalComponent == shown->button.get();
}

void StatusBar::updateQualityText()
{
    const auto [realTime, offline] = plugin.getQualityParameters();
    settingsOf (Popup::quality).button->setButtonText (offline->getDisplayText() + " / " + realTime->getDisplayText());
}

//==============================================================================
void StatusBar::lookAndFeelChanged()
{
    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        setSize (getWidth(), look->getStatusBarHeight());
}

void StatusBar::resized()
{
    constexpr int widths[] = { qualityWidth, midiWidth, guiWidth };
    auto area = getLocalBounds();

    for (auto i = settings.size(); i-- > 0;)
        if (settings[i].button != nullptr)
            settings[i].button->setBounds (area.removeFromRight (widths[i]));
}

void StatusBar::showMessage (const juce::String& text, int newPriority, int timeoutMs)
{
    if (text == message || newPriority < priority)
        return;

    message = text;
    priority = newPriority;

    if (timeoutMs < 1)
        stopTimer();
    else
        startTimer (timeoutMs);

    repaint();
}

void StatusBar::clearMessage()
{
    stopTimer();
    message.clear();
    priority = 0;
    repaint();
}

void StatusBar::paint (juce::Graphics& g)
{
    g.fillAll (findColour (DefaultLookAndFeel::statusBarBackgroundId));
    g.setColour (findColour (DefaultLookAndFeel::statusBarTextId));

    // Asked for when there's something to paint: the first font of a process makes JUCE open all fonts of the machine.
    if (const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        g.setFont (look->getStatusBarFont());

    auto area = getLocalBounds().withTrimmedLeft (textMargin);

    for (const auto& each : settings)
        if (each.button != nullptr)
            area.setRight (juce::jmin (area.getRight(), each.button->getX() - textMargin));

    g.drawText (message, area, juce::Justification::centredLeft);
}

} // namespace K7R
