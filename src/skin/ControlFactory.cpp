// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/ControlFactory.h"

#include <array>

#include "skin/GFXPanel.h"
#include "skin/composite/ImageComboBox.h"
#include "skin/composite/ImageMidiKeyboard.h"
#include "skin/composite/MixerController.h"
#include "skin/composite/ModulationMatrixComponent.h"
#include "skin/composite/TextInput.h"
#include "skin/controls/GFXButton.h"
#include "skin/controls/GFXKnob.h"
#include "skin/controls/GFXMultiStateButton.h"
#include "skin/controls/GFXRocker.h"
#include "skin/controls/GFXSwitch.h"
#include "skin/controls/GFXToggleButton.h"
#include "skin/controls/PerformanceWheels.h"
#include "skin/displays/GFXAnimation.h"
#include "skin/displays/GFXDisplay.h"
#include "skin/displays/GFXMidiChannelDisplay.h"
#include "skin/displays/NoteDisplay.h"
#include "skin/displays/NumericDisplay.h"
#include "skin/displays/PatternNumberDisplay.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

using Creator = std::unique_ptr<juce::Component> (*) (const juce::String& name, const juce::XmlElement&, SkinFile&);

/** Any class with a constructor from the component's name, and the operation readFromXml(). */
template <typename Control>
std::unique_ptr<juce::Component> create (const juce::String& name, const juce::XmlElement& element, SkinFile& skin)
{
    auto control = std::make_unique<Control> (name);
    control->readFromXml (element, skin);

    if constexpr (std::is_base_of_v<GUIController, Control>)
    {
        if (auto* parameter = control->GUIController::getParameter())
            control->updateFromParameter (*parameter);
    }

    for (const auto& part : control->getParts())
        part.component->setTitle (part.parameter->getName()); // for screen readers

    return control;
}

constexpr int longestName = 256;

struct Row
{
    const char* tag = nullptr;
    Creator creator = nullptr;
    int weight = 1; // what it takes to build and paint, in plain controls
};

constexpr std::array<Row, 21> table { {
    { "Knob", create<GFXKnob> },
    { "Switch", create<GFXSwitch> },
    { "Animation", create<GFXAnimation> },
    { "Button", create<GFXButton> },
    { "ToggleButton", create<GFXToggleButton> },
    { "MultiStateButton", create<GFXMultiStateButton> },
    { "Display", create<GFXDisplay> },
    { "DisplayFloat", create<GFXDisplayFloat> },
    { "Rocker", create<GFXRocker> },
    { "Panel", create<GFXPanel> },
    { "NumericDisplay", create<NumericDisplay> },
    { "NoteDisplay", create<NoteDisplay> },
    { "PatternNumberDisplay", create<PatternNumberDisplay> },
    { "MidiKeyboard", create<ImageMidiKeyboard>, 10 },
    { "PitchBender", create<PitchBender> },
    { "ModWheel", create<ModWheel> },
    { "ModulationMatrix", create<ModulationMatrixComponent>, 20 },
    { "MidiChannelDisplay", create<GFXMidiChannelDisplay> },
    { "TextInput", create<TextInput> },
    { "ImageComboBox", create<ImageComboBox> },
    { "Mixer", create<MixerController> },
} };

} // namespace

std::unique_ptr<juce::Component> createControl (const juce::XmlElement& element, SkinFile& skin)
{
    for (const auto& row : table)
        if (element.getTagName().equalsIgnoreCase (row.tag))
            return skin.takeControl (element, row.weight)
                       ? row.creator (element.getStringAttribute ("name").substring (0, longestName), element, skin)
                       : nullptr;

    skin.report (&element, "there is no such control");
    return nullptr;
}

} // namespace K7R
