// SPDX-License-Identifier: GPL-3.0-or-later

#include "parameters/BoundedXml.h"

#include <cstring>

namespace quilvane
{

namespace
{

using Reader = juce::CharPointer_UTF8;

bool startsWith (Reader text, const char* prefix)
{
    return text.compareUpTo (juce::CharPointer_ASCII (prefix), static_cast<int> (std::strlen (prefix))) == 0;
}

/** Moves past so many characters, and then behind the next occurrence of `end` or to the end of the text. */
void skipPast (Reader& text, int opening, const char* end)
{
    text += opening;

    while (! text.isEmpty() && ! startsWith (text, end))
        ++text;

    if (! text.isEmpty())
        text += static_cast<int> (std::strlen (end));
}

/** Moves behind the entity whose ampersand lies before; false for one that the parser could run past the end
    with, that it would have to look up, or that is no character. */
bool skipEntity (Reader& text)
{
    for (const auto* name : { "amp;", "quot;", "apos;", "lt;", "gt;" })
    {
        if (startsWith (text, name))
        {
            text += static_cast<int> (std::strlen (name));
            return true;
        }
    }

    if (text.getAndAdvance() != '#')
        return false;

    const auto base = startsWith (text, "x") ? 16 : 10;
    const auto firstDigit = base == 16 ? text + 1 : text;
    constexpr int lastCharacter = 0x10ffff, firstSurrogate = 0xd800, lastSurrogate = 0xdfff;
    int character = 0;

    for (text = firstDigit; *text != ';'; ++text)
    {
        const auto digit = juce::CharacterFunctions::getHexDigitValue (*text);

        if (digit < 0 || digit >= base || character > lastCharacter)
            return false;

        character = character * base + digit;
    }

    ++text;
    return character > 0 && character <= lastCharacter && ! (character >= firstSurrogate && character <= lastSurrogate);
}

enum class Tag
{
    opens,
    closesItself,
    malformed,
};

/** Moves behind the opening tag whose name begins here. The parser skips comments and the like inside a
    tag; nobody writes them, so a "<" outside quotes counts as malformed. */
Tag skipOpeningTag (Reader& text)
{
    juce::juce_wchar previous = 0;

    while (! text.isEmpty())
    {
        const auto c = text.getAndAdvance();

        if (c == '>')
            return previous == '/' ? Tag::closesItself : Tag::opens;

        if (c == '<')
            return Tag::malformed;

        if (c == '"' || c == '\'')
        {
            for (auto inside = text.getAndAdvance(); inside != c; inside = text.getAndAdvance())
                if (inside == 0 || (inside == '&' && ! skipEntity (text)))
                    return Tag::malformed;
        }

        previous = c;
    }

    return Tag::malformed;
}

/** Whether elements nest within the bound, and the parser comes to an end. It reads markup as the parser does where that decides what is an
    opening tag; what is malformed otherwise is left to the parser. */
bool isSafeToParse (Reader text)
{
    int depth = 0;
    bool isInProlog = true;

    while (! text.isEmpty())
    {
        if (startsWith (text, "<!--"))
            skipPast (text, 4, "-->");
        else if (startsWith (text, "<![CDATA["))
            skipPast (text, 9, "]]>");
        else if (startsWith (text, "<?"))
        {
            // The parser never comes to an end where text follows one among the elements.
            if (! isInProlog)
                return false;

            skipPast (text, 2, "?>");
        }
        else if (startsWith (text, "<!"))
            return false;
        else if (startsWith (text, "</"))
        {
            depth = juce::jmax (0, depth - 1);
            skipPast (text, 2, ">");
        }
        else if (const auto c = text.getAndAdvance(); c == '&')
        {
            if (! skipEntity (text))
                return false;
        }
        else if (c == '<')
        {
            isInProlog = false;

            if (++depth > maximumXmlDepth)
                return false;

            const auto tag = skipOpeningTag (text);

            if (tag == Tag::malformed)
                return false;

            if (tag == Tag::closesItself)
                --depth;
        }
    }

    return true;
}

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
    return isValidText (text) && isSafeToParse (text.toUTF8()) ? juce::parseXML (text) : nullptr;
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
