// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_core/juce_core.h>

#include "Archive.h"

namespace K7R::package
{

using tools::makeArchive;
using tools::Member;

/** The archive with a number in its comment. Readers pass over it; it's there to give the content
    another digest.
    @param archive ends in an end record without a comment, as makeArchive() leaves it */
juce::MemoryBlock withNonce (const juce::MemoryBlock& archive, int nonce);

/** The container of an inner archive and its signature.
    @param signature "" leaves the signature out */
juce::MemoryBlock makeContainer (const juce::MemoryBlock& content, const juce::String& signature);

/** A whole package: the inner archive with the first nonce from 0 on that gives it a digest which can be
    signed, and the signature. Throws a Failure if there is none.
    @param archive as makeArchive() leaves it */
juce::MemoryBlock signArchive (const juce::MemoryBlock& archive);

/** The digest of an inner archive that its signature is made for, see PackageFile::computeDigest(). */
juce::String digestOf (const juce::MemoryBlock& content);

} // namespace K7R::package
