// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include "widgets/controls/ComponentRow.h"
#include "widgets/look/HardLabel.h"

namespace K7R
{

/** Settings one below the other: a caption at the left, and what sets it at the right. It takes the size that they
    need. */
class DefaultSettingsComponent : public juce::Component
{
public:
    DefaultSettingsComponent();
    ~DefaultSettingsComponent() override;

    void childBoundsChanged (juce::Component*) override;

protected:
    /** Adds a setting, which isn't owned, with its own size. */
    void addSetting (const juce::String& caption, juce::Component&);

    /** Adds one without a caption. */
    void addSetting (juce::Component&);

    static constexpr int captionWidth = 130, rowHeight = 20, rowSpacing = 8;

private:
    struct Row
    {
        explicit Row (const juce::String& text);

        HardLabel caption;
        ComponentRow row;
    };

    std::vector<std::unique_ptr<Row>> settings;
    ComponentRow rows;
};

} // namespace K7R
