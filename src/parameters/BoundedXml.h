// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_core/juce_core.h>

namespace quilvane
{

/** Parses an XML document that may come from anywhere.

    A document with more than maximumXmlBytes bytes of UTF-8 or with elements nested deeper than
    maximumXmlDepth is refused, as is one that isn't well formed, has a document type declaration, processing
    instructions among its elements, names beyond ASCII, or entities but the five that need no declaration and
    the numbers of characters: there JUCE's parser could recurse without bound, never come back, or read past the
    end. None of our own documents comes near these bounds. What follows the outermost element isn't looked at.

    @returns null for an unreadable or refused document
*/
std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::String& text);

/** The same for the outermost element alone, without its children: what follows its tag isn't looked at. */
std::unique_ptr<juce::XmlElement> parseBoundedXmlHead (const juce::String& text);

/** The same for a file; one that is missing or too large gives null and is not read. */
std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::File& file);

/** The text of a regular file, in UTF-8 or what a byte order mark says; empty for one that is missing, no
    regular file, or larger than maximumXmlBytes. */
juce::String readBoundedText (const juce::File& file);

constexpr int maximumXmlBytes = 4 * 1024 * 1024;
constexpr int maximumXmlDepth = 64;

} // namespace quilvane
