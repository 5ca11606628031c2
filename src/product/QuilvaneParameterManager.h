// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"

namespace quilvane
{

/** Gives some parameters of the phaser's table a curve of their own, by their id. */
class QuilvaneParameterManager final : public K7R::ParameterManager
{
    /** A float parameter with the curve of a class that has toValue (normalised) and
        toNormalised (value). */
    template <typename Curve>
    class CurvedParameter final : public K7R::FloatParameter
    {
    public:
        CurvedParameter (int id, const juce::String& name, float end1, float end2, float defaultValue) :
            FloatParameter (id, name, end1, end2, defaultValue)
        {
            initialiseNormalised (Curve::toNormalised (getFloat()));
        }

        std::unique_ptr<K7R::Parameter> clone (int newId, const juce::String& newName) const override
        {
            auto copy = std::make_unique<CurvedParameter> (newId, newName, getMinimum(), getMaximum(), getFloat());
            copyStateTo (*copy);
            return copy;
        }

    private:
        float normalisedToValue (float n) const override { return Curve::toValue (n); }
        float valueToNormalised (float v) const override { return Curve::toNormalised (v); }
    };

    struct LFOFreqCurve
    {
        static float toValue (float normalised);
        static float toNormalised (float hz);
    };

    struct BaseFreqCurve
    {
        static float toValue (float normalised);
        static float toNormalised (float hz);
    };

    struct OutputVolumeCurve
    {
        static float toValue (float normalised);
        static float toNormalised (float decibels);
    };

public:
    /** A rate, exponential from 0.0125 Hz to 20 Hz. */
    using LFOFreq = CurvedParameter<LFOFreqCurve>;

    /** The centre frequency, exponential from 50 Hz to 12000 Hz. */
    using BaseFreq = CurvedParameter<BaseFreqCurve>;

    /** A gain in dB; the linear gain is 4 n^2, so 0 dB lies at 0.5 and +12 dB at 1. */
    using OutputVolumeParameter = CurvedParameter<OutputVolumeCurve>;

protected:
    std::unique_ptr<K7R::Parameter> createFloatParameter (int id, const juce::String& name, float minimum,
                                                          float maximum, float defaultValue) override;
};

} // namespace quilvane
