// SPDX-License-Identifier: GPL-3.0-or-later

#include "product/Quilvane.h"

/** Called by the plug-in client inside VSTPluginMain, which answers null if this throws. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter();

juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return quilvane::Quilvane::createProcessor().release();
}
