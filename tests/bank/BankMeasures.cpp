// SPDX-License-Identifier: GPL-3.0-or-later

#include "bank/BankMeasures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <juce_dsp/juce_dsp.h>

using namespace quilvane::parameterIds;

namespace bank
{

namespace
{

constexpr double longestHeardWhole = 0.9; // seconds of a cycle; longer ones are heard in pieces
constexpr int piecesPerCycle = 12;

constexpr int fftOrder = 10;
constexpr size_t fftSize = size_t { 1 } << fftOrder;
constexpr size_t windowsPerPiece = 2; // overlapping by half
constexpr size_t pieceSize = (windowsPerPiece + 1) * fftSize / 2;
constexpr size_t settlingSize = 1000; // after a jump: for the lag of the oscillators and the resonances
constexpr size_t preRollSize = 4410;

/** Sums the power of spectra over half-octave bands. */
class BandAnalyser
{
public:
    using Bands = std::array<double, Spectrogram::numBands>;

    BandAnalyser()
    {
        for (size_t i = 0; i < fftSize; ++i)
            window[i] =
                static_cast<float> (0.5 - 0.5 * std::cos (2.0 * signals::pi * static_cast<double> (i) / fftSize));

        for (size_t band = 0; band < firstBins.size(); ++band)
            firstBins[band] = static_cast<size_t> (
                std::ceil (lowest * std::pow (2.0, static_cast<double> (band) / 2.0) * fftSize / sampleRate));
    }

    /** Adds two signals in one transform, as its real and its imaginary part. */
    void add (const float* first, const float* second, Bands& firstPowers, Bands& secondPowers)
    {
        for (size_t i = 0; i < fftSize; ++i)
            input[i] = { first[i] * window[i], second[i] * window[i] };

        fft.perform (input.data(), output.data(), false);

        for (size_t band = 0; band < Spectrogram::numBands; ++band)
        {
            for (auto bin = firstBins[band]; bin < firstBins[band + 1]; ++bin)
            {
                const auto a = output[bin], b = std::conj (output[fftSize - bin]);
                firstPowers[band] += static_cast<double> (std::norm (a + b));
                secondPowers[band] += static_cast<double> (std::norm (a - b));
            }
        }
    }

private:
    static constexpr double lowest = 110.0; // Hz

