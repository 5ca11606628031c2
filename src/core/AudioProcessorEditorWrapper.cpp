// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/AudioProcessorEditorWrapper.h"

#include "core/PluginEditor.h"

namespace K7R
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

    // A second window may have taken it.
    if (editor->getParentComponent() == this)
    {
        editor->windowClosed();
        keyboard.giveBack();
        releaseMouseButtons();
        editor->setVisible (false);
        removeChildComponent (editor);
    }

    // Where a host closes the instance and not the window, the client's message thread runs again before the frame
    // of the window is gone, and would paint into it. The frame is of no use without this, so its window ends now.
    if (juce::ComponentPeer::isValidPeer (window) && window->getComponent().getNumChildComponents() == 0)
        window->getComponent().removeFromDesktop();
}

void AudioProcessorEditorWrapper::parentHierarchyChanged()
{
    auto* const present = getPeer();
    keyboard.setWindow (present);

    if (present != nullptr)
        window = present;
}

std::unique_ptr<juce::ComponentTraverser> AudioProcessorEditorWrapper::createKeyboardFocusTraverser()
{
    return keyboard.createTraverser();
}

void AudioProcessorEditorWrapper::releaseMouseButtons()
{
    // A button that is held now comes up where nobody sees it. The editor outlives the window, and would take the
    // next movement over it for a part of the drag.
    const auto mouse = juce::Desktop::getInstance().getMainMouseSource();
    auto* const held = mouse.isDragging() ? mouse.getComponentUnderMouse() : nullptr;

    if (held == nullptr || ! editor->isParentOf (held) || ! juce::ComponentPeer::isValidPeer (window))
        return;

    // This isn't a click.
    if (auto* const button = dynamic_cast<juce::Button*> (held))
        button->setState (juce::Button::buttonNormal);

    auto& modifiers = juce::ModifierKeys::currentModifiers;
    modifiers = modifiers.withoutMouseButtons();
    window->handleMouseEvent (juce::MouseInputSource::InputSourceType::mouse, juce::MouseInputSource::offscreenMousePos,
                              modifiers, juce::MouseInputSource::defaultPressure,
                              juce::MouseInputSource::defaultOrientation, juce::Time::currentTimeMillis());
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

} // namespace K7R
