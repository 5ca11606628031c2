// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "widgets/windows/FileChooserWindow.h"

namespace K7R
{

class BasePlugin;

/** How a map of the plug-in is named, and how it comes from files and goes into them. */
struct MapKind
{
    juce::String name;      // within a sentence
    juce::String extension; // with its point
    std::function<bool (const juce::File&)> load;
    std::function<std::unique_ptr<juce::XmlElement>()> createXml;

    static MapKind midiControllers (BasePlugin&);
    static MapKind hostParameters (BasePlugin&);

    /** The name, or a sentence, with a capital letter. */
    static juce::String capitalised (const juce::String&);
};

/** Asks for files of one kind of map, loads and saves them, and tells what came of it. */
class MapFileDialog
{
public:
    using ShowMessage = std::function<void (const juce::String&)>;

    /** @param proposedName of a new file, without an extension */
    MapFileDialog (MapKind, const juce::String& proposedName, ShowMessage);

    /** Asks on the parent's editor. */
    void askToLoad (juce::Component& parent) { ask (parent, FileChooserWindow::Mode::open); }
    void askToSave (juce::Component& parent) { ask (parent, FileChooserWindow::Mode::save); }

    /** @returns whether the file held such a map */
    bool load (const juce::File&);

    const MapKind& getKind() const noexcept { return kind; }

private:
    void ask (juce::Component& parent, FileChooserWindow::Mode);
    void save (const juce::File&);

    const MapKind kind;
    const juce::String proposedName;
    const ShowMessage showMessage;
    juce::File folder;
    std::unique_ptr<FileChooserWindow> chooser;
};

} // namespace K7R
