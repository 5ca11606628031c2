// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <juce_events/juce_events.h>

namespace K7R
{

/** The clock of a control that can blink. Whoever wants a control to blink starts it; while it runs, each tick
    turns the phase over. For the message thread. */
class BlinkingComponent
{
public:
    BlinkingComponent() : timer (*this) {}
    virtual ~BlinkingComponent() = default;

    BlinkingComponent (const BlinkingComponent&) = delete;
    BlinkingComponent& operator= (const BlinkingComponent&) = delete;

    void startBlinking (int intervalMs) { timer.startTimer (intervalMs); }

    /** Leaves the phase as it is; the control shows its value from now on. */
    void stopBlinking()
    {
        timer.stopTimer();
        blinkChanged();
    }

    bool isBlinking() const noexcept { return timer.isTimerRunning(); }

    /** Whether the blink runs and is in its dark phase. */
    bool isBlinkedOff() const noexcept { return isBlinking() && ! blinkOn; }

protected:
    /** The phase has turned over. */
    virtual void blinkChanged() {}

private:
    struct InternalTimer final : juce::Timer
    {
        explicit InternalTimer (BlinkingComponent& component) : owner (component) {}

        void timerCallback() override
        {
            owner.blinkOn = ! owner.blinkOn;
            owner.blinkChanged();
        }

        BlinkingComponent& owner;
    };

    InternalTimer timer;
    bool blinkOn = false;
};

} // namespace K7R
