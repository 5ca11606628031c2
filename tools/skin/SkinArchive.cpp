// SPDX-License-Identifier: GPL-3.0-or-later

#include "SkinArchive.h"

#include <algorithm>

#include <juce_cryptography/juce_cryptography.h>

#include "Archive.h"
#include "Failure.h"
#include "PrintableText.h"
#include "skin/files/SkinFile.h"

namespace K7R::skin
{

namespace
{

juce::String computeDigest (const juce::MemoryBlock& content)
{
    return juce::MD5 (content).toHexString();
}

juce::MemoryBlock readMemberCalled (BoundedZip& archive, const juce::String& name, const juce::File& file)
{
    const auto index = archive.findEntry (name);

    if (index < 0)
        throw Failure (file.getFullPathName() + " has no member \"" + name + "\"");

    return readMember (archive, index);
}

std::unique_ptr<BoundedZip> openContent (const juce::MemoryBlock& content)
{
    return BoundedZip::open (std::make_unique<juce::MemoryInputStream> (content, true), skinContentBounds);
}

} // namespace

juce::MemoryBlock packFolder (const juce::File& folder, const juce::String& name)
{
    if (! folder.isDirectory())
        throw Failure ("there is no folder " + folder.getFullPathName());

    std::vector<Member> members;

    for (const auto& file : folder.findChildFiles (juce::File::findFiles | juce::File::ignoreHiddenFiles, true, "*",
                                                   juce::File::FollowSymlinks::no))
    {
        Member member { file.getRelativePathFrom (folder).replaceCharacter ('\\', '/'), {} };

        if (! file.loadFileAsData (member.content))
            throw Failure ("cannot read " + file.getFullPathName());

        members.push_back (std::move (member));
    }

    // By code points, whatever the file system's order and the language.
    std::sort (members.begin(), members.end(),
               [] (const auto& a, const auto& b) { return a.name.compare (b.name) < 0; });

    if (std::none_of (members.begin(), members.end(),
                      [] (const auto& member) { return member.name == SkinFile::documentName; }))
        throw Failure ("there is no " + juce::String (SkinFile::documentName) + " in " + folder.getFullPathName());

    const auto content = makeArchive (members);

    if (openContent (content) == nullptr)
        throw Failure (folder.getFullPathName() + " holds more than a skin takes");

    const auto digest = computeDigest (content);

    return makeArchive (
        { { name + ".md5", { digest.toRawUTF8(), digest.getNumBytesAsUTF8() } }, { name + ".skin", content } });
}

std::unique_ptr<BoundedZip> openSkin (const juce::File& file)
{
    if (! file.existsAsFile())
        throw Failure ("there is no file " + file.getFullPathName());

    const auto container = BoundedZip::open (file.createInputStream(), skinContainerBounds);

    if (container == nullptr)
        throw Failure (file.getFullPathName() + " is damaged, too large, or not a skin");

    const auto name = file.getFileNameWithoutExtension();
    const auto expected = readMemberCalled (*container, name + ".md5", file);
    const auto content = readMemberCalled (*container, name + ".skin", file);

    if (! computeDigest (content).equalsIgnoreCase (expected.toString()))
        throw Failure ("the content of " + file.getFullPathName() + " is not what its digest was made of");

    auto archive = openContent (content);

    if (archive == nullptr)
        throw Failure ("the content of " + file.getFullPathName() + " is damaged or too large");

    return archive;
}

juce::MemoryBlock readMember (BoundedZip& archive, int index)
{
    const auto stream = archive.openEntry (index, skinContentBounds.archiveBytes);
    juce::MemoryBlock data;

    if (stream == nullptr)
        throw Failure ("the member \"" + printable (archive.getEntryName (index)) + "\" is damaged or too large");

    stream->readIntoMemoryBlock (data);
    return data;
}

} // namespace K7R::skin
