// SPDX-License-Identifier: GPL-3.0-or-later

#include "effect/GlassRailEffectEditor.h"

#include "effect/GlassRailEffect.h"
#include "effect/GlassRailEffectCore.h"
#include "skin/displays/GFXAnimation.h"

namespace K7R
{

GlassRailEffectEditor::GlassRailEffectEditor (GlassRailEffect& owner) : BasePluginEditor (owner, true), effect (owner)
{
}

juce::Point<int> GlassRailEffectEditor::getModalBounds() const
{
    constexpr int margin = 60, minimumWidth = 780, minimumHeight = 540;

    return { juce::jmax (getWidth() - margin, minimumWidth), juce::jmax (getPanelHeight() - margin, minimumHeight) };
}

juce::Rectangle<int> GlassRailEffectEditor::getBrowserBounds() const
{
    // The panel's width, and as many whole rows as its height has room for.
    constexpr int rowHeight = 20, roomAroundRows = 39;
    const auto numRows = (getPanelHeight() - roomAroundRows) / rowHeight;

    return { 0, 0, getWidth(), numRows * rowHeight + roomAroundRows };
}

void GlassRailEffectEditor::skinUnloading()
{
    BasePluginEditor::skinUnloading();
    left.display = right.display = nullptr;
}

void GlassRailEffectEditor::skinLoaded()
{
    BasePluginEditor::skinLoaded();

    left.display = findControlOf<GFXAnimation> ("LeftVUMeter");
    right.display = findControlOf<GFXAnimation> ("RightVUMeter");
}

void GlassRailEffectEditor::timerTick (bool isShown)
{
    BasePluginEditor::timerTick (isShown);

    const auto* core = effect.isActive() ? effect.getCore() : nullptr;

    if (core != nullptr)
    {
        left.update (core->getLeftMeter());
        right.update (core->getRightMeter());
    }
    else
    {
        left.update (std::nullopt);
        right.update (std::nullopt);
    }
}

void GlassRailEffectEditor::Meter::update (std::optional<float> coreLevel)
{
    constexpr float fall = 0.675f, lowest = 0.01f; // with no audio, in each tick

    if (coreLevel.has_value())
        level = *coreLevel;
    else
        level = level > lowest ? level * fall : 0.0f;

    if (display != nullptr)
        display->setValue (level);
}

} // namespace K7R
