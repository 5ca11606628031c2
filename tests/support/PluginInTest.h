// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include "core/BasePlugin.h"
#include "dsp/phaser/QuilvaneParameterIds.h"
#include "product/Quilvane.h"

/** The whole plug-in without a host's client: a processor, prepared, with short ways to what a test
    sets and renders. */
class PluginInTest
{
public:
    explicit PluginInTest (double sampleRate = 48000.0, int blockSize = 512,
                           std::unique_ptr<K7R::BasePlugin> plugin = std::make_unique<quilvane::Quilvane>()) :
        rate (sampleRate),
        block (blockSize)
    {
        processor.setPlugin (std::move (plugin));
        processor.setPlayHead (&playHead);
        prepare();
    }

    void prepare()
    {
        processor.setRateAndBufferSizeDetails (rate, block);
        processor.prepareToPlay (rate, block);
    }

    K7R::Parameter& parameter (int id) { return *processor.getPlugin().getParameters().getParameter (id); }

    /** Sets a parameter as the host does. */
    void set (int id, float normalised) { processor.setParameter (id, normalised); }

    /** Sets a parameter as a preset does. */
    void setText (int id, const juce::String& text) { parameter (id).setString (text, true); }

    /** Processes both channels in place, in blocks of the given size. */
    void process (std::vector<float>& left, std::vector<float>& right, bool bypassed = false)
    {
        juce::MidiBuffer midi;

        for (size_t start = 0; start < left.size(); start += static_cast<size_t> (block))
        {
            const auto size = static_cast<int> (std::min (left.size() - start, static_cast<size_t> (block)));
            processBlock (left.data() + start, right.data() + start, size, midi, bypassed);
        }
    }

    void processBlock (float* left, float* right, int numSamples, juce::MidiBuffer& midi, bool bypassed = false)
    {
        float* channels[] { left, right };
        juce::AudioBuffer<float> buffer (channels, 2, numSamples);

        if (bypassed)
            processor.processBlockBypassed (buffer, midi);
        else
            processor.processBlock (buffer, midi);

        playHead.advance (numSamples / rate);
    }

    /** The left output for an input on both sides. */
    std::vector<float> render (std::vector<float> input)
    {
        auto right = input;
        process (input, right);
        return input;
    }

    struct PlayHead : juce::AudioPlayHead
    {
        juce::Optional<PositionInfo> getPosition() const override
        {
            if (fails)
                return {};

            PositionInfo info;

            if (tellsTempo)
                info.setBpm (bpm);

            info.setPpqPosition (ppq);
            info.setIsPlaying (playing);
            return info;
        }

        void advance (double seconds)
        {
            if (playing)
                ppq += seconds * bpm / 60.0;
        }

        bool fails = true;
        bool tellsTempo = true;
        bool playing = false;
        double bpm = 120.0;
        double ppq = 0.0;
    };

    PlayHead playHead;
    K7R::PluginAudioProcessor processor;
    double rate;
    int block;
};
