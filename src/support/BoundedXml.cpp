// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/BoundedXml.h"

#include <atomic>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "support/SafeFile.h"

namespace K7R
{

namespace
{

using Utf8 = juce::CharPointer_UTF8;

/** Keeps JUCE's pool of names small. The pool serves the whole process and lets go of names that nobody uses every
    30 s at most, while each new name moves half of all others. */
void makeRoomForNames (int numNames)
{
    constexpr int namesBetweenCollections = 1024;
    static std::atomic<int> numPooled { 0 };

    if (numPooled.fetch_add (numNames) + numNames > namesBetweenCollections)
    {
        numPooled = 0;
        juce::StringPool::getGlobalPool().garbageCollect();
    }
}

/** Reads an XML document of the strict kind that our own writers write, in time by its length.

    JUCE's parser goes on behind what it can't make sense of, and then reads past the end, recurses without bound or
    never comes back; its time goes by the square of the length of a value and of the number of names.
*/
class StrictXml
{
public:
    enum class Extent
    {
        head, // the outermost tag
        everything,
    };

    /** @param document has to outlive this */
    StrictXml (std::string_view document, Extent toRead) : rest (document), extent (toRead) {}

    ~StrictXml() { makeRoomForNames (static_cast<int> (names.size())); }

    /** Returns the outermost element; null if anything up to its end isn't well formed, or is too much. */
    std::unique_ptr<juce::XmlElement> read()
    {
        for (;;)
        {
            skipWhitespace();

            if (! startsWith ("<!--") && ! startsWith ("<?"))
                break;

            if (! (skip ("<!--") ? skipPast ("-->") : skipPast ("?>")))
                return nullptr;
        }

        if (! skip ("<"))
            return nullptr;

        return readElement (1);
    }

private:
    using Element = std::unique_ptr<juce::XmlElement>;

    /** Reads on behind the "<". */
    Element readElement (int depth)
    {
        const auto name = readName();

        if (! mayAdd (name) || depth > maximumXmlDepth)
            return nullptr;

        auto element = std::make_unique<juce::XmlElement> (names[name]);

        for (int numAttributes = 0;; ++numAttributes)
        {
            const auto hasSpace = skipWhitespace();

            if (skip ("/>"))
                return element;

            if (skip (">"))
                break;

            if (! hasSpace || numAttributes >= maximumXmlAttributes || ! readAttribute (*element))
                return nullptr;
        }

        if (extent != Extent::head && ! readContent (*element, name, depth))
            return nullptr;

        return element;
    }

    bool readAttribute (juce::XmlElement& element)
    {
        const auto name = readName();

        if (! mayAdd (name))
            return false;

        skipWhitespace();

        if (! skip ("="))
            return false;

        skipWhitespace();

        if (! startsWith ("\"") && ! startsWith ("'"))
            return false;

        const char ends[] { rest.front(), '&', '<', 0 };
        std::string value;
        rest.remove_prefix (1);

        for (;;)
        {
            takeUpTo (ends, value);

            if (rest.empty() || rest.front() == '<')
                return false;

            if (skip ("&"))
            {
                if (! readEntity (value))
                    return false;

                continue;
            }

            rest.remove_prefix (1);

            // The first of several attributes of one name counts, as it always did.
            if (const auto& id = names[name]; ! element.hasAttribute (id))
                element.setAttribute (id, toString (value));

            return true;
        }
    }

    /** Reads what stands between an element's tags, and its closing tag. */
    bool readContent (juce::XmlElement& parent, std::string_view name, int depth)
    {
        std::vector<Element> children;
        std::string text;

        for (;;)
        {
            takeUpTo ("&<", text);

            if (skip ("&"))
            {
                if (! readEntity (text))
                    return false;

                continue;
            }

            // A comment doesn't part a text.
            if (skip ("<!--"))
            {
                if (! skipPast ("-->"))
                    return false;

                continue;
            }

            if (! addText (children, text))
                return false;

            if (skip ("</"))
            {
                adopt (parent, children);
                return readName() == name && (skipWhitespace(), skip (">"));
            }

            if (skip ("<![CDATA["))
            {
                const auto data = rest.substr (0, rest.find ("]]>"));

                if (! skipPast ("]]>") || ! mayAddNode())
                    return false;

                children.emplace_back (juce::XmlElement::createTextElement (toString (data)));
            }
            else
            {
                if (! skip ("<"))
                    return false;

                children.push_back (readElement (depth + 1));

                if (children.back() == nullptr)
                    return false;
            }
        }
    }

    /** Moves a text, unless it is blank, behind the children. */
    bool addText (std::vector<Element>& children, std::string& text)
    {
        const auto isBlank = text.find_first_not_of (whitespace) == std::string::npos;

        if (! isBlank)
            children.emplace_back (juce::XmlElement::createTextElement (toString (text)));

        text.clear();
        return isBlank || mayAddNode();
    }

    /** Gives an element its children. From the last one on, because each is put in front in no time. */
    static void adopt (juce::XmlElement& parent, std::vector<Element>& children)
    {
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            parent.prependChildElement (child->release());
    }

