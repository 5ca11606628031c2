// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/AudioProcessorEditorWrapper.h"

#include "core/PluginEditor.h"

namespace quilvane
{

namespace
{

constexpr juce::uint32 groundColour = 0xff282828;

} // namespace

AudioProcessorEditorWrapper::AudioProcessorEditorWrapper (juce::AudioProcessor& owner, PluginEditor& borrowed) :
    juce::AudioProcessorEditor (owner),
    editor (&borrowed)
{
    setOpaque (true);
    borrowed.windowOpened();
    borrowed.setTopLeftPosition (0, 0);
    addAndMakeVisible (borrowed);
    setSize (borrowed.getWidth(), borrowed.getHeight());
}

AudioProcessorEditorWrapper::~AudioProcessorEditorWrapper()
{
    if (editor == nullptr)
        return;

    editor->windowClosed();

    // A second window may have taken it.
    if (editor->getParentComponent() == this)
    {
        editor->setVisible (false);
        removeChildComponent (editor);
    }
}

void AudioProcessorEditorWrapper::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (groundColour));
}

void AudioProcessorEditorWrapper::childBoundsChanged (juce::Component* child)
{
    if (child != nullptr && child == editor)
        setSize (child->getWidth(), child->getHeight());
}

} // namespace quilvane
