// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/ControlFactory.h"

#include <array>

#include "skin/GFXAnimation.h"
#include "skin/GFXButton.h"
#include "skin/GFXDisplay.h"
#include "skin/GFXKnob.h"
#include "skin/GFXMidiChannelDisplay.h"
#include "skin/GFXMultiStateButton.h"
#include "skin/GFXPanel.h"
#include "skin/GFXRocker.h"
#include "skin/GFXSwitch.h"
#include "skin/GFXToggleButton.h"
#include "skin/ImageComboBox.h"
#include "skin/ImageMidiKeyboard.h"
#include "skin/MixerController.h"
#include "skin/ModulationMatrixComponent.h"
#include "skin/NoteDisplay.h"
#include "skin/NumericDisplay.h"
#include "skin/PatternNumberDisplay.h"
#include "skin/PerformanceWheels.h"
#include "skin/SkinFile.h"
#include "skin/TextInput.h"

namespace quilvane
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

} // namespace quilvane