    /** Decodes what stands behind an ampersand: one of the five names that need no declaration, or a character's
        number. */
    bool readEntity (std::string& text)
    {
        constexpr std::pair<std::string_view, char> known[] {
            { "amp;", '&' }, { "quot;", '"' }, { "apos;", '\'' }, { "lt;", '<' }, { "gt;", '>' }
        };

        for (const auto& [name, character] : known)
        {
            if (skip (name))
            {
                text += character;
                return true;
            }
        }

        if (! skip ("#"))
            return false;

        const auto base = skip ("x") ? 16 : 10;
        constexpr int lastCharacter = 0x10ffff, firstSurrogate = 0xd800, lastSurrogate = 0xdfff;
        int character = 0;

        for (; ! startsWith (";"); rest.remove_prefix (1))
        {
            const auto digit = rest.empty() ? -1 : juce::CharacterFunctions::getHexDigitValue (byteAt (0));

            if (digit < 0 || digit >= base || character > lastCharacter)
                return false;

            character = character * base + digit;
        }

        rest.remove_prefix (1);

        if (character <= 0 || character > lastCharacter || (character >= firstSurrogate && character <= lastSurrogate))
            return false;

        char bytes[8] {};
        Utf8 end (bytes);
        end.write (static_cast<juce::juce_wchar> (character));
        text.append (bytes, end.getAddress());
        return true;
    }

    //==============================================================================
    /** Reads letters, digits and "-._:" of ASCII; empty if there are none. */
    std::string_view readName()
    {
        size_t length = 0;

        while (length < rest.size() && isOfName (byteAt (length)))
            ++length;

        const auto name = rest.substr (0, length);
        rest.remove_prefix (length);
        return name;
    }

    static bool isOfName (juce::juce_wchar c)
    {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.'
               || c == '_' || c == ':';
    }

    /** Returns whether a name is one, and there may be another element or attribute of it. */
    bool mayAdd (std::string_view name)
    {
        if (name.empty() || name.size() > maximumXmlNameBytes || ! mayAddNode())
            return false;

        if (names.count (name) == 0)
        {
            if (names.size() >= maximumXmlNames)
                return false;

            names.emplace (name, juce::Identifier (toString (name)));
        }

        return true;
    }

    bool mayAddNode() noexcept { return ++numNodes <= maximumXmlNodes; }

    //==============================================================================
    juce::juce_wchar byteAt (size_t index) const
    {
        return static_cast<juce::juce_wchar> (static_cast<unsigned char> (rest[index]));
    }

    bool startsWith (std::string_view prefix) const { return rest.substr (0, prefix.size()) == prefix; }

    bool skip (std::string_view expected)
    {
        if (! startsWith (expected))
            return false;

        rest.remove_prefix (expected.size());
        return true;
    }

    bool skipWhitespace()
    {
        const auto length = juce::jmin (rest.find_first_not_of (whitespace), rest.size());
        rest.remove_prefix (length);
        return length > 0;
    }

    /** Moves behind the next `end`; false if there is none. */
    bool skipPast (std::string_view end)
    {
        const auto position = rest.find (end);
        rest.remove_prefix (position != std::string_view::npos ? position + end.size() : 0);
        return position != std::string_view::npos;
    }

    /** Appends all up to one of these characters, or to the end. */
    void takeUpTo (const char* characters, std::string& text)
    {
        const auto length = juce::jmin (rest.find_first_of (characters), rest.size());
        text += rest.substr (0, length);
        rest.remove_prefix (length);
    }

    static juce::String toString (std::string_view text)
    {
        return juce::String::fromUTF8 (text.data(), static_cast<int> (text.size()));
    }

    static constexpr auto whitespace = " \t\n\v\f\r";

    std::string_view rest;
    const Extent extent;
    int numNodes = 0;
    std::unordered_map<std::string_view, juce::Identifier> names;
};

std::unique_ptr<juce::XmlElement> parse (const juce::String& text, StrictXml::Extent extent)
{
    const auto numBytes = text.getNumBytesAsUTF8();

    // Readers of characters trust the encoding, and would run past the end of a broken one.
    if (numBytes > static_cast<size_t> (maximumXmlBytes)
        || ! Utf8::isValidString (text.toRawUTF8(), static_cast<int> (numBytes)))
        return nullptr;

    return StrictXml ({ text.toRawUTF8(), numBytes }, extent).read();
}

} // namespace

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::String& text)
{
    return parse (text, StrictXml::Extent::everything);
}

std::unique_ptr<juce::XmlElement> parseBoundedXmlHead (const juce::String& text)
{
    return parse (text, StrictXml::Extent::head);
}

juce::String readBoundedText (const juce::File& file)
{
    juce::MemoryBlock bytes;
    return readRegularFile (file, maximumXmlBytes, bytes) ? decodeText (bytes.getData(), bytes.getSize())
                                                          : juce::String();
}

std::unique_ptr<juce::XmlElement> parseBoundedXml (const juce::File& file)
{
    return parseBoundedXml (readBoundedText (file));
}

} // namespace K7R
