// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "support/ListenerArray.h"
#include "widgets/windows/FileChooserWindow.h"

namespace K7R
{

/** Shows a path, and a button that lets the user choose another one. */
class PathComponent final : public juce::Component
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has chosen another path. */
        virtual void pathChanged (PathComponent&) = 0;
    };

    /** @param chooserTitle of the window that the button opens
        @param extension see FileChooserWindow */
    PathComponent (const juce::String& chooserTitle, FileChooserWindow::Mode, const juce::String& extension = {});

    /** Doesn't tell the listeners. */
    void setFile (const juce::File&);
    const juce::File& getFile() const noexcept { return file; }

    /** What stands there while there is no path. */
    void setTextWhenEmpty (const juce::String&);

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

    void resized() override;
    void paint (juce::Graphics&) override;

private:
    void browse();

    const juce::String title, extension;
    const FileChooserWindow::Mode mode;
    juce::File file;
    juce::String textWhenEmpty;
    juce::TextButton button { "Browse" };
    ListenerArray<Listener> listeners;
    std::unique_ptr<FileChooserWindow> chooser;
};

} // namespace K7R
