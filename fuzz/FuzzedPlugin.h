// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cmath>
#include <cstdlib>

#include "core/BasePlugin.h"
#include "parameters/StringParameter.h"
#include "product/Quilvane.h"

/** A plug-in for harnesses, with a home of its own, on one thread that is the message thread. */
class FuzzedPlugin
{
public:
    FuzzedPlugin() : home (juce::File::createTempFile ("fuzz"))
    {
        home.createDirectory();
        setenv ("HOME", home.getFullPathName().toRawUTF8(), 1);
        processor = quilvane::Quilvane::createProcessor();
    }

    ~FuzzedPlugin()
    {
        processor.reset();
        home.deleteRecursively();
    }

    K7R::BasePlugin& get() { return processor->getPlugin(); }

    /** Builds another instance over the files that the home holds by now. */
    void restart()
    {
        processor.reset();
        processor = quilvane::Quilvane::createProcessor();
    }

    /** Whatever came in, every value is a number in its range, and the state can be saved. */
    void check()
    {
        for (const auto& parameter : get().getParameters().getParameters())
        {
            if (dynamic_cast<const K7R::StringParameter*> (parameter.get()) != nullptr)
                continue; // any number may stand in a text

            const auto normalised = parameter->getNormalised();

            if (! (normalised >= 0.0f && normalised <= 1.0f) || ! std::isfinite (parameter->getFloat()))
                std::abort();

            parameter->getDisplayText();
        }

        juce::MemoryBlock chunk;
        processor->getStateInformation (chunk);

        if (chunk.getSize() < 9)
            std::abort();
    }

    std::unique_ptr<K7R::PluginAudioProcessor> processor;

private:
    const juce::ScopedJuceInitialiser_GUI juce;
    const juce::File home;
};

inline FuzzedPlugin& getFuzzedPlugin()
{
    static FuzzedPlugin plugin;
    return plugin;
}
