// SPDX-License-Identifier: GPL-3.0-or-later

#include "Archive.h"

namespace K7R
{
inline namespace tools
{

namespace
{

constexpr int notCompressed = 0;

/** ZIP counts from 1980 on, in local time. It's noon, where no zone sets its clock. */
juce::Time getFixedTime()
{
    return { 1980, 0, 1, 12, 0 };
}

} // namespace

juce::MemoryBlock makeArchive (const std::vector<Member>& members)
{
    juce::ZipFile::Builder builder;

    for (const auto& member : members)
        builder.addEntry (new juce::MemoryInputStream (member.content, false), notCompressed, member.name,
                          getFixedTime());

    juce::MemoryBlock archive;

    {
        juce::MemoryOutputStream out (archive, false);
        builder.writeToStream (out, nullptr);
    }

    return archive;
}

} // namespace tools
} // namespace K7R
