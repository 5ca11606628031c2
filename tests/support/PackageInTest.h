// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>
#include <vector>

#include <juce_core/juce_core.h>

#include "PackageBuilder.h"
#include "content/PackageFile.h"

namespace K7R::test
{

// Packages in memory, made by the package tool's own code.

using package::Member;

constexpr auto packageManifest = "<Package product=\"Quilvane 2\" module=\"Presets\" type=\"Factory\" name=\"Bank\" "
                                 "revision=\"7\" author=\"Ada\" organization=\"K7R Group\"/>";

const juce::Time packageTime { 2000, 0, 1, 12, 0 };

inline juce::MemoryBlock bytes (const juce::String& text)
{
    return { text.toRawUTF8(), text.getNumBytesAsUTF8() };
}

inline std::vector<Member> makeMembers()
{
    return { { "__desc__", bytes (packageManifest) },
             { "Slow.qvprs2", bytes ("<Preset tags=\"Modulation:Slow\"/>") },
             { "Wide.qvprs2", bytes ("<Preset tags=\"Spatialize:Wide\"/>") } };
}

inline PackageFile openBytes (const juce::MemoryBlock& data)
{
    return PackageFile (std::make_unique<juce::MemoryInputStream> (data.getData(), data.getSize(), true));
}

inline PackageFile openSigned (const juce::MemoryBlock& archive)
{
    return openBytes (package::signArchive (archive));
}

/** A container around any content, signed or not, whose members are compressed as asked. */
inline juce::MemoryBlock makeCompressedContainer (const juce::MemoryBlock& content, const juce::String& hash)
{
    juce::ZipFile::Builder builder;
    builder.addEntry (new juce::MemoryInputStream (content, false), 9, "content", packageTime);
    builder.addEntry (new juce::MemoryInputStream (bytes (hash), true), 9, "hash", packageTime);

    juce::MemoryOutputStream out;
    builder.writeToStream (out, nullptr);
    return out.getMemoryBlock();
}

/** An archive whose members are deflated. */
inline juce::MemoryBlock makeDeflatedArchive (const std::vector<Member>& members)
{
    juce::ZipFile::Builder builder;

    for (const auto& member : members)
        builder.addEntry (new juce::MemoryInputStream (member.content, false), 9, member.name, packageTime);

    juce::MemoryOutputStream out;
    builder.writeToStream (out, nullptr);
    return out.getMemoryBlock();
}

} // namespace K7R::test
