// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

/** The skin of these tests, for the program that makes it and for the tests that look at it: what lies where, and
    which flat colour each frame has, so that one pixel tells what a control shows. Nothing but the language. */
namespace testskin
{

struct Place
{
    int x, y, width, height;

    constexpr int centreX() const { return x + width / 2; }
    constexpr int centreY() const { return y + height / 2; }
};

/** A skin of controls with parts. */
inline constexpr const char* partsSkin = "Parts";

/** A skin that takes too long to read, and comes before the others. */
inline constexpr const char* manyTagsSkin = "Many tags";

/** A control made of a strip: the colour of a frame is the first one's, with the frame's number in the red. */
struct Strip
{
    const char* image;
    Place place;
    int numFrames;
    uint32_t firstColour;

    constexpr uint32_t colourOf (int frame) const { return firstColour + (static_cast<uint32_t> (frame) << 16); }
};

inline constexpr int width = 640, height = 480; // with room for the editor's own windows
inline constexpr uint32_t background = 0x102030;

/** The same controls on a panel with room for the browser. */
inline constexpr int wideWidth = 800, wideHeight = 530;

/** Another skin is a plain panel. */
inline constexpr int otherWidth = 320, otherHeight = 120;
inline constexpr uint32_t otherBackground = 0x306010;

inline constexpr Strip feedbackKnob { "feedback.png", { 20, 20, 40, 40 }, 11, 0x1000f0 };
inline constexpr Strip fxKnob { "fx.png", { 80, 20, 40, 40 }, 11, 0x1010e0 };

// The two rates share their place.
inline constexpr Strip rateKnob { "rate.png", { 140, 20, 40, 40 }, 11, 0x1020d0 };
inline constexpr Strip noteRateKnob { "noteRate.png", { 140, 20, 40, 40 }, 11, 0x1030c0 };
inline constexpr Strip noteScaleKnob { "noteScale.png", { 190, 20, 40, 40 }, 3, 0x1040b0 };

inline constexpr Strip centerKnob { "center.png", { 200, 80, 40, 40 }, 11, 0x10a0a0 };

inline constexpr Strip syncButton { "sync.png", { 250, 20, 20, 20 }, 2, 0x1050a0 };
inline constexpr Strip restoreButton { "restore.png", { 300, 20, 60, 20 }, 2, 0x106090 };
inline constexpr Strip meter { "meter.png", { 250, 80, 10, 60 }, 11, 0x107080 };
inline constexpr Strip activity { "activity.png", { 300, 80, 12, 12 }, 2, 0x108070 };

inline constexpr int numStages = 4;
inline constexpr int segmentWidth = 40;
inline constexpr Strip stagesSwitch { "stages.png", { 20, 150, numStages* segmentWidth, 20 }, numStages, 0x109060 };

// Each sends one event.
inline constexpr Strip optionsButton { "options.png", { 380, 20, 60, 20 }, 2, 0x10a040 };
inline constexpr Strip aboutButton { "about.png", { 450, 20, 60, 20 }, 2, 0x10b030 };
inline constexpr Strip nextPresetButton { "next.png", { 520, 20, 60, 20 }, 2, 0x10c020 };
inline constexpr Strip midiLearnButton { "learn.png", { 380, 50, 60, 20 }, 2, 0x10d010 };
inline constexpr Strip browseButton { "browse.png", { 450, 50, 60, 20 }, 2, 0x10e000 };
inline constexpr Strip previousPresetButton { "previous.png", { 520, 50, 60, 20 }, 2, 0x10e0f0 };
inline constexpr Strip revertButton { "revert.png", { 450, 80, 60, 20 }, 2, 0x1080a0 };
inline constexpr Strip saveButton { "save.png", { 380, 80, 60, 20 }, 2, 0x10f0f0 };

// The displays. In the font, a character's number is the red of its colour.
inline constexpr int glyphWidth = 8, glyphHeight = 16;
inline constexpr int firstCharacter = ' ', numCharacters = 95;
inline constexpr uint32_t glyphColours = 0x00a050, caretColours = 0x00b040;
inline constexpr uint32_t displayGround = 0xc03020;

inline constexpr Place editable { 20, 80, 160, glyphHeight };
inline constexpr Place readOnly { 20, 110, 160, glyphHeight };
inline constexpr const char* editableText = "Old";
inline constexpr const char* readOnlyText = "Fixed";

// The skin of controls with parts: a mixer of two channels, which are the feedback and the effect; a box with four
// tiles in a row below it; and a keyboard of one key.
inline constexpr Strip feedbackChannel { "channel.png", { 20, 20, 20, 60 }, 11, 0x1000f0 };
inline constexpr Strip fxChannel { "channel.png", { 40, 20, 20, 60 }, 11, 0x1000f0 };
inline constexpr Strip stagesBox { "box.png", { 100, 20, 40, 20 }, numStages, 0x109060 };
inline constexpr int pickerOffset = 30;
inline constexpr Strip key { "key.png", { 320, 20, 20, 40 }, 3, 0x10f0f0 };

// The skin of what is typed into, and of what moves in steps: two displays and a number tied to the feedback, the
// effect and the centre frequency; a text tied to the stages, and one without a parameter; a rocker whose upper side
// restores the default preset; and a knob of the stages with many frames.
inline constexpr const char* fieldsSkin = "Fields";
inline constexpr Place feedbackText { 20, 20, 80, glyphHeight };
inline constexpr Place fxText { 20, 50, 80, glyphHeight };
inline constexpr Place stagesText { 20, 80, 80, 20 };
inline constexpr Place freeText { 20, 110, 80, 20 };
inline constexpr uint32_t textGround = 0x306030;

inline constexpr int numDigits = 5, digitWidth = 16;
inline constexpr Strip frequencyDigits { "digits.png", { 120, 20, digitWidth, 20 }, 11, 0x1000f0 };
inline constexpr Strip rocker { "rocker.png", { 220, 20, 20, 40 }, 3, 0x1010e0 };
inline constexpr Strip stagesKnob { "steps.png", { 260, 20, 40, 40 }, 61, 0x1020d0 };

} // namespace testskin
