// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <gtest/gtest.h>

#include "skin/GFXPanel.h"
#include "skin/files/SkinFile.h"
#include "support/MessageLoop.h"
#include "support/Mouse.h"
#include "support/PluginInTest.h"
#include "support/SkinBytes.h"

namespace K7R::test
{

/** Short names for what is held during a click. */
namespace keys
{

inline constexpr int left = juce::ModifierKeys::leftButtonModifier;
inline constexpr int right = juce::ModifierKeys::rightButtonModifier;
inline constexpr int shift = juce::ModifierKeys::shiftModifier;
inline constexpr int ctrl = juce::ModifierKeys::ctrlModifier;

} // namespace keys

/** What a control tells: "begin", "change", "end", "moved" with a parameter's name, or an event's number. */
class ControlLog : public GUIController::Listener, public Parameter::Listener
{
public:
    void controllerGestureBegan (GUIController&) override { entries.add ("begin"); }
    void controllerGestureEnded (GUIController&) override { entries.add ("end"); }
    void controllerValueChanged (GUIController&) override { entries.add ("change"); }
    void controllerEvent (GUIController&, int eventId) override { entries.add (juce::String (eventId)); }
    void controllerParameterMoved (Parameter& moved) override { entries.add ("moved " + moved.getName()); }

    void parameterChanged (Parameter&) override { entries.add ("change"); }
    void parameterGestureBegan (Parameter&) override { entries.add ("begin"); }
    void parameterGestureEnded (Parameter&) override { entries.add ("end"); }

    /** What was told since the last call, repetitions as one: "begin change end". */
    juce::String take()
    {
        juce::StringArray told;

        for (const auto& entry : entries)
            if (told.isEmpty() || told[told.size() - 1] != entry)
                told.add (entry);

        entries.clear();
        return told.joinIntoString (" ");
    }

    juce::StringArray entries;
};

/** A plug-in, and a panel of a skin in memory with one flat-coloured strip for each size that a control asks for:
    "WIDTHxHEIGHTxFRAMES". */
class SkinTest : public testing::Test
{
protected:
    SkinTest() : instance (48000.0, 512) {}

    BasePlugin& plugin() { return instance.processor.getPlugin(); }

    Parameter& parameter (const juce::String& name)
    {
        auto* found = plugin().getParameters().getParameterByName (name);
        EXPECT_NE (found, nullptr) << name;
        return *found;
    }

    int eventId (const juce::String& name) { return plugin().getEvents().getUid (name); }

    /** The strips that a document asks for. */
    static SkinMembers stripsOf (const juce::String& document)
    {
        SkinMembers members;
        juce::StringArray names;

        for (const auto& text : juce::StringArray::fromTokens (document, "\"", {}))
            if (const auto sizes = juce::StringArray::fromTokens (text, "x", {});
                sizes.size() == 3 && text.containsOnly ("0123456789x") && names.addIfNotAlreadyThere (text))
                members.emplace_back (text, pngBytes (makeStrip (sizes[0].getIntValue(), sizes[1].getIntValue(),
                                                                 sizes[2].getIntValue())));

        return members;
    }

    /** Builds a whole document, with more members if there are any; null if it can't be used. */
    std::unique_ptr<GFXPanel> buildDocument (const juce::String& document, const SkinMembers& more = {})
    {
        auto members = stripsOf (document);
        members.insert (members.end(), more.begin(), more.end());
        members.emplace_back ("skin.xml", textBytes (document));

        const auto file = makeSkinFile ("Test", makeZip (members));
        return SkinFile (plugin(), "Test", file.getData(), file.getSize()).loadEditorPanel();
    }

    /** Builds a main panel of 200 x 100 pixels with these controls, and listens to it. */
    void build (const juce::String& controls)
    {
        panel = buildDocument (
            makeDocument ({}, "<size width=\"200\" height=\"100\"/><controls>" + controls + "</controls>"));
        ASSERT_NE (panel, nullptr);
        panel->addListener (&log);
    }

    /** Builds one control, named "it", from its tag, attributes and children. */
    void buildOne (const juce::String& tag, const juce::String& attributes = {}, const juce::String& children = {})
    {
        build ("<" + tag + " name=\"it\" " + attributes + ">" + children + "</" + tag + ">");
    }

    static juce::String link (const juce::String& parameterName)
    {
        return "<links><link param=\"" + parameterName + "\" as=\"connectedTo\"/></links>";
    }

    static juce::String strip (const juce::String& sizes, int framesNum)
    {
        return "<gfx resource=\"" + sizes + "\" framesNum=\"" + juce::String (framesNum) + "\"/>";
    }

    static juce::String action (const juce::String& type, const juce::String& event)
    {
        return "<action type=\"" + type + "\" event=\"" + event + "\"/>";
    }

    static juce::String size (int width, int height)
    {
        return "<size width=\"" + juce::String (width) + "\" height=\"" + juce::String (height) + "\"/>";
    }

    juce::Component& component (const juce::String& name = "it")
    {
        auto* found = find (*panel, name);
        EXPECT_NE (found, nullptr) << name;
        return *found;
    }

    /** The control of a name as its class. */
    template <typename Control>
    Control& control (const juce::String& name = "it")
    {
        return dynamic_cast<Control&> (component (name));
    }

    /** What a component paints, on black. */
    static juce::Image paint (juce::Component& component)
    {
        juce::Image image (juce::Image::ARGB, juce::jmax (1, component.getWidth()),
                           juce::jmax (1, component.getHeight()), true);
        image.clear (image.getBounds(), juce::Colours::black);
        juce::Graphics g (image);
        component.paintEntireComponent (g, true);
        return image;
    }

    /** The frame of a makeStrip() that lies at a pixel; -1 for none. */
    static int frameAt (const juce::Image& image, int x, int y)
    {
        const auto colour = image.getPixelAt (x, y);

        for (int i = 0; i < 250; ++i)
            if (frameColour (i) == colour)
                return i;

        return -1;
    }

    int shownFrame (const juce::String& name = "it") { return frameAt (paint (component (name)), 1, 1); }

    static juce::Component* find (juce::Component& parent, const juce::String& name)
    {
        for (auto* child : parent.getChildren())
            if (child->getName() == name)
                return child;

        for (auto* child : parent.getChildren())
            if (auto* found = find (*child, name))
                return found;

        return nullptr;
    }

    PluginInTest instance;
    ControlLog log;
    std::unique_ptr<GFXPanel> panel;
};

} // namespace K7R::test
