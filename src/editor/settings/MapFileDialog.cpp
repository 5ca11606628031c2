// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/MapFileDialog.h"

#include "core/BasePlugin.h"
#include "support/SafeFile.h"

namespace K7R
{

MapKind MapKind::midiControllers (BasePlugin& plugin)
{
    auto& map = plugin.getMidiControlMap();
    return { "MIDI CC map", plugin.getMidiMapExtension(),
             [&map] (const juce::File& file) { return map.loadFromFile (file); }, [&map] { return map.createXml(); } };
}

MapKind MapKind::hostParameters (BasePlugin& plugin)
{
    return { "host map", plugin.getHostMapExtension(),
             [&plugin] (const juce::File& file) { return plugin.loadHostMap (file); },
             [&plugin] { return plugin.createHostMapXml(); } };
}

juce::String MapKind::capitalised (const juce::String& text)
{
    return text.substring (0, 1).toUpperCase() + text.substring (1);
}

//==============================================================================
MapFileDialog::MapFileDialog (MapKind map, const juce::String& nameOfNewFile, ShowMessage show) :
    kind (std::move (map)),
    proposedName (nameOfNewFile),
    showMessage (std::move (show)),
    folder (juce::File::getSpecialLocation (juce::File::userHomeDirectory))
{
}

void MapFileDialog::ask (juce::Component& parent, FileChooserWindow::Mode mode)
{
    const auto isSave = mode == FileChooserWindow::Mode::save;
    const auto start = isSave ? folder.getChildFile (proposedName + kind.extension) : folder;

    FileChooserWindow::ask (chooser, parent, isSave ? "Save " + kind.name + " as" : "Load " + kind.name, mode,
                            kind.extension, start,
                            [this, isSave] (const juce::File& file)
                            {
                                folder = file.getParentDirectory();

                                if (isSave)
                                    save (file);
                                else
                                    load (file);
                            });
}

bool MapFileDialog::load (const juce::File& file)
{
    const auto isLoaded = kind.load (file);
    showMessage (isLoaded ? MapKind::capitalised (kind.name) + " loaded: " + file.getFileName()
                          : "'" + file.getFileName() + "' holds no " + kind.name + " of this plug-in");
    return isLoaded;
}

void MapFileDialog::save (const juce::File& file)
{
    const auto isSaved = replaceFileSafely (file, *kind.createXml());
    showMessage (isSaved ? MapKind::capitalised (kind.name) + " saved: " + file.getFileName()
                         : "The " + kind.name + " couldn't be saved as '" + file.getFullPathName() + "'");
}

} // namespace K7R
