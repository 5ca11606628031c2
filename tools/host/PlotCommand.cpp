// SPDX-License-Identifier: GPL-3.0-or-later

#include <cmath>
#include <iostream>
#include <limits>
#include <memory>
#include <vector>

#include "AudioFiles.h"
#include "Commands.h"
#include "Failure.h"
#include "Options.h"
#include "OutputFile.h"
#include "PlotPainter.h"
#include "Progress.h"
#include "Spectrogram.h"

namespace K7R::host
{

namespace
{

constexpr int maxInputs = 8;

// Limits of --seconds.
constexpr double shortestPlot = 0.1;
constexpr double longestPlot = 3600.0;

// What the comparison of two sounds is smoothed over, in pixels to each side.
constexpr int ratioColumns = 4;
constexpr int ratioRows = 3;

/** The comparison shows nothing where the first sound is so far below its peak, in dB. */
constexpr double ratioFloor = -80.0;

struct PlotSettings
{
    std::vector<juce::File> inputs;
    juce::File output;
    juce::StringArray titles;
    Channel channel = Channel::mixed;
    bool hasRatio = false;
    double seconds = longestPlot; // what follows isn't drawn
};

Channel parseChannel (const juce::String& text)
{
    if (text == "left")
        return Channel::left;

    if (text == "right")
        return Channel::right;

    throw Failure ("--channel wants \"left\" or \"right\", not \"" + text + "\"");
}

PlotSettings parse (const Options& options)
{
    const auto& files = options.requirePositional (2, maxInputs + 1, "one to eight files IN, and OUT.png");
    PlotSettings settings;

    settings.output = resolveFile (files[files.size() - 1]);
    settings.titles = options.getValues ("--title");
    settings.hasRatio = options.has ("--ratio");
    settings.seconds = options.getNumber ("--seconds", { shortestPlot, longestPlot }, " s", settings.seconds);

    for (int i = 0; i < files.size() - 1; ++i)
        settings.inputs.push_back (resolveFile (files[i]));

    if (const auto channel = options.getValue ("--channel"))
        settings.channel = parseChannel (*channel);

    if (settings.hasRatio && settings.inputs.size() != 2)
        throw Failure ("--ratio compares two files, not " + juce::String (settings.inputs.size()));

    if (settings.titles.size() > static_cast<int> (settings.inputs.size()) + (settings.hasRatio ? 1 : 0))
        throw Failure ("there are more titles than panels");

    if (! settings.output.hasFileExtension ("png"))
        throw Failure (settings.output.getFullPathName() + " should end in .png");

    OutputFile::check (settings.output);

    for (const auto& input : settings.inputs)
        OutputFile::checkIsNot (input, settings.output);

    return settings;
}

/** Silence is shown as silence: the loudest cell counts as this power at least. */
constexpr double lowestPeak = 1.0e-12;

double toDecibels (double power)
{
    return 10.0 * std::log10 (juce::jmax (power, 1.0e-20));
}

//==============================================================================
/** The picture of one command: its inputs, their spectrograms and the panels. */
class Plot
{
public:
    explicit Plot (const PlotSettings& settingsToUse) : settings (settingsToUse)
    {
        for (const auto& file : settings.inputs)
            inputs.push_back (std::make_unique<AudioInput> (file));

        for (const auto& input : inputs)
            seconds = juce::jmax (seconds, static_cast<double> (input->getLength()) / input->getFileRate());

        seconds = juce::jmin (seconds, settings.seconds);
    }

    juce::Image paint()
    {
        PlotPainter painter (static_cast<int> (inputs.size()) + (settings.hasRatio ? 1 : 0), seconds);
        analyse();

        for (size_t i = 0; i < spectrograms.size(); ++i)
            painter.addPanel (getTitle (i, settings.inputs[i].getFileName()), describe (*inputs[i]),
                              ColourScale::levels(),
                              [&, this] (int x, int y)
                              { return toDecibels (static_cast<double> (spectrograms[i].getPower (x, y)) / peak); });

        if (settings.hasRatio)
            addRatio (painter);

        return painter.getImage();
    }

private:
    void analyse()
    {
        Progress progress ("Plotting " + settings.output.getFileName(), static_cast<double> (inputs.size()));

        for (const auto& input : inputs)
        {
            spectrograms.emplace_back (*input, settings.channel, PlotPainter::getPlotSize(), seconds);
            peak = juce::jmax (peak, static_cast<double> (spectrograms.back().getPeak()));
            progress.update (static_cast<double> (spectrograms.size()));
        }
    }

    void addRatio (PlotPainter& painter)
    {
        auto& first = spectrograms[0];
        const auto ratio = spectrograms[1].over (first, ratioColumns, ratioRows);
        first.smooth (ratioColumns, ratioRows);
        const auto firstPeak = juce::jmax (lowestPeak, static_cast<double> (first.getPeak()));

        const auto levelAt = [&] (int x, int y)
        {
            const auto isSilent = toDecibels (static_cast<double> (first.getPower (x, y)) / firstPeak) < ratioFloor;
            return isSilent ? std::numeric_limits<double>::quiet_NaN()
                            : toDecibels (static_cast<double> (ratio.getPower (x, y)));
        };

        painter.addPanel (getTitle (2, "Change of level"), "second over first", ColourScale::changes(), levelAt);
    }

    juce::String getTitle (size_t panel, const juce::String& fallback) const
    {
        const auto index = static_cast<int> (panel);
        return index < settings.titles.size() ? settings.titles[index] : fallback;
    }

    juce::String describe (const AudioInput& input) const
    {
        const auto channel = settings.channel == Channel::left    ? "left, "
                             : settings.channel == Channel::right ? "right, "
                                                                  : "";
        return channel + juce::String (input.getFileRate() / 1000.0) + " kHz";
    }

    const PlotSettings& settings;
    std::vector<std::unique_ptr<AudioInput>> inputs;
    std::vector<Spectrogram> spectrograms;
    double seconds = 0.0;     // of the longest input
    double peak = lowestPeak; // power of the loudest
};

void runPlot (const juce::ArgumentList& arguments)
{
    using Kind = Options::Kind;

    const auto settings = parse (Options (arguments, { { "--title", Kind::many },
                                                       { "--channel", Kind::single },
                                                       { "--ratio", Kind::toggle },
                                                       { "--seconds", Kind::single } }));
    const auto image = Plot (settings).paint();

    OutputFile::write (settings.output, [&image] (juce::OutputStream& out)
                       { return juce::PNGImageFormat().writeImageToStream (image, out); });

    std::cout << settings.output.getFileName() << ": " << image.getWidth() << " x " << image.getHeight() << " pixels"
              << std::endl;
}

constexpr auto helpText =
    R"(Draws how the sound of each IN is spread over time and frequency, one panel above the other, to a PNG
picture of 1600 pixels across. All panels share their times and their levels, which are shown in dB below
the loudest.

  --title TEXT           a panel's title instead of the file's name; once for each panel, from the top
  --channel left|right   shows one side instead of both sides mixed
  --seconds N            draws no more than the first N seconds
  --ratio                with two files, adds a panel of what the second has more or less of than the first:
                         what an effect takes away and adds, whatever the music does)";

} // namespace

juce::ConsoleApplication::Command makePlotCommand()
{
    return { "plot", "plot IN... OUT.png", "Draws the spectrograms of audio files", helpText, runPlot };
}

} // namespace K7R::host
