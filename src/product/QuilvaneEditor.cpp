// SPDX-License-Identifier: GPL-3.0-or-later

#include "product/QuilvaneEditor.h"

#include "dsp/phaser/QuilvaneCore.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "product/Quilvane.h"
#include "skin/displays/GFXAnimation.h"

namespace quilvane
{

using namespace K7R;

QuilvaneEditor::QuilvaneEditor (Quilvane& owner) :
    GlassRailEffectEditor (owner),
    quilvane (owner),
    oscillators { Oscillator { parameterIds::lfo1Sync }, Oscillator { parameterIds::lfo2Sync } }
{
}

void QuilvaneEditor::skinUnloading()
{
    GlassRailEffectEditor::skinUnloading();

    for (auto& oscillator : oscillators)
        oscillator = Oscillator { oscillator.syncParameterId };
}

void QuilvaneEditor::skinLoaded()
{
    GlassRailEffectEditor::skinLoaded();

    for (size_t i = 0; i < oscillators.size(); ++i)
    {
        auto& oscillator = oscillators[i];
        const auto prefix = "LFO" + juce::String (static_cast<int> (i) + 1);

        oscillator.rate = findControl (prefix + "Rate");
        oscillator.noteRate = findControl (prefix + "NoteRate");
        oscillator.noteScale = findControl (prefix + "NoteScale");
        oscillator.light = findControlOf<GFXAnimation> (prefix + "Value");

        if (auto* sync = quilvane.getParameters().getParameter (oscillator.syncParameterId))
        {
            sync->addAsyncListener (this);
            parameterChanged (*sync);
        }
    }
}

void QuilvaneEditor::parameterChanged (Parameter& parameter)
{
    GlassRailEffectEditor::parameterChanged (parameter);

    for (const auto& oscillator : oscillators)
        if (parameter.getId() == oscillator.syncParameterId)
            oscillator.showSync (parameter.getBool());
}

void QuilvaneEditor::timerTick (bool isShown)
{
    GlassRailEffectEditor::timerTick (isShown);

    const auto* core = quilvane.isActive() ? dynamic_cast<const QuilvaneCore*> (quilvane.getCore()) : nullptr;

    oscillators[0].showValue (core != nullptr ? core->getLFO1Value() : 0.0f);
    oscillators[1].showValue (core != nullptr ? core->getLFO2Value() : 0.0f);
}

void QuilvaneEditor::Oscillator::showSync (bool isSynced) const
{
    if (rate != nullptr)
        rate->setVisible (! isSynced);

    for (auto* component : { noteRate, noteScale })
        if (component != nullptr)
            component->setVisible (isSynced);
}

void QuilvaneEditor::Oscillator::showValue (float value) const
{
    if (light != nullptr)
        light->setValue (value);
}

} // namespace quilvane
