// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace K7R
{

class SkinFile;

/** Reports each attribute of an element, and each element and attribute below it, that nothing reads: readers pass
    over what they don't know, so a misspelt name would never be noticed. Controls that there aren't are reported by
    createControl(). */
void reportUnknownNames (const juce::XmlElement&, SkinFile&);

} // namespace K7R
