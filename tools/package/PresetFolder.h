// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

#include <juce_core/juce_core.h>

#include "PackageBuilder.h"

namespace K7R::package
{

/** The sources of a package, read from a folder: the manifest from "manifest.xml", which comes first, and
    the preset files "*.qvprs2" in the order of their names. Other files and folders are passed over.

    Throws a Failure for a folder without a manifest or without presets, for a document that can't be read
    or is larger than a package takes, and for presets whose names differ in case only: hosts of a package
    take them for one.
*/
std::vector<Member> readPresetFolder (const juce::File& folder);

constexpr const char* presetExtension = ".qvprs2";
constexpr const char* manifestFile = "manifest.xml";

} // namespace K7R::package
