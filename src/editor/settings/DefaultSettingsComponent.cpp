// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/DefaultSettingsComponent.h"

namespace K7R
{

DefaultSettingsComponent::Row::Row (const juce::String& text) :
    caption ({}, text),
    row (ComponentRow::Direction::horizontal)
{
    caption.setBorderSize ({});
    caption.setSize (captionWidth, rowHeight);
}

DefaultSettingsComponent::DefaultSettingsComponent() :
    rows (ComponentRow::Direction::vertical, ComponentRow::Alignment::start, rowSpacing)
{
    addAndMakeVisible (rows);
    setInterceptsMouseClicks (false, true);
}

DefaultSettingsComponent::~DefaultSettingsComponent() = default;

void DefaultSettingsComponent::addSetting (const juce::String& caption, juce::Component& component)
{
    component.setTitle (caption);
    settings.push_back (std::make_unique<Row> (caption));
    settings.back()->row.add (settings.back()->caption);
    settings.back()->row.add (component);
    rows.add (settings.back()->row);
}

void DefaultSettingsComponent::addSetting (juce::Component& component)
{
    rows.add (component);
}

void DefaultSettingsComponent::childBoundsChanged (juce::Component*)
{
    setSize (rows.getWidth(), rows.getHeight());
}

} // namespace K7R
