// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/BoundedXml.h"

#include <cstring>
#include <vector>

namespace quilvane
{

namespace
{

using Reader = juce::CharPointer_UTF8;

/** Whether a text is an XML document of the strict kind that our own writers write.

    JUCE's parser goes on behind what it can't make sense of, and then reads past the end, recurses without bound or
    never comes back. Of a document that is well formed there is only one way to read it.
*/
class StrictXml
{
public:
    explicit StrictXml (Reader document) : text (document) {}

    bool isWellFormed()
    {
        while (! isDone)
            if (! readNext())
                return false;

        return true;
    }

private:
    bool readNext()
    {
        if (text.isEmpty())
            return false;

        if (startsWith ("<!--"))
            return skipPast (4, "-->");

        if (startsWith ("<?"))
            // Text behind one among the elements would keep the parser for ever.
            return openTags.empty() && skipPast (2, "?>");

        if (startsWith ("<![CDATA["))
            return ! openTags.empty() && skipPast (9, "]]>");

        if (startsWith ("</"))
            return readClosingTag();

        const auto c = text.getAndAdvance();

        if (c == '<')
            return readOpeningTag();

        if (openTags.empty())
            return juce::CharacterFunctions::isWhitespace (c);

        return c != '&' || readEntity();
    }

    bool readOpeningTag()
    {
        const auto name = readName();

        if (name.isEmpty() || openTags.size() >= static_cast<size_t> (maximumXmlDepth))
            return false;

        for (;;)
        {
            const auto hasSpace = skipWhitespace();

            if (startsWith ("/>"))
            {
                text += 2;
                isDone = openTags.empty();
                return true;
            }

            if (startsWith (">"))
            {
                ++text;
                openTags.push_back (name);
                return true;
            }

            if (! hasSpace || ! readAttribute())
                return false;
        }
    }

    bool readAttribute()
    {
        if (readName().isEmpty())
            return false;

        skipWhitespace();

        if (text.getAndAdvance() != '=')
            return false;

        skipWhitespace();
        const auto quote = text.getAndAdvance();

        if (quote != '"' && quote != '\'')
            return false;

        for (auto c = text.getAndAdvance(); c != quote; c = text.getAndAdvance())
            if (c == 0 || c == '<' || (c == '&' && ! readEntity()))
                return false;

        return true;
    }

    bool readClosingTag()
    {
        text += 2;

        if (openTags.empty() || readName() != openTags.back())
            return false;

        openTags.pop_back();
        skipWhitespace();
        isDone = openTags.empty();
        return text.getAndAdvance() == '>';
    }

    /** What stands behind an ampersand: one of the five names that need no declaration, or a character's number. */
    bool readEntity()
    {
        for (const auto* name : { "amp;", "quot;", "apos;", "lt;", "gt;" })
        {
            if (startsWith (name))
            {
                text += static_cast<int> (std::strlen (name));
                return true;
            }
        }

        if (! startsWith ("#"))
            return false;

        ++text;
        const auto base = startsWith ("x") ? 16 : 10;

        if (base == 16)
            ++text;

        constexpr int lastCharacter = 0x10ffff, firstSurrogate = 0xd800, lastSurrogate = 0xdfff;
        int character = 0;

        for (; *text != ';'; ++text)
        {
            const auto digit = juce::CharacterFunctions::getHexDigitValue (*text);

            if (digit < 0 || digit >= base || character > lastCharacter)
                return false;

            character = character * base + digit;
        }

        ++text;
        return character > 0 && character <= lastCharacter
               && ! (character >= firstSurrogate && character <= lastSurrogate);
    }

    /** Letters, digits and "-._:" of ASCII; empty if there are none. */
    juce::String readName()
    {
        const auto start = text;

        while (*text < 128 && (juce::CharacterFunctions::isLetterOrDigit (*text) || isAnyOf (*text, "-._:")))
            ++text;

        return { start, text };
    }

    bool skipWhitespace()
    {
        const auto start = text;
        text = text.findEndOfWhitespace();
        return text != start;
    }

    /** Moves past so many characters and then behind the next `end`; false if there is none. */
    bool skipPast (int opening, const char* end)
    {
        for (text += opening; ! startsWith (end); ++text)
            if (text.isEmpty())
                return false;

        text += static_cast<int> (std::strlen (end));
        return true;
    }

    bool startsWith (const char* prefix) const
    {
        return text.compareUpTo (juce::CharPointer_ASCII (prefix), static_cast<int> (std::strlen (prefix))) == 0;
    }

    static bool isAnyOf (juce::juce_wchar c, const char* characters)
    {
        return c != 0 && juce::CharPointer_ASCII (characters).indexOf (c) >= 0;
    }

    Reader text;
    std::vector<juce::String> openTags;
    bool isDone = false; // the outermost element is read; the parser doesn't look further
};

bool isValidText (const juce::String& text)
{
    const auto numBytes = text.getNumBytesAsUTF8();

    // Readers of characters trust the encoding, and would run past the end of a broken one.
    return numBytes <= static_cast<size_t> (maximumXmlBytes)
           && Reader::isValidString (text.toRawUTF8(), static_cast<int> (numBytes));
}

} // namespace

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::String& text)
{
    return isValidText (text) && StrictXml (text.toUTF8()).isWellFormed() ? juce::parseXML (text) : nullptr;
}

std::unique_ptr<juce::XmlElement> parseBoundedXmlHead (const juce::String& text)
{
    if (text.containsIgnoreCase ("<!DOCTYPE") || ! isValidText (text))
        return nullptr;

    return juce::XmlDocument (text).getDocumentElement (true);
}

juce::String readBoundedText (const juce::File& file)
{
    // Pipes and devices have no size; the size that a file had is no promise either.
    if (! file.existsAsFile() || file.getSize() <= 0 || file.getSize() > maximumXmlBytes)
        return {};

    juce::FileInputStream stream (file);
    juce::MemoryBlock bytes;

    if (stream.failedToOpen() || stream.readIntoMemoryBlock (bytes, maximumXmlBytes + 1) > maximumXmlBytes)
        return {};

    return juce::String::createStringFromData (bytes.getData(), static_cast<int> (bytes.getSize()));
}

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::File& file)
{
    return parseBoundedXml (readBoundedText (file));
}

} // namespace quilvane
