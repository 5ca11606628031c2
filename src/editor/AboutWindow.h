// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "editor/CreditsText.h"
#include "widgets/windows/WindowComponent.h"

namespace K7R
{

class SoftwareDesignation;

/** What the product is, and who made it. */
class AboutWindow final : public WindowComponent
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The window is off the screen; the listener deletes it. */
        virtual void aboutWindowClosed (AboutWindow&) = 0;
    };

    /** @param logoSvg the product's logo, for the banner; the banner goes without one that can't be read */
    AboutWindow (const SoftwareDesignation&, const juce::String& logoSvg, Listener&);
    ~AboutWindow() override;

    void dismiss() override;
    /** Takes the size that it likes best, within these limits: beside each other where there is no room for banner,
        description and credits one below the other. */
    void fitInto (int maximumWidth, int maximumHeight);

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    class PluginDescComponent;

    void buttonClicked (juce::Button*) override;

    Listener& listener;
    std::unique_ptr<juce::Drawable> logo;
    std::unique_ptr<PluginDescComponent> description;
    CreditsText credits;
    juce::Viewport viewport;
    juce::TextButton closeTextButton { "Close" };
    juce::Rectangle<int> banner;
};

} // namespace K7R
