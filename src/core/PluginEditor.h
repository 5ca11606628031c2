// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

/** What the plug-in and the host's window know of the user interface. One object lives as long as the plug-in;
    windows borrow it. For the message thread, but for the two operations on the state. */
class PluginEditor : public juce::Component
{
public:
    /** Once, when the plug-in stands and the settings are loaded: chooses the skin and starts the timer. */
    virtual void start() = 0;

    /** The host opened a window with the editor in it. What isn't loaded yet is loaded now. */
    virtual void windowOpened() = 0;

    /** The host's window is about to go. */
    virtual void windowClosed() = 0;

    /** The user's settings of the editor, null for none; and their way back. */
    virtual std::unique_ptr<juce::XmlElement> saveSettings() const = 0;
    virtual void loadSettings (const juce::XmlElement& parent) = 0;

    /** What belongs to the state of one instance, null for none; and its way back. Any thread. */
    virtual std::unique_ptr<juce::XmlElement> saveState() const = 0;
    virtual void loadState (const juce::XmlElement& parent) = 0;
};

} // namespace K7R
