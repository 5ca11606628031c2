// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the bytes as a MIDI map, as a host map and as events.

#include "FuzzedPlugin.h"
#include "support/BoundedXml.h"
#include "support/SafeFile.h"

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    auto& plugin = getFuzzedPlugin();
    const auto text = K7R::decodeText (data, size);

    if (const auto xml = K7R::parseBoundedXml (text))
    {
        plugin.get().getMidiControlMap().loadFromXml (xml.get());
        plugin.get().loadHostMapXml (*xml);

        K7R::EventsMap events;
        events.loadFromXml (*xml);
    }

    // No parameter sits at two places.
    for (const auto& parameter : plugin.get().getParameters().getParameters())
    {
        const auto controller = plugin.get().getMidiControlMap().getController (*parameter);
        const auto hostIndex = plugin.get().getHostIndex (*parameter);

        for (int i = 0; i < 128; ++i)
            if (i != controller && plugin.get().getMidiControlMap().getParameter (i) == parameter.get())
                std::abort();

        if (hostIndex >= plugin.get().getNumHostParameters())
            std::abort();
    }

    plugin.check();
    return 0;
}
