// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/SkinProblems.h"

#include <algorithm>
#include <cstring>

namespace K7R
{

namespace
{

/** The lines on which the elements of a well-formed document begin, in their order. */
std::vector<int> findLines (const juce::String& text)
{
    std::vector<int> lines;
    int line = 1;
    const char* skippedUpTo = nullptr; // the end of a comment, or of what may hold "<" as well

    for (const auto* c = text.toRawUTF8(); *c != 0; ++c)
    {
        if (*c == '\n')
            ++line;

        if (skippedUpTo != nullptr)
        {
            if (std::strncmp (c, skippedUpTo, std::strlen (skippedUpTo)) == 0)
                skippedUpTo = nullptr;
        }
        else if (*c == '<')
        {
            const auto skip = [&] (const char* opening, const char* end)
            {
                if (std::strncmp (c, opening, std::strlen (opening)) != 0)
                    return false;

                skippedUpTo = end;
                c += std::strlen (opening) - 1;
                return true;
            };

            if (! skip ("<!--", "-->") && ! skip ("<![CDATA[", "]]>") && ! skip ("<?", "?>") && c[1] != '/')
                lines.push_back (line);
        }
    }

    return lines;
}

juce::String describe (const juce::XmlElement& element)
{
    return element.getTagName() + " \"" + element.getStringAttribute ("name") + "\"";
}

} // namespace

void SkinProblems::setDocument (const juce::String& text, const juce::XmlElement& root)
{
    size_t index = 0;
    places.clear();
    findPlaces (root, {}, findLines (text), index);
}

void SkinProblems::findPlaces (const juce::XmlElement& element, const juce::String& owner,
                               const std::vector<int>& lines, size_t& index)
{
    places[&element] = { index < lines.size() ? lines[index] : 0, owner };
    ++index;

    const auto& ownerOfChildren = element.hasAttribute ("name") ? describe (element) : owner;

    for (const auto* child : element.getChildIterator())
        if (! child->isTextElement())
            findPlaces (*child, ownerOfChildren, lines, index);
}

void SkinProblems::add (const juce::XmlElement* element, const juce::String& text)
{
    if (element == nullptr)
    {
        problems.push_back ({ 0, {}, text });
        return;
    }

    const auto& place = places[element];
    const auto isNamed = element->hasAttribute ("name");
    const auto name = isNamed ? describe (*element) : element->getTagName();
    problems.push_back ({ place.line, isNamed || place.owner.isEmpty() ? name : place.owner + ", " + name, text });
}

std::vector<SkinProblems::Problem> SkinProblems::getProblems() const
{
    auto sorted = problems;
    std::stable_sort (sorted.begin(), sorted.end(), [] (const auto& a, const auto& b) { return a.line < b.line; });
    return sorted;
}

} // namespace K7R
