// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the bytes as a preset file, as tags, and as the settings that a new instance finds.

#include "FuzzedPlugin.h"

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    using namespace K7R;

    auto& plugin = getFuzzedPlugin();
    const auto file = plugin.get().getDirectories().get (Directories::userPresets).getChildFile ("Fuzzed.qvprs2");
    file.replaceWithData (data, size);

    auto& presets = *plugin.get().getUserPresets();
    presets.reload();
    presets.loadItem ("Fuzzed");
    plugin.check();

    // What was read is written, and read again, the same.
    Preset preset;
    preset.loadFromFile (file, plugin.get().getParameters());
    const auto again = TagSet::fromText (preset.tags.toText());

    if (again.toText() != preset.tags.toText())
        std::abort();

    presets.writeItemTags ("Fuzzed", preset.tags);

    plugin.get().getSettingsFile().replaceWithData (data, size);
    plugin.restart();
    plugin.check();
    return 0;
}
