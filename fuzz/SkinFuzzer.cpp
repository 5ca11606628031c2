// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the bytes behind the first one as a skin's document ('0'), as an image of every control ('1'), as the
// content archive of a skin file ('2'), or as a skin file ('3'), which no fuzzer could sign with its digest. Then it
// builds the panel, paints it, and does to each control what a user may do.

#include "FuzzedPlugin.h"
#include "skin/GFXPanel.h"
#include "skin/SkinElement.h"
#include "skin/composite/TextInput.h"
#include "skin/displays/GFXDisplay.h"
#include "skin/displays/NumericDisplay.h"
#include "skin/files/SkinFile.h"
#include "support/Mouse.h"
#include "support/SkinBytes.h"
#include "support/TestDesktop.h"

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);

namespace
{

using namespace K7R;
using namespace quilvane;
using test::FloatingDesktop;
using test::SkinMembers;

constexpr auto skinName = "Fuzzed";
constexpr int canvasSize = 128; // what is painted; panels may be much larger

/** The images that documents can name. */
const SkinMembers& getImages()
{
    static const SkinMembers images { { "one.png", test::pngBytes (test::makeStrip (6, 6, 1)) },
                                      { "strip.png", test::pngBytes (test::makeStrip (6, 5, 24)) } };
    return images;
}

/** Every control that shows an image, with the same one. */
juce::String makeImageDocument()
{
    juce::String controls;

    for (const auto* tag :
         { "Knob", "Switch", "Animation", "Button", "ToggleButton", "MultiStateButton", "Display", "Rocker", "Panel",
           "MidiChannelDisplay", "PitchBender", "ImageComboBox", "Mixer", "MidiKeyboard" })
        controls
            << "<" << tag << " name=\"x\" background=\"i\">"
            << "<gfx resource=\"i\" framesNum=\"3\" fontHeight=\"4\"><image strip=\"slider\" name=\"i\" frames=\"3\"/>"
            << "</gfx><Keys><Key><gfx resource=\"i\" framesNum=\"3\"/></Key></Keys><param name=\"Stages Number\"/>"
            << "<parameters><param name=\"FX\"/></parameters><size width=\"9\" height=\"9\"/></" << tag << ">";

    return "<PluginEditor><Fonts><font typeface=\"Face\" file=\"i\"/></Fonts>"
           + test::makeDocument ({}, "<size width=\"64\" height=\"64\"/><controls>" + controls + "</controls>")
                 .fromFirstOccurrenceOf (">", false, false);
}

juce::MemoryBlock makeSkin (int kind, const juce::MemoryBlock& bytes)
{
    if (kind == 3)
        return bytes;

    if (kind == 2)
        return test::makeSkinFile (skinName, bytes);

    auto members = getImages();
    members.emplace_back ("skin.xml", kind == 0 ? bytes : test::textBytes (makeImageDocument()));
    members.emplace_back ("i", bytes);
    return test::makeSkinFile (skinName, test::makeZip (members));
}

void require (bool condition)
{
    if (! condition)
        std::abort();
}

void pressKeys (GFXDisplay& display)
{
    for (const auto code :
         { juce::KeyPress::leftKey, juce::KeyPress::backspaceKey, juce::KeyPress::deleteKey, juce::KeyPress::homeKey,
           juce::KeyPress::endKey, juce::KeyPress::rightKey, juce::KeyPress::escapeKey })
    {
        display.keyPressed ({ 'x', juce::ModifierKeys(), 'x' });
        display.keyPressed (juce::KeyPress (code));
    }

    require (! display.isBeingEdited());
}

/** Moves over the picker that is open, and takes one of its tiles. */
void usePicker (FloatingDesktop& desktop)
{
    auto* picker = desktop.layer.getShown();

    if (picker == nullptr)
        return;

    juce::Image canvas (juce::Image::ARGB, canvasSize, canvasSize, true);
    juce::Graphics g (canvas);
    picker->paintEntireComponent (g, true);

    Mouse mouse (*picker);
    picker->mouseMove (mouse.event ({ picker->getWidth() - 1, picker->getHeight() - 1 }, false));

    for (const auto code : { juce::KeyPress::upKey, juce::KeyPress::downKey, juce::KeyPress::leftKey })
        picker->keyPressed (juce::KeyPress (code));

    mouse.press ({ picker->getWidth() / 2, picker->getHeight() / 2 });
    juce::ModifierKeys::currentModifiers = {};
}

/** Presses, drags and releases, with and without Ctrl; then clicks, and types where a click opens an editor. */
void useControls (juce::Component& component)
{
    constexpr int mostCells = 11; // of a number: a sign and ten digits

    // The text that is edited may be as wide as its font makes it; its field isn't.
    if (component.findParentComponentOfClass<juce::TextEditor>() == nullptr)
        require (component.getWidth() <= mostCells * maximumControlSize && component.getHeight() <= maximumControlSize);

    component.mouseWheelMove (Mouse (component).event ({ 1, 1 }, false), { 0.0f, 0.5f, false, false, false });

    for (const auto modifiers : { 0, static_cast<int> (juce::ModifierKeys::ctrlModifier) })
    {
        Mouse mouse (component);
        mouse.press ({ 1, 1 }, juce::ModifierKeys::leftButtonModifier | modifiers);

        if (auto* display = dynamic_cast<GFXDisplay*> (&component))
            pressKeys (*display);

        mouse.drag ({ 3, component.getHeight() + 40 });
        mouse.drag ({ component.getWidth() - 1, -30 });
        mouse.release ({ component.getWidth() / 2, component.getHeight() / 2 });

        if (auto* desktop = component.findParentComponentOfClass<FloatingDesktop>())
            usePicker (*desktop);
    }

    Mouse (component).click();
    component.mouseDoubleClick (Mouse (component).event ({ 1, 1 }, false));

    if (auto* input = dynamic_cast<TextInput*> (&component))
        if (auto* editor = input->getOpenEditor())
            editor->setText ("1e30");

    // What was opened by that may go, and what is edited lies elsewhere for a while.
    const auto children = component.getChildren();

    for (auto* child : children)
        if (component.getChildren().contains (child))
            useControls (*child);
}

void paint (GFXPanel& panel)
{
    juce::Image canvas (juce::Image::ARGB, canvasSize, canvasSize, true);
    juce::Graphics g (canvas);
    panel.paintEntireComponent (g, true);
}

} // namespace

int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;

    auto& plugin = getFuzzedPlugin();
    const auto skinBytes = makeSkin (data[0] % 4, { data + 1, size - 1 });
    SkinFile skin (plugin.get(), skinName, skinBytes.getData(), skinBytes.getSize());

    // What the page of skins reads, and what no document of this harness asks for.
    skin.getImage (SkinFile::thumbnailName);

    if (const auto panel = skin.loadEditorPanel())
    {
        skin.getTypeface ("Face", false);
        FloatingDesktop desktop;
        desktop.addAndMakeVisible (*panel);
        paint (*panel);
        useControls (*panel);
        paint (*panel);

        for (auto* child : panel->getChildren())
            child->setEnabled (false);

        paint (*panel);
        panel->endPendingGesture();
        desktop.removeAllChildren();
    }

    plugin.check();
    return 0;
}
