// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "core/HostKeyboard.h"
#include <juce_audio_processors/juce_audio_processors.h>

namespace K7R
{

class PluginEditor;

/** What the host's window holds: a frame around the plug-in's one editor, which it borrows and doesn't own. It takes
    the editor's size, and follows it. */
class AudioProcessorEditorWrapper final : public juce::AudioProcessorEditor
{
public:
    AudioProcessorEditorWrapper (juce::AudioProcessor&, PluginEditor&);
    ~AudioProcessorEditorWrapper() override;

    void paint (juce::Graphics&) override;
    void childBoundsChanged (juce::Component*) override;
    void parentHierarchyChanged() override;
    std::unique_ptr<juce::ComponentTraverser> createKeyboardFocusTraverser() override;

private:
    void releaseMouseButtons();

    juce::Component::SafePointer<PluginEditor> editor;
    juce::ComponentPeer* window = nullptr; // the last one that this was in
    HostKeyboard keyboard { *this };
};

} // namespace K7R
