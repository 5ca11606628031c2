// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editor/DefaultSettingsComponent.h"
#include "widgets/DefaultResourceCheckBox.h"
#include "widgets/PathComponent.h"

namespace quilvane
{

class BasePlugin;

/** The map of MIDI controllers that new instances begin with. */
class MidiSettingsComponent final : public DefaultSettingsComponent,
                                    private PathComponent::Listener,
                                    private DefaultResourceCheckBox::Listener
{
public:
    explicit MidiSettingsComponent (BasePlugin&);

private:
    void pathChanged (PathComponent&) override;
    void defaultResourceToggled (DefaultResourceCheckBox&) override;
    void keep();

    BasePlugin& plugin;
    PathComponent path;
    DefaultResourceCheckBox isUsed { "Load this map in new instances" };
    juce::Component indent;
    ComponentRow useRow { ComponentRow::Direction::horizontal };
};

} // namespace quilvane
