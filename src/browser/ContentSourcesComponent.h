// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include "browser/BrowserContent.h"
#include "browser/HeaderComponent.h"
#include "widgets/controls/TextButtonWithIcon.h"

namespace K7R
{

/** The list of sources: which are ticked. */
class ContentSourcesComponent final : public juce::Component
{
public:
    /** @param onChange told when the user has ticked or unticked one
        @param onExpand told of a click on "Expand / Collapse" */
    ContentSourcesComponent (const BrowserContent&, std::function<void()> onChange, std::function<void()> onExpand);

    /** Adds a button for the source that was added last. */
    void addSource (ContentSource&);

    /** @param onlyTicked while not null, this source alone shows as ticked, and none can be clicked */
    void updateButtons (const ContentSource* onlyTicked);

    void setExpanded (bool);
    bool isExpanded() const noexcept { return expanded; }
    int getPreferredWidth() const { return expanded ? expandedWidth : collapsedWidth; }

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    static constexpr int expandedWidth = 140, collapsedWidth = 30;

    const BrowserContent& content;
    const std::function<void()> onChange;
    bool expanded = true;
    juce::DrawableButton expandButton { "Expand / Collapse", juce::DrawableButton::ImageFitted };
    HeaderComponent header { "CONTENT", nullptr, &expandButton };
    juce::OwnedArray<TextButtonWithIcon> buttons;
};

} // namespace K7R
