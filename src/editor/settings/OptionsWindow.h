// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/windows/WindowComponent.h"

namespace K7R
{

/** The defaults of new instances, in sections that fold. The sections are added by the editor. */
class OptionsWindow final : public WindowComponent
{
public:
    OptionsWindow();
    ~OptionsWindow() override;

    /** Adds a section at the end, unfolded.
        @param content takes the height that it has; the width is the window's */
    void addSection (const juce::String& heading, std::unique_ptr<juce::Component> content);

    /** How wide a section's content may be, in pixels. */
    int getContentWidth() const;

    void resized() override;

    static constexpr int width = 560, height = 250;

private:
    /** Draws the headings. */
    class LookAndFeel;
    class Heading;
    class Panel;
    class PanelContainer;

    std::unique_ptr<LookAndFeel> look;
    std::unique_ptr<PanelContainer> container;
    juce::Viewport viewport;
};

} // namespace K7R
