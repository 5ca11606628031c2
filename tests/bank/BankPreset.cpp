// SPDX-License-Identifier: GPL-3.0-or-later

#include "bank/BankPreset.h"

#include <algorithm>

namespace bank
{

namespace
{

constexpr double semitonesAtFullDepth = 63.0;

juce::String valueOf (const Preset& preset, const juce::String& name)
{
    for (const auto& [key, value] : preset.values)
        if (key == name)
            return value;

    return {};
}

Oscillator readOscillator (const Preset& preset, const juce::String& prefix)
{
    // A note of the list is its length in whole notes, which are four beats.
    const auto note = valueOf (preset, prefix + "Note Rate");
    const auto length = note.contains ("/") ? 1.0 / note.fromFirstOccurrenceOf ("/", false, false).getDoubleValue()
                                            : note.getDoubleValue();
    const auto scale = valueOf (preset, prefix + "Note Scale");
    const auto speedUp = scale == "Triplet" ? 1.5 : scale == "Dotted" ? 1.0 / 1.5 : 1.0;

    Oscillator result;
    result.synced = valueOf (preset, prefix + "Sync") == "On";
    result.freeRate = valueOf (preset, prefix + "Rate").getDoubleValue();
    result.cyclesPerBeat = length > 0.0 ? speedUp / (4.0 * length) : 0.0;
    result.waveform = valueOf (preset, prefix + "Waveform");
    result.semitones = valueOf (preset, prefix + "Depth").getDoubleValue() / 100.0 * semitonesAtFullDepth;
    return result;
}

} // namespace

Preset::Preset (const juce::File& file) : name (file.getFileNameWithoutExtension())
{
    const auto xml = juce::parseXML (file);

    if (xml == nullptr || xml->getTagName() != "Preset")
        return;

    for (int i = 0; i < xml->getNumAttributes(); ++i)
        attributes.set (xml->getAttributeName (i), xml->getAttributeValue (i));

    for (const auto& part : juce::StringArray::fromTokens (attributes["tags"], ";", {}))
    {
        categories.add (part.upToFirstOccurrenceOf (":", false, false));
        tags.addTokens (part.fromFirstOccurrenceOf (":", false, false), "|", {});
    }

    if (const auto* list = xml->getChildByName ("Parameters"))
        for (const auto* child : list->getChildWithTagNameIterator ("param"))
            values.emplace_back (child->getStringAttribute ("name"), child->getStringAttribute ("value"));

    oscillators[0] = readOscillator (*this, "LFO 1 ");
    oscillators[1] = readOscillator (*this, "LFO 2 ");
    stereoPhase = valueOf (*this, "Stereo Phase").getDoubleValue();
}

std::vector<Preset> Preset::readAll (const juce::File& folder)
{
    auto files = folder.findChildFiles (juce::File::findFiles, false, "*.qvprs2");
    files.sort();
    return { files.begin(), files.end() };
}

void Preset::applyTo (PluginInTest& plugin) const
{
    auto& parameters = plugin.processor.getPlugin().getParameters();

    for (const auto& [key, value] : values)
        if (auto* parameter = parameters.getParameterByName (key))
            parameter->setString (value, true);
}

bool Preset::hearsTempo() const
{
    return std::any_of (std::begin (oscillators), std::end (oscillators),
                        [] (const Oscillator& o) { return o.isUsed() && o.synced; });
}

const Oscillator& Preset::getMain() const
{
    return oscillators[1].semitones > oscillators[0].semitones ? oscillators[1] : oscillators[0];
}

double Preset::getLongestCycle (double bpm) const
{
    double longest = 0.0;

    for (const auto& oscillator : oscillators)
        if (oscillator.isUsed())
            longest = std::max (longest, 1.0 / oscillator.getRate (bpm));

    return longest;
}

double Preset::getFastestRate (double bpm) const
{
    double fastest = 0.0;

    for (const auto& oscillator : oscillators)
        if (oscillator.isUsed())
            fastest = std::max (fastest, oscillator.getRate (bpm));

    return fastest;
}

} // namespace bank
