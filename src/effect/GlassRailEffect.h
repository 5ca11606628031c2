// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <memory>

#include "core/BasePlugin.h"

namespace K7R
{

class GlassRailEffectCore;

/** The base of one line of audio effects: everything between the host's block and the core that
    processes samples.

    It reads the play head, cuts the block at MIDI events so that a controller takes effect at its own
    sample, and renders each piece in the core under one lock. Parameter changes of any thread take the
    same lock for the time of one core update; it is the only guard between parameters and processing.
    The lock isn't held while a MIDI event is handled, which may change parameters on this thread.
*/
class GlassRailEffect : public BasePlugin
{
public:
    GlassRailEffect (std::unique_ptr<ParameterManager>, EmbeddedTextLoader);
    ~GlassRailEffect() override;

    void createDspCore() override;

    /** One or two channels in and two out; or one in and one out if the effect allows mono. */
    bool isBusesLayoutSupported (const juce::AudioProcessor::BusesLayout&) const override;

    /** Beats per minute, as the host last told. Any thread. */
    float getLastTempo() const noexcept { return lastTempo; }

    /** The core, for what its class lets any thread read; null before createDspCore(). */
    GlassRailEffectCore* getCore() const noexcept { return core.get(); }

protected:
    /** A product returns its own core; this one processes nothing. */
    virtual std::unique_ptr<GlassRailEffectCore> makeCore();
    std::unique_ptr<PluginEditor> createEditor() override;
    virtual bool allowsMono() const { return true; }
    virtual bool usesTransport() const { return false; }

    /** The host's tempo is a new one; audio thread, before the core hears of it. */
    virtual void tempoChanged() {}

    bool updateSampleRate (double sampleRate) override;
    void prepare (bool rateChanged, bool blockSizeChanged) override;
    void process (ProcessContext&) override;
    void parameterChanged (Parameter&) override;

    /** Synced oscillators start again at phase zero. */
    void presetApplied() override;

    const juce::CriticalSection& getEffectLock() const noexcept { return effectLock; }

private:
    /** The part of a block that is not yet rendered. */
    struct Piece
    {
        float* left;
        float* right; // the left one again in a mono effect
        int start;
    };

    void readPlayHead (juce::AudioPlayHead&);
    void enqueue (const juce::MidiBuffer& incoming);
    void renderUpTo (Piece&, int end, const ProcessContext&);
    void handleEvent (const juce::MidiMessageMetadata&);
    void carryOverEvents (int numSamples);

    // The events of this block with those left from the last, and the ones for the next.
    juce::MidiBuffer currentQueue, nextQueue;
    juce::CriticalSection effectLock;
    std::unique_ptr<GlassRailEffectCore> core;
    std::atomic<float> lastTempo { 120.0f };
};

} // namespace K7R
