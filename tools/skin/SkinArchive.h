// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_core/juce_core.h>

#include "support/BoundedZip.h"

namespace K7R::skin
{

/** A skin file of all files in a folder and the folders below it, with the same bytes for the same files.
    Throws a Failure.
    @param name the skin's name, which the members of the container bear */
juce::MemoryBlock packFolder (const juce::File& folder, const juce::String& name);

/** Opens the content of a skin file, if the container is whole and its digest right; throws a Failure. */
std::unique_ptr<BoundedZip> openSkin (const juce::File&);

/** A member's bytes; throws a Failure. */
juce::MemoryBlock readMember (BoundedZip&, int index);

} // namespace K7R::skin
