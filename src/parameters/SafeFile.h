// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

namespace quilvane
{

/** Writes a text file as a whole or not at all: to a temporary file in the same folder, which is renamed
    over the old one once all of it is on the disk. A full disk, a killed process or a power cut leaves what
    was there before.

    @returns whether the file now holds the text */
bool replaceFileSafely (const juce::File&, const juce::String& text);

/** The same for an XML document, in UTF-8. */
bool replaceFileSafely (const juce::File&, const juce::XmlElement&);

/** Renames a file over another one, in one step or not at all. */
bool renameFile (const juce::File& from, const juce::File& to);

/** Whether two paths that exist lead to one file, as names of different case may. */
bool isSameFile (const juce::File&, const juce::File&);

} // namespace quilvane
