// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "content/PackageFile.h"
#include "content/PresetsContent.h"

namespace K7R
{

/** The presets of a signed package; read only. A package that doesn't verify has none. The list ends at the
    first entry that can't be opened, but passes over those that are too large. */
class PresetsPackageContent final : public PresetsContent
{
public:
    PresetsPackageContent (PresetHost&, const juce::String& sourceName, const juce::File& packageFile,
                           const juce::String& presetExtension);

    /** With the package's author, if the preset names none. */
    std::unique_ptr<Preset> readPreset (const juce::String& itemName) const override;

protected:
    std::vector<Listing> listItems() const override;

private:
    bool readEntry (Preset&, const juce::String& entryName, juce::InputStream&, Preset::Extent) const;

    const PackageFile package;
};

} // namespace K7R
