// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editor/settings/DefaultSettingsComponent.h"
#include "widgets/controls/ComboBoxButton.h"

namespace K7R
{

class BasePlugin;

/** The skins that are installed, as a list of names and each with a small picture, and the choice of one by either,
    which new instances take too. */
class GUISettingsComponent final : public DefaultSettingsComponent, private ComboBoxButton::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The user has chosen a skin. */
        virtual void skinChosen (const juce::String& name) = 0;
    };

    /** Opens each skin for its picture; one that can't be opened is shown without.
        @param width that the list may take, in pixels */
    GUISettingsComponent (BasePlugin&, const juce::StringArray& skinNames, const juce::File& skinsFolder, int width,
                          Listener&);
    ~GUISettingsComponent() override;

    /** Marks the skin that is shown. */
    void setCurrent (const juce::String& skin);

private:
    class SkinButton;

    void itemChosen (ComboBoxButton&) override;

    Listener& listener;
    ComboBoxButton names;
    juce::OwnedArray<SkinButton> buttons;
    juce::OwnedArray<ComponentRow> lines;
    ComponentRow list { ComponentRow::Direction::vertical, ComponentRow::Alignment::start, rowSpacing };
};

} // namespace K7R
