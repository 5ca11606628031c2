// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <array>

#include "skin/BaseGFXController.h"

namespace K7R
{

/** A momentary switch of two sides, less and more, that only fires events. Its strip has three frames: less down,
    at rest, more down. */
class GFXRocker final : public BaseGFXController, public juce::Component
{
public:
    explicit GFXRocker (const juce::String& controlName) : juce::Component (controlName) {}

    /** Reads further "type", "vertical" or "horizontal". */
    void readFromXml (const juce::XmlElement&, SkinFile&) override;

    /** Takes "onLessClick", "onMoreClick", "onLessClickWithCtrl" and "onMoreClickWithCtrl". */
    bool setAction (const juce::String& type, int eventId, const juce::String& eventName) override;

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void paint (juce::Graphics&) override;

private:
    enum State
    {
        lessDown,
        atRest,
        moreDown,
    };

    void paintFallback (juce::Graphics&) const;

    bool isHorizontal = false;
    std::array<int, 2> lessEvents { noEvent, noEvent }; // without and with Ctrl
    std::array<int, 2> moreEvents { noEvent, noEvent };
    State state = atRest;
    bool showRest = false;
};

} // namespace K7R
