// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <optional>

#include "editor/BasePluginEditor.h"

namespace K7R
{

class GFXAnimation;
class GlassRailEffect;

/** Adds the meters of a stereo output, "LeftVUMeter" and "RightVUMeter". */
class GlassRailEffectEditor : public BasePluginEditor
{
public:
    explicit GlassRailEffectEditor (GlassRailEffect&);

    juce::Point<int> getModalBounds() const override;

protected:
    void skinUnloading() override;
    void skinLoaded() override;
    void timerTick (bool isShown) override;
    juce::Rectangle<int> getBrowserBounds() const override;

private:
    struct Meter
    {
        /** Takes the core's level, or falls from the last one. */
        void update (std::optional<float> coreLevel);

        GFXAnimation* display = nullptr;
        float level = 0.0f;
    };

    GlassRailEffect& effect;
    Meter left, right;
};

} // namespace K7R
