// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/FloatingPanel.h"

#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

FloatingPanel::FloatingPanel()
{
    setColour (DefaultLookAndFeel::panelBackgroundId, juce::Colour (0xff3a3a3a));
    setColour (DefaultLookAndFeel::panelLineId, juce::Colour (0xff7c7c7c));
    setColour (DefaultLookAndFeel::hardLabelTextId, juce::Colour (0xffe0e0e0));
    setWantsKeyboardFocus (true);
    setFocusContainerType (FocusContainerType::keyboardFocusContainer);
}

juce::Component* FloatingPanel::getFirstFocus()
{
    return juce::KeyboardFocusTraverser().getDefaultComponent (this);
}

void FloatingPanel::focusGained (FocusChangeType)
{
    if (auto* first = getFirstFocus())
        first->grabKeyboardFocus();
}

bool FloatingPanel::keyPressed (const juce::KeyPress& key)
{
    return key == juce::KeyPress::escapeKey && FloatingComponentOwner::hideFloating (*this, *this, nullptr);
}

} // namespace K7R
