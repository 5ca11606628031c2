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

/** Moves behind the next occurrence of `end`, or to the end of the text. */
void skipPast (Reader& text, const char* end)
{
    while (! text.isEmpty() && ! startsWith (text, end))
        ++text;

    if (! text.isEmpty())
        text += static_cast<int> (std::strlen (end));
}

/** Moves behind the tag whose name begins here, past its quoted attributes.
    @returns true if the tag closes itself */
bool skipTag (Reader& text)
{
    juce::juce_wchar previous = 0;

    while (! text.isEmpty())
    {
        const auto c = text.getAndAdvance();

        if (c == '>')
            return previous == '/';

        if (c == '"' || c == '\'')
            while (! text.isEmpty() && text.getAndAdvance() != c)
            {
            }

        previous = c;
    }

    return false;
}

/** Whether the markup stays within the bounds; what isn't well formed is left to the parser. */
bool isWithinBounds (const juce::String& text)
{
    if (text.getNumBytesAsUTF8() > static_cast<size_t> (maximumXmlBytes))
        return false;

    int depth = 0;

    for (auto c = text.toUTF8(); ! c.isEmpty();)
    {
        if (startsWith (c, "<!--"))
            skipPast (c, "-->");
        else if (startsWith (c, "<![CDATA["))
            skipPast (c, "]]>");
        else if (startsWith (c, "<?"))
            skipPast (c, "?>");
        else if (startsWith (c, "<!"))
            return false;
        else if (startsWith (c, "</"))
        {
            --depth;
            skipTag (c);
        }
        else if (c.getAndAdvance() == '<')
        {
            if (++depth > maximumXmlDepth)
                return false;

            if (skipTag (c))
                --depth;
        }
    }

    return true;
}

} // namespace

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::String& text)
{
    return isWithinBounds (text) ? juce::parseXML (text) : nullptr;
}

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::File& file)
{
    if (! file.existsAsFile() || file.getSize() > maximumXmlBytes)
        return nullptr;

    return parseBoundedXml (file.loadFileAsString());
}

} // namespace quilvane
