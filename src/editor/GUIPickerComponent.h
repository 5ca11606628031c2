// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "widgets/look/HardLabel.h"

namespace K7R
{

/** The choice between the sizes of the product's skin. */
class GUIPickerComponent final : public juce::Component
{
public:
    /** @param skins the names of the skins to choose from, a button each
        @param onPick told the name of the skin */
    GUIPickerComponent (const juce::StringArray& skins, const std::function<void (const juce::String& skin)>& onPick);

    /** Marks the skin that is shown. */
    void setCurrent (const juce::String& skin);

    void resized() override;

private:
    HardLabel caption { {}, "Skin size" };
    std::unique_ptr<juce::Drawable> icon;
    std::vector<std::unique_ptr<juce::TextButton>> buttons;
};

} // namespace K7R
