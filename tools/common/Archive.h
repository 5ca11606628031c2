// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

namespace K7R
{
inline namespace tools
{

/** A member of an archive. */
struct Member
{
    juce::String name;
    juce::MemoryBlock content;
};

/** A ZIP archive of members in the given order, not compressed and all of one date, so that the same members
    give the same bytes on every machine. */
juce::MemoryBlock makeArchive (const std::vector<Member>&);

} // namespace tools
} // namespace K7R
