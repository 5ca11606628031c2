// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_core/juce_core.h>

namespace K7R
{

/** Parses an XML document that may come from anywhere, in time by its length.

    A document beyond the bounds below is refused, as is one that isn't well formed, has a document type declaration,
    processing instructions among its elements, names beyond ASCII, or entities but the five that need no declaration
    and the numbers of characters. What follows the outermost element isn't looked at.

    @returns null for an unreadable or refused document
*/
std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::String& text);

/** The same for the outermost element alone, without its children: what follows its tag isn't looked at, but has to be
    within maximumXmlBytes. */
std::unique_ptr<juce::XmlElement> parseBoundedXmlHead (const juce::String& text);

/** The same for a file; one that is missing or too large gives null and is not read. */
std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::File& file);

/** The text of a regular file, in UTF-8 or what a byte order mark says; empty for one that is missing, no
    regular file, or larger than maximumXmlBytes. */
juce::String readBoundedText (const juce::File& file);

// Ten times what the largest of our own documents hold, and more.
constexpr int maximumXmlBytes = 4 * 1024 * 1024; // in UTF-8
constexpr int maximumXmlDepth = 64;              // of elements in each other
constexpr int maximumXmlNodes = 131072;          // elements, attributes and texts together
constexpr int maximumXmlAttributes = 128;        // of one element
constexpr size_t maximumXmlNames = 1024;         // different ones, of elements and attributes together
constexpr size_t maximumXmlNameBytes = 256;

} // namespace K7R
