// SPDX-License-Identifier: GPL-3.0-or-later

// The one place that knows the release channel, so that one build of the engine serves plug-ins of several: what a
// plug-in brings along itself comes before what the library holds.

#include "product/Quilvane.h"

namespace quilvane
{

using namespace K7R;

juce::String Quilvane::getReleaseChannel() const
{
    return QUILVANE_CHANNEL;
}

} // namespace quilvane