    juce::dsp::FFT fft { fftOrder };
    std::array<float, fftSize> window {};
    std::array<juce::dsp::Complex<float>, fftSize> input, output;
    std::array<size_t, Spectrogram::numBands + 1> firstBins {};
};

void addFrame (Spectrogram& spectrogram, const Session& session, size_t start, size_t numWindows)
{
    constexpr double leastPower = 1.0e-12, lowestGain = -30.0; // dB
    static BandAnalyser analyser;
    BandAnalyser::Bands in {}, unused {}, left {}, right {};

    for (size_t i = 0; i < numWindows; ++i, start += fftSize / 2)
    {
        const auto* input = session.getInput().data() + start;
        analyser.add (input, input, in, unused);
        analyser.add (session.getLeft().data() + start, session.getRight().data() + start, left, right);
    }

    // A signal that is both parts of one transform has half its power in each.
    for (const auto& side : { left, right })
        for (size_t band = 0; band < side.size(); ++band)
            spectrogram.gains.push_back (static_cast<float> (
                std::max (lowestGain, 10.0 * std::log10 ((side[band] + leastPower) / (in[band] + leastPower)))));
}

double getMean (const std::vector<float>& values)
{
    double sum = 0.0;

    for (auto value : values)
        sum += static_cast<double> (value);

    return sum / static_cast<double> (values.size());
}

} // namespace

//==============================================================================
Heard listen (const Preset& preset, Material material, double bpm)
{
    const auto isNoise = material == Material::pinkNoise;
    Session session (preset, material, bpm, isNoise ? Session::Sides::both : Session::Sides::leftIfAlike);
    Heard heard;
    const auto cycle = preset.getLongestCycle (bpm);
    const auto numCycles = isNoise ? 2 : 1;
    session.play (preRollSize, false);

    if (cycle <= longestHeardWhole)
    {
        const auto seconds = cycle > 0.0 ? std::max (numCycles, static_cast<int> (1.0 / cycle)) * cycle : 0.5;
        const auto count = static_cast<size_t> (seconds * sampleRate);
        session.play (count + fftSize, true);
        heard.framesPerCycle = juce::roundToInt (cycle * sampleRate / (fftSize / 2.0));
        const auto hop = cycle > 0.0 ? cycle * sampleRate / heard.framesPerCycle : fftSize / 2.0;

        for (double start = 0.0; start < static_cast<double> (count); start += hop)
            addFrame (heard.spectrogram, session, static_cast<size_t> (start), 1);
    }
    else
    {
        heard.framesPerCycle = piecesPerCycle;
        const auto gap = cycle / piecesPerCycle - static_cast<double> (settlingSize + pieceSize) / sampleRate;

        for (int i = 0; i < piecesPerCycle * numCycles; ++i)
        {
            session.play (settlingSize, false);
            session.play (pieceSize, true);
            addFrame (heard.spectrogram, session, static_cast<size_t> (i) * pieceSize, windowsPerPiece);
            session.skip (gap);
        }
    }

    heard.loudnessChange = session.getLoudnessChange();
    heard.sideToMid = session.getSideToMid();
    heard.peak = session.getPeak();
    return heard;
}

Spectrogram listenInParts (const Preset& preset, double bpm)
{
    constexpr size_t numParts = 3, framesPerPart = 21, partSize = framesPerPart * fftSize;
    Session session (preset, Material::pinkNoise, bpm, Session::Sides::leftIfAlike);
    const auto gap =
        preset.getLongestCycle (bpm) / numParts - static_cast<double> (partSize + settlingSize) / sampleRate;
    Spectrogram spectrogram;
    session.play (preRollSize, false);

    for (size_t part = 0; part < numParts; ++part)
    {
        session.play (partSize, true);

        for (size_t i = 0; i < framesPerPart; ++i)
            addFrame (spectrogram, session, part * partSize + i * fftSize, 1);

        if (gap > 0.0)
        {
            session.skip (gap);
            session.play (settlingSize, false);
        }
    }

    return spectrogram;
}

Preset withoutSecondLayer (const Preset& preset)
{
    auto single = preset;
    const size_t lesser = &preset.getMain() == preset.oscillators ? 1 : 0;
    single.oscillators[lesser].semitones = 0.0;

    for (auto& [key, value] : single.values)
        if (key == (lesser == 0 ? "LFO 1 Depth" : "LFO 2 Depth"))
            value = "0";

    return single;
}

double measureResonance (const Preset& preset)
{
    constexpr int order = 13;
    constexpr size_t length = size_t { 1 } << order;
    constexpr double semitonesOfCentre = 93.86314; // over the parameter's whole range
    const auto sweep = preset.oscillators[0].semitones + preset.oscillators[1].semitones;
    double highest = -std::numeric_limits<double>::infinity();

    for (double place : { 0.0, 0.5, 1.0 })
    {
        PluginInTest plugin (2.0 * sampleRate);
        preset.applyTo (plugin);
        const auto centre = static_cast<double> (plugin.parameter (centerFrequency).getNormalised());
        plugin.set (lfo1Depth, 0.0f);
        plugin.set (lfo2Depth, 0.0f);
        plugin.set (centerFrequency, static_cast<float> (std::min (1.0, centre + place * sweep / semitonesOfCentre)));
        plugin.rate = sampleRate;
        plugin.prepare();

        std::vector<float> response (length), right (length);
        response[0] = 1.0f;
        plugin.process (response, right);
        response.resize (2 * length);
        juce::dsp::FFT (order).performFrequencyOnlyForwardTransform (response.data());

        double peak = 0.0, sum = 0.0;
        int count = 0;

        for (double hz = 60.0; hz < 12000.0; hz *= std::pow (2.0, 1.0 / 24.0), ++count)
        {
            const auto magnitude = static_cast<double> (response[static_cast<size_t> (hz * length / sampleRate)]);
            peak = std::max (peak, magnitude * magnitude);
            sum += magnitude * magnitude;
        }

        highest = std::max (highest, 10.0 * std::log10 (peak / (sum / count)));
    }

    return highest;
}

double measureChange (const Preset& preset)
{
    constexpr size_t length = 6000;
    Session session (preset, Material::pinkNoise, 120.0, Session::Sides::both);

    for (bool keep : { false, true, true })
    {
        session.rewind();
        session.play (length, keep);
    }

    double power = 0.0, difference = 0.0;

    for (const auto* side : { &session.getLeft(), &session.getRight() })
    {
        for (size_t i = 0; i < length; ++i)
        {
            const auto first = static_cast<double> ((*side)[i]), second = static_cast<double> ((*side)[length + i]);
            power += first * first;
            difference += (first - second) * (first - second);
        }
    }

    return 10.0 * std::log10 (difference / power + 1.0e-12);
}

//==============================================================================
double Spectrogram::getColour() const
{
    const auto mean = getMean (gains);
    double sum = 0.0;

    for (auto gain : gains)
        sum += std::pow (static_cast<double> (gain) - mean, 2.0);

    return std::sqrt (sum / static_cast<double> (gains.size()));
}

double Spectrogram::getRestlessness() const
{
    double sum = 0.0;

    for (size_t i = frameSize; i < gains.size(); ++i)
        sum += std::pow (static_cast<double> (gains[i] - gains[i - frameSize]), 2.0);

    return std::sqrt (sum / static_cast<double> (gains.size() - frameSize));
}

double Spectrogram::getLikeness (int framesLater, bool toRightSide) const
{
    const auto count = getNumFrames() - static_cast<size_t> (std::abs (framesLater));
    const auto first = static_cast<size_t> (std::max (0, -framesLater));
    const auto second = static_cast<size_t> (std::max (0, framesLater));
    double ab = 0.0, aa = 0.0, bb = 0.0;

    for (size_t band = 0; band < numBands; ++band)
    {
        const auto other = toRightSide ? band + numBands : band;
        double sumA = 0.0, sumB = 0.0;

        for (size_t i = 0; i < count; ++i)
        {
            sumA += static_cast<double> (getFrame (first + i)[band]);
            sumB += static_cast<double> (getFrame (second + i)[other]);
        }

        for (size_t i = 0; i < count; ++i)
        {
            const auto a = static_cast<double> (getFrame (first + i)[band]) - sumA / static_cast<double> (count);
            const auto b = static_cast<double> (getFrame (second + i)[other]) - sumB / static_cast<double> (count);
            ab += a * b;
            aa += a * a;
            bb += b * b;
        }
    }

    return ab / std::sqrt (aa * bb + 1.0e-20);
}

int Spectrogram::getLag (int framesPerCycle) const
{
    int best = 0;

    for (int shift = -framesPerCycle / 2; shift <= framesPerCycle / 2; ++shift)
        if (getLikeness (shift, true) > getLikeness (best, true))
            best = shift;

    return best;
}

double getDistance (const Spectrogram& a, const Spectrogram& b)
{
    const auto frames = static_cast<int> (std::min (a.getNumFrames(), b.getNumFrames()));
    const auto offset = static_cast<float> (getMean (a.gains) - getMean (b.gains));
    auto least = std::numeric_limits<double>::infinity();

    for (int shift = -frames / 2; shift <= frames / 2; ++shift)
    {
        const auto* first = a.getFrame (static_cast<size_t> (std::max (0, -shift)));
        const auto* second = b.getFrame (static_cast<size_t> (std::max (0, shift)));
        const auto count = static_cast<size_t> (frames - std::abs (shift)) * Spectrogram::frameSize;
        std::array<float, Spectrogram::frameSize> sums {};

        for (size_t start = 0; start < count; start += sums.size())
        {
            for (size_t i = 0; i < sums.size(); ++i)
            {
                const auto difference = first[start + i] - second[start + i] - offset;
                sums[i] += difference * difference;
            }
        }

        double sum = 0.0;

        for (auto value : sums)
            sum += static_cast<double> (value);

        least = std::min (least, std::sqrt (sum / static_cast<double> (count)));
    }

    return least / std::sqrt (a.getColour() * b.getColour());
}

} // namespace bank
