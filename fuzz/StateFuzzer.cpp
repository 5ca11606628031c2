// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the bytes as a host's state chunk, and once more as the text of one.

#include "FuzzedPlugin.h"

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    auto& plugin = getFuzzedPlugin();
    plugin.processor->setStateInformation (data, static_cast<int> (size));

    juce::MemoryOutputStream chunk;
    chunk.write ("VC2!", 4);
    chunk.writeInt (static_cast<int> (size));
    chunk.write (data, size);
    chunk.writeByte (0);
    plugin.processor->setStateInformation (chunk.getData(), static_cast<int> (chunk.getDataSize()));

    plugin.check();
    return 0;
}
