// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include "skin/BaseGFXController.h"

namespace K7R
{

/** A part of a skin that holds controls, and panels within it. It owns them; they are its child components.

    A skin's root panel is built by SkinFile in one pass, and fixed from then on. Its background is its strip's
    first frame, or else the colour backgroundColourId, or else what lies behind it.
*/
class GFXPanel final : public BaseGFXController, public juce::Component
{
public:
    explicit GFXPanel (const juce::String& controlName) : juce::Component (controlName) {}
    ~GFXPanel() override;

    static constexpr int backgroundColourId = 0x1000f00;

    /** Reads the panel's own items, and builds a control for each element of "controls" whose tag is known, in
        the order of the document. */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    // For the panel and for every control in it at any depth.
    void addListener (GUIController::Listener*) override;
    void removeListener (GUIController::Listener*) override;
    void endPendingGesture() override;

    void paint (juce::Graphics&) override;

private:
    template <typename Callback>
    void forEachControl (Callback&&);

    void buildControl (const juce::XmlElement&, juce::Point<int> offset, SkinFile&);

    // Also those that have left the panel for a while, to be edited in a window of their own.
    juce::OwnedArray<juce::Component> controls;
};

} // namespace K7R
