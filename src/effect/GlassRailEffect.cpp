// SPDX-License-Identifier: GPL-3.0-or-later

#include "effect/GlassRailEffect.h"

#include <cmath>

#include "effect/GlassRailEffectCore.h"
#include "effect/GlassRailEffectEditor.h"

namespace K7R
{

namespace
{

/** Room for the events of one block, reserved so that the audio thread never allocates; events that
    find no room are dropped. A controller takes 9 bytes. */
constexpr int queueBytes = 32 * 1024;
constexpr int bytesBesideEvent = static_cast<int> (sizeof (juce::int32) + sizeof (juce::uint16));

/** A host that tells a faster tempo than this, or none that is a number, is not believed. */
constexpr double fastestTempo = 10000.0; // beats per minute

/** The same for a position beyond this; a song of it would last for decades. */
constexpr double furthestPosition = 1.0e9; // quarter notes

/** Events that a host sends further ahead than this are dropped, so that they can't fill the queue for hours. */
constexpr double furthestEvent = 10.0; // s

void addIfRoom (juce::MidiBuffer& queue, const juce::MidiMessageMetadata& event, int samplePosition)
{
    if (queue.data.size() + event.numBytes + bytesBesideEvent <= queueBytes)
        queue.addEvent (event.data, event.numBytes, samplePosition);
}

} // namespace

GlassRailEffect::GlassRailEffect (std::unique_ptr<ParameterManager> manager, EmbeddedTextLoader texts) :
    BasePlugin (std::move (manager), std::move (texts))
{
    currentQueue.ensureSize (queueBytes);
    nextQueue.ensureSize (queueBytes);
}

GlassRailEffect::~GlassRailEffect() = default;

void GlassRailEffect::createDspCore()
{
    core = makeCore();
}

std::unique_ptr<GlassRailEffectCore> GlassRailEffect::makeCore()
{
    return std::make_unique<GlassRailEffectCore> (getRateConstants());
}

std::unique_ptr<PluginEditor> GlassRailEffect::createEditor()
{
    return std::make_unique<GlassRailEffectEditor> (*this);
}

bool GlassRailEffect::isBusesLayoutSupported (const juce::AudioProcessor::BusesLayout& layout) const
{
    const auto inputs = layout.getMainInputChannels();
    const auto outputs = layout.getMainOutputChannels();

    if ((inputs == 1 || inputs == 2) && outputs == 2)
        return true;

    return allowsMono() && inputs == 1 && outputs == 1;
}

bool GlassRailEffect::updateSampleRate (double sampleRate)
{
    // Other threads read the record when their parameters reach the core.
    const juce::ScopedLock scope (effectLock);
    return BasePlugin::updateSampleRate (sampleRate);
}

void GlassRailEffect::prepare (bool rateChanged, bool)
{
    if (core != nullptr)
    {
        const juce::ScopedLock scope (effectLock);
        core->prepare (rateChanged);
    }

    currentQueue.clear();
    nextQueue.clear();
}

void GlassRailEffect::parameterChanged (Parameter& parameter)
{
    if (core != nullptr)
    {
        const juce::ScopedLock scope (effectLock);
        core->parameterChanged (parameter);
    }

    BasePlugin::parameterChanged (parameter);
}

void GlassRailEffect::presetApplied()
{
    if (core == nullptr)
        return;

    const juce::ScopedLock scope (effectLock);
    core->songPositionChanged (0.0);
}

//==============================================================================
void GlassRailEffect::process (ProcessContext& context)
{
    if (usesTransport() && context.playHead != nullptr)
        readPlayHead (*context.playHead);

    auto& buffer = *context.buffer;
    const auto numSamples = buffer.getNumSamples();
    const auto numChannels = context.numInputChannels == 2 || context.numOutputChannels == 2 ? 2 : 1;

    if (buffer.getNumChannels() < numChannels)
        return;

    for (int channel = context.numInputChannels; channel < context.numOutputChannels; ++channel)
        if (channel < buffer.getNumChannels())
            buffer.clear (channel, 0, numSamples);

    Piece piece { buffer.getWritePointer (0), buffer.getWritePointer (numChannels - 1), 0 };

    enqueue (*context.midi);

    for (const auto event : currentQueue)
    {
        if (event.samplePosition >= numSamples)
            break;

        renderUpTo (piece, event.samplePosition, context);
        handleEvent (event);
    }

    renderUpTo (piece, numSamples, context);
    carryOverEvents (numSamples);
}

void GlassRailEffect::readPlayHead (juce::AudioPlayHead& playHead)
{
    const auto position = playHead.getPosition();

    if (! position.hasValue())
        return;

    const auto bpm = position->getBpm();
    const auto ppq = position->getPpqPosition();
    const auto hasTempo = bpm.hasValue() && *bpm >= 0.0 && *bpm <= fastestTempo;
    const auto hasPosition = position->getIsPlaying() && ppq.hasValue() && std::abs (*ppq) <= furthestPosition;

    // A host that tells no tempo leaves the last one standing, which is 120 at first.
    const auto tempo = hasTempo ? *bpm : static_cast<double> (lastTempo.load());
    const auto tempoF = static_cast<float> (tempo);

    if (lastTempo.exchange (tempoF) != tempoF)
        tempoChanged();

    if (core == nullptr)
        return;

    const juce::ScopedLock scope (effectLock);

    core->tempoChanged (tempo);

    if (hasPosition)
        core->songPositionChanged (*ppq);
}

void GlassRailEffect::enqueue (const juce::MidiBuffer& incoming)
{
    const auto end = static_cast<int> (furthestEvent * getRateConstants().sampleRate);

    for (const auto event : incoming)
        if (juce::isPositiveAndBelow (event.samplePosition, end))
            addIfRoom (currentQueue, event, event.samplePosition);
}

void GlassRailEffect::renderUpTo (Piece& piece, int end, const ProcessContext& context)
{
    const auto numSamples = end - piece.start;

    if (numSamples <= 0)
        return;

    const auto stereoIn = context.numInputChannels == 2;
    const auto stereoOut = context.numOutputChannels == 2;
    auto* left = piece.left + piece.start;
    auto* right = piece.right + piece.start;
    piece.start = end;

    if (core == nullptr)
        return;

    const juce::ScopedLock scope (effectLock);

    // A mono input feeds both sides.
    if (stereoOut)
        core->processStereo (left, stereoIn ? right : left, left, right, numSamples, context.bypassed);
    else
        core->processMono (left, numSamples, context.bypassed);
}

void GlassRailEffect::handleEvent (const juce::MidiMessageMetadata& event)
{
    constexpr auto controlChange = 0xb0; // on any channel

    if (event.numBytes == 3 && (event.data[0] & 0xf0) == controlChange)
        handleController (event.getMessage());
}

void GlassRailEffect::carryOverEvents (int numSamples)
{
    nextQueue.clear();

    for (auto event = currentQueue.findNextSamplePosition (numSamples); event != currentQueue.cend(); ++event)
        addIfRoom (nextQueue, *event, (*event).samplePosition - numSamples);

    currentQueue.swapWith (nextQueue);
}

} // namespace K7R
