// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/ListenerArray.h"
#include "widgets/controls/FocusableCheckBox.h"

namespace K7R
{

/** A check box that says whether a resource of the user's, such as a file, is loaded by default. */
class DefaultResourceCheckBox final : public FocusableCheckBox
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has clicked it. */
        virtual void defaultResourceToggled (DefaultResourceCheckBox&) = 0;
    };

    explicit DefaultResourceCheckBox (const juce::String& text) : FocusableCheckBox (text)
    {
        onClick = [this] { listeners.call ([this] (auto& listener) { listener.defaultResourceToggled (*this); }); };
    }

    void addListener (Listener* listener) { listeners.add (listener); }
    void removeListener (Listener* listener) { listeners.remove (listener); }

private:
    ListenerArray<Listener> listeners;
};

} // namespace K7R
