// SPDX-License-Identifier: GPL-3.0-or-later

#include "PackageBuilder.h"

#include "Failure.h"
#include "Signature.h"
#include "content/PackageFile.h"

namespace K7R::package
{

namespace
{

constexpr int commentLengthBytes = 2; // the end record's last field

/** One digest in 361 has a signature: that none of so many has one will not happen. */
constexpr int maximumNonce = 100000;

} // namespace

juce::MemoryBlock withNonce (const juce::MemoryBlock& archive, int nonce)
{
    const auto comment = "nonce " + juce::String (nonce);
    juce::MemoryBlock result;

    {
        juce::MemoryOutputStream out (result, false);
        out.write (archive.getData(), archive.getSize() - commentLengthBytes);
        out.writeShort (static_cast<short> (comment.length()));
        out << comment;
    }

    return result;
}

juce::MemoryBlock makeContainer (const juce::MemoryBlock& content, const juce::String& signature)
{
    std::vector<Member> members { { PackageFile::contentEntry, content } };

    if (signature.isNotEmpty())
        members.push_back ({ PackageFile::hashEntry, { signature.toRawUTF8(), signature.getNumBytesAsUTF8() } });

    return makeArchive (members);
}

juce::String digestOf (const juce::MemoryBlock& content)
{
    juce::MemoryInputStream stream (content, false);
    return PackageFile::computeDigest (stream);
}

juce::MemoryBlock signArchive (const juce::MemoryBlock& archive)
{
    for (int nonce = 0; nonce <= maximumNonce; ++nonce)
    {
        const auto content = withNonce (archive, nonce);
        const auto digest = digestOf (content);

        if (! canSign (digest))
            continue;

        const auto signature = sign (digest);

        if (PackageFile::digestOfSignature (signature) == digest)
            return makeContainer (content, signature);
    }

    throw Failure ("no signature could be found for the package");
}

} // namespace K7R::package
