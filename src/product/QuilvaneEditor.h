// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "effect/GlassRailEffectEditor.h"

namespace quilvane
{

class Quilvane;

/** The phaser's editor: each oscillator shows its rate, or its note value and scale when it's synced, and a light
    that moves with it. */
class QuilvaneEditor final : public K7R::GlassRailEffectEditor
{
public:
    explicit QuilvaneEditor (Quilvane&);

    juce::StringArray getSkinSizes() const override { return { "Big", "Small" }; }

protected:
    void skinUnloading() override;
    void skinLoaded() override;
    void timerTick (bool isShown) override;
    void parameterChanged (K7R::Parameter&) override;

private:
    struct Oscillator
    {
        int syncParameterId = -1;
        juce::Component* rate = nullptr;
        juce::Component* noteRate = nullptr;
        juce::Component* noteScale = nullptr;
        K7R::GFXAnimation* light = nullptr;

        void showSync (bool isSynced) const;
        void showValue (float) const;
    };

    Quilvane& quilvane;
    std::array<Oscillator, 2> oscillators;
};

} // namespace quilvane
