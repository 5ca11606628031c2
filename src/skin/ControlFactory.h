// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include <juce_gui_basics/juce_gui_basics.h>

namespace K7R
{

class SkinFile;

/** Builds the control that an element of a skin stands for, by its tag without regard to case, and lets it read
    itself. A new kind of control is a file of its own and one row of the table in ControlFactory.cpp: a juce::Component
    that is a SkinControl too, with a constructor from its name.
    @returns null for an unknown tag */
std::unique_ptr<juce::Component> createControl (const juce::XmlElement&, SkinFile&);

} // namespace K7R
