// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include <juce_core/juce_core.h>

namespace K7R
{

/** Writes a file as a whole or not at all: to a temporary file in the same folder, which is renamed
    over the old one once all of it is on the disk. A full disk, a killed process or a power cut leaves what
    was there before.

    What a link leads to is written, over any number of links, and the links stay. A file that was there keeps its
    permissions; a new one has those of the process. Temporary files that a killed process left in the folder are
    deleted an hour later, with the next file that is written there.

    @param write gives the content; false if it can't
    @returns whether the file now holds it */
bool replaceFileSafely (const juce::File&, const std::function<bool (juce::OutputStream&)>& write);

/** The same for a text, in UTF-8. */
bool replaceFileSafely (const juce::File&, const juce::String& text);

/** The same for an XML document, in UTF-8. */
bool replaceFileSafely (const juce::File&, const juce::XmlElement&);

/** Reads a whole file, or what a link leads to. Pipes and devices aren't waited for.
    @returns false if it is no regular file, has more than so many bytes, or can't be read */
bool readRegularFile (const juce::File&, size_t maximumBytes, juce::MemoryBlock&);

/** Whether there is a regular file, or a link that leads to one. */
bool isRegularFile (const juce::File&);

/** Returns the text of a file's bytes: UTF-8, UTF-16 with a byte order mark, or else Windows-1252. */
juce::String decodeText (const void* bytes, size_t numBytes);

/** Renames a file over another one, in one step or not at all. */
bool renameFile (const juce::File& from, const juce::File& to);

/** Whether two paths that exist lead to one file, as names of different case may. */
bool isSameFile (const juce::File&, const juce::File&);

} // namespace K7R
