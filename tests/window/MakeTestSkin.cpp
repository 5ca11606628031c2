// SPDX-License-Identifier: GPL-3.0-or-later

// Writes the skins that the tests of the window use into the folder of its first argument.

#include <functional>
#include <iostream>

#include <juce_cryptography/juce_cryptography.h>
#include <juce_graphics/juce_graphics.h>

#include "window/TestSkin.h"

namespace
{

juce::MemoryBlock makePng (int width, int height, const std::function<uint32_t (int y)>& colourOfRow)
{
    juce::Image image (juce::Image::RGB, width, height, false);

    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelAt (x, y, juce::Colour (0xff000000u | colourOfRow (y)));

    juce::MemoryOutputStream stream;
    juce::PNGImageFormat().writeImageToStream (image, stream);
    return stream.getMemoryBlock();
}

juce::MemoryBlock makeStrip (const testskin::Strip& strip)
{
    const auto& [x, y, width, height] = strip.place;
    return makePng (width, height * strip.numFrames,
                    [&strip, frameHeight = height] (int row) { return strip.colourOf (row / frameHeight); });
}

/** The characters from the top down, and once more for the caret. */
juce::MemoryBlock makeFont()
{
    using namespace testskin;

    return makePng (glyphWidth, 2 * numCharacters * glyphHeight,
                    [] (int row)
                    {
                        const auto glyph = row / glyphHeight;
                        const auto character = static_cast<uint32_t> (firstCharacter + glyph % numCharacters);
                        return (character << 16) | (glyph < numCharacters ? glyphColours : caretColours);
                    });
}

/** An archive that is filled member by member. */
class Archive
{
public:
    void add (const juce::String& name, const juce::MemoryBlock& data)
    {
        constexpr int compression = 9;
        builder.addEntry (new juce::MemoryInputStream (data, true), compression, name, juce::Time (2000, 0, 1, 12, 0));
    }

    void add (const juce::String& name, const juce::String& text)
    {
        add (name, juce::MemoryBlock (text.toRawUTF8(), text.getNumBytesAsUTF8()));
    }

