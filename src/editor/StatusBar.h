// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>
#include <functional>
#include <memory>

#include "editor/FloatingPanel.h"
#include "parameters/Parameter.h"
#include "widgets/controls/TextButtonWithIcon.h"
#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

class BasePlugin;

/** The strip under the skin's panel: at the left one message at a time, of which the more important and the later
    stands; at the right buttons that open the settings of this instance above them. */
class StatusBar final : public juce::Component,
                        private juce::Timer,
                        private FloatingComponentOwner::Callback,
                        private Parameter::Listener
{
public:
    /** What its popups ask of the editor. */
    class Owner
    {
    public:
        virtual ~Owner() = default;

        virtual juce::String getSkinName() const = 0;

        /** The skins that the popup of the window's size offers. */
        virtual juce::StringArray getSkinSizes() const = 0;
        virtual void switchSkin (const juce::String& name) = 0;
    };

    enum class Popup
    {
        quality,
        midi,
        gui,
    };

    StatusBar (BasePlugin&, Owner&);
    ~StatusBar() override;

    /** Shows a message, unless it stands already or one of a higher priority does.
        @param timeoutMs until it goes by itself; below 1 it stays */
    void showMessage (const juce::String& text, int priority, int timeoutMs);

    void clearMessage();

    const juce::String& getMessage() const noexcept { return message; }

    /** The same as a click on its button. Nothing in a product that has no such settings. */
    void togglePopup (Popup);

    /** Makes the buttons, when somebody first looks. */
    void createButtons();

    void lookAndFeelChanged() override;
    void resized() override;
    void paint (juce::Graphics&) override;

private:
    /** A button with the popup that it opens; the content is made when it first opens. */
    struct Settings
    {
        std::unique_ptr<TextButtonWithIcon> button;
        std::unique_ptr<juce::Component> content;
        FloatingPanel panel;
    };

    Settings& settingsOf (Popup popup) { return settings[static_cast<size_t> (popup)]; }
    Settings* settingsOf (const juce::Component& panel);
    std::unique_ptr<juce::Component> createContent (Popup);
    void addButton (Popup, const juce::String& text, const juce::Drawable& icon, const juce::String& tooltip);
    void buttonToggled (Popup);
    void updateQualityText();

    void timerCallback() override { clearMessage(); }
    void parameterChanged (Parameter&) override { updateQualityText(); }
    void floatingComponentHidden (juce::Component&, const juce::MouseEvent*) override;
    bool keepsFloatingComponent (juce::Component&, const juce::MouseEvent&) override;

    BasePlugin& plugin;
    Owner& owner;
    std::array<Settings, 3> settings;
    juce::String message;
    int priority = 0;
};

} // namespace K7R
