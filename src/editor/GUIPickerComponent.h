// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "widgets/look/HardLabel.h"

namespace K7R
{

/** The choice between the two sizes of the product's skin. */
class GUIPickerComponent final : public juce::Component
{
public:
    /** @param onPick told the name of the skin */
    explicit GUIPickerComponent (const std::function<void (const juce::String& skin)>& onPick);

    /** Marks the skin that is shown. */
    void setCurrent (const juce::String& skin);

    void resized() override;

private:
    HardLabel caption { {}, "Skin size" };
    std::unique_ptr<juce::Drawable> icon;
    juce::TextButton bigButton { "Big" }, smallButton { "Small" };
};

} // namespace K7R