    juce::MemoryBlock finish()
    {
        juce::MemoryOutputStream stream;
        builder.writeToStream (stream, nullptr);
        return stream.getMemoryBlock();
    }

private:
    juce::ZipFile::Builder builder;
};

juce::String element (const juce::String& tag, const juce::String& attributes, const juce::String& children = {})
{
    return "<" + tag + " " + attributes + ">" + children + "</" + tag + ">";
}

juce::String position (const testskin::Place& place)
{
    return "<pos left=\"" + juce::String (place.x) + "\" top=\"" + juce::String (place.y) + "\"/>";
}

juce::String control (Archive& archive, const juce::String& tag, const testskin::Strip& strip,
                      const juce::String& attributes, const juce::String& parameter = {},
                      const juce::String& children = {})
{
    archive.add (strip.image, makeStrip (strip));

    const auto gfx = element ("gfx", "resource=\"" + juce::String (strip.image) + "\" framesNum=\""
                                         + juce::String (strip.numFrames) + "\"");
    const auto links = parameter.isEmpty()
                           ? juce::String()
                           : element ("links", {}, element ("link", "as=\"connectedTo\" param=\"" + parameter + "\""));

    return element (tag, attributes, gfx + position (strip.place) + links + children);
}

juce::String button (Archive& archive, const testskin::Strip& strip, const juce::String& event)
{
    const auto action = "<action type=\"onClick\" event=\"" + event + "\"/>";
    return control (archive, "Button", strip, {}, {}, element ("actions", {}, action));
}

juce::String display (const juce::String& text, const testskin::Place& place, const juce::String& attributes)
{
    const auto size =
        "<size width=\"" + juce::String (place.width) + "\" height=\"" + juce::String (place.height) + "\"/>";
    const auto gfx = "<gfx resource=\"font.png\" fontHeight=\"" + juce::String (testskin::glyphHeight) + "\"/>";
    const auto ground =
        " backgroundColour=\"" + juce::String::toHexString (0xff000000u | testskin::displayGround) + "\" ";

    return element ("Display", "name=\"" + text + "\"" + ground + attributes, gfx + size + position (place));
}

juce::String makeControls (Archive& archive)
{
    using namespace testskin;

    archive.add ("font.png", makeFont());

    const auto segments = "style=\"Horizontal\" thumb=\"" + juce::String (segmentWidth) + "\"";

    return control (archive, "Knob", feedbackKnob, {}, "Feedback")
           + control (archive, "Knob", fxKnob, "paramReset=\"false\"", "FX")
           + control (archive, "Knob", rateKnob, "name=\"LFO1Rate\"", "LFO 1 Rate")
           + control (archive, "Knob", noteRateKnob, "name=\"LFO1NoteRate\"", "LFO 1 Note Rate")
           + control (archive, "Knob", noteScaleKnob, "name=\"LFO1NoteScale\"", "LFO 1 Note Scale")
           + control (archive, "Knob", centerKnob, {}, "Center Frequency")
           + control (archive, "ToggleButton", syncButton, "style=\"2D\"", "LFO 1 Sync")
           + button (archive, restoreButton, "Restore Default Preset") + button (archive, optionsButton, "Options")
           + button (archive, aboutButton, "About") + button (archive, nextPresetButton, "Select Next Preset")
           + button (archive, midiLearnButton, "Toggle Midi Learn") + button (archive, browseButton, "Browse Presets")
           + button (archive, previousPresetButton, "Select Previous Preset")
           + button (archive, saveButton, "Save Preset") + button (archive, revertButton, "Restore Current Preset")
           + control (archive, "Animation", meter, "name=\"LeftVUMeter\"")
           + control (archive, "Animation", activity, "name=\"MIDIActivity\"")
           + control (archive, "Switch", stagesSwitch, segments, "Stages Number") + display (editableText, editable, {})
           + display (readOnlyText, readOnly, "readonly=\"yes\"");
}

juce::String sizeOf (int width, int height)
{
    return "<size width=\"" + juce::String (width) + "\" height=\"" + juce::String (height) + "\"/>";
}

juce::String linkTo (const juce::String& parameter)
{
    return element ("links", {}, element ("link", "as=\"connectedTo\" param=\"" + parameter + "\""));
}

juce::String makePartsControls (Archive& archive)
{
    using namespace testskin;

    for (const auto& strip : { feedbackChannel, stagesBox, key })
        archive.add (strip.image, makeStrip (strip));

    return "<Mixer>" + position (feedbackChannel.place)
           + sizeOf (2 * feedbackChannel.place.width, feedbackChannel.place.height)
           + "<gfx><image strip=\"slider\" name=\"channel.png\" frames=\"11\"/></gfx><parameters>"
             "<param name=\"Feedback\"/><param name=\"FX\" reset=\"false\"/></parameters></Mixer>"
           + "<ImageComboBox>" + position (stagesBox.place)
           + "<gfx resource=\"box.png\" framesNum=\"4\"/><picker tilesInRow=\"4\" justification=\"tileAligned\" yOfs=\""
           + juce::String (pickerOffset) + "\" values=\"off\"/><param name=\"Stages Number\"/></ImageComboBox>"
           + "<MidiKeyboard firstKey=\"60\" lastKey=\"60\">" + position (key.place)
           + sizeOf (key.place.width, key.place.height)
           + "<Keys><Key><gfx resource=\"key.png\" framesNum=\"3\"/></Key></Keys></MidiKeyboard>";
}

/** More names than any document of ours has; they would take long to read. */
juce::String makeManyTags (Archive&)
{
    juce::String tags;

    for (int i = 0; i < 40000; ++i)
        tags << "<t" << i << "x/>";

    return tags;
}

juce::String makeFieldControls (Archive& archive)
{
    using namespace testskin;

    archive.add ("font.png", makeFont());
    archive.add (frequencyDigits.image, makeStrip (frequencyDigits));

    const auto field = [] (const juce::String& tag, const juce::String& parameter, const testskin::Place& place)
    {
        const auto gfx = "<gfx resource=\"font.png\" fontHeight=\"" + juce::String (glyphHeight) + "\"/>";
        const auto ground = juce::String::toHexString (0xff000000u | (tag == "TextInput" ? textGround : displayGround));
        return element (tag, "editable=\"onClick\" backgroundColour=\"" + ground + "\"",
                        gfx + position (place) + sizeOf (place.width, place.height)
                            + (parameter.isEmpty() ? juce::String() : linkTo (parameter)));
    };

    const auto actions = element ("actions", {}, "<action type=\"onMoreClick\" event=\"Restore Default Preset\"/>");

    return field ("Display", "Feedback", feedbackText) + field ("DisplayFloat", "FX", fxText)
           + field ("TextInput", "Stages Number", stagesText) + field ("TextInput", {}, freeText)
           + element ("NumericDisplay", "digitsNum=\"5\" firstDigitOrder=\"10000\" minValue=\"0\"",
                      position (frequencyDigits.place) + sizeOf (digitWidth, frequencyDigits.place.height)
                          + "<gfx><digits resource=\"digits.png\"/></gfx>" + linkTo ("Center Frequency"))
           + control (archive, "Rocker", rocker, {}, {}, actions)
           + control (archive, "Knob", stagesKnob, {}, "Stages Number");
}

juce::MemoryBlock makeSkin (int width, int height, uint32_t background,
                            const std::function<juce::String (Archive&)>& makeContent)
{
    Archive archive;
    archive.add ("background.png", makePng (width, height, [=] (int) { return background; }));

    const auto controls = element ("controls", {}, makeContent (archive));
    const auto panel = element ("Panel", "name=\"MainPanel\"", "<gfx resource=\"background.png\"/>" + controls);

    archive.add ("skin.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element ("PluginEditor", {}, panel));
    return archive.finish();
}

bool writeContainer (const juce::File& folder, const juce::String& name, const juce::MemoryBlock& skin)
{
    Archive container;
    container.add (name + ".md5", juce::MD5 (skin).toHexString());
    container.add (name + ".skin", skin);

    const auto data = container.finish();
    return folder.getChildFile (name + ".k7rskin").replaceWithData (data.getData(), data.getSize());
}

} // namespace

int main (int argc, char* argv[])
{
    if (argc != 2)
    {
        std::cerr << "Usage: " << argv[0] << " FOLDER\n";
        return 2;
    }

    using namespace testskin;

    const auto nothing = [] (Archive&) { return juce::String(); };
    const auto folder = juce::File::getCurrentWorkingDirectory().getChildFile (juce::String::fromUTF8 (argv[1]));

    if (folder.createDirectory().failed()
        || ! writeContainer (folder, "Test", makeSkin (width, height, background, makeControls))
        || ! writeContainer (folder, "Wide", makeSkin (wideWidth, wideHeight, background, makeControls))
        || ! writeContainer (folder, partsSkin, makeSkin (width, height, background, makePartsControls))
        || ! writeContainer (folder, manyTagsSkin, makeSkin (width, height, background, makeManyTags))
        || ! writeContainer (folder, fieldsSkin, makeSkin (width, height, background, makeFieldControls))
        || ! writeContainer (folder, "Other", makeSkin (otherWidth, otherHeight, otherBackground, nothing)))
    {
        std::cerr << "Can't write into " << folder.getFullPathName() << "\n";
        return 1;
    }

    return 0;
}
