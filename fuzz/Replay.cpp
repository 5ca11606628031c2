// SPDX-License-Identifier: GPL-3.0-or-later

// Gives a harness each file of a folder, once: what a fuzzer found stays found.

#include <iostream>

#include <juce_core/juce_core.h>

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

int main (int argc, char** argv)
{
    if (argc != 2)
    {
        std::cerr << "the argument is a folder of seeds\n";
        return 1;
    }

    const juce::File folder (juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argv[1])));
    int numSeeds = 0;

    for (const auto& file : folder.findChildFiles (juce::File::findFiles, false))
    {
        juce::MemoryBlock seed;

        if (! file.loadFileAsData (seed))
        {
            std::cerr << "cannot read " << file.getFullPathName() << "\n";
            return 1;
        }

        std::cout << file.getFileName() << std::endl; // before the run, which may not come back
        LLVMFuzzerTestOneInput (static_cast<const uint8_t*> (seed.getData()), seed.getSize());
        ++numSeeds;
    }

    if (numSeeds == 0)
        std::cerr << "there are no seeds in " << folder.getFullPathName() << "\n";

    return numSeeds == 0 ? 1 : 0;
}
