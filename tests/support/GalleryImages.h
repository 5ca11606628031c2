// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>

#include <juce_gui_basics/juce_gui_basics.h>

#include "support/SkinBytes.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R::test
{

/** Draws the images of the gallery skin: strips whose frames can be told from each other, in the font that the
    program carries. */
class GalleryImages
{
public:
    /** All images that tests/gallery/skin.xml names. */
    static SkinMembers drawAll()
    {
        SkinMembers members;
        const auto add = [&] (const char* name, const juce::Image& image)
        { members.emplace_back (juce::String (name) + ".png", pngBytes (image)); };

        add ("background", drawBackground());
        add ("knob", drawStrip (48, 48, 31, drawKnob));
        add ("rotary", drawStrip (48, 48, 4, drawKnob));
        add ("horizontal", drawStrip (96, 20, 4, drawSegments));
        add ("vertical", drawStrip (20, 96, 4, drawSegments));
        add ("fader", drawStrip (20, 96, 33, drawFader));
        add ("wheel", drawStrip (24, 96, 33, drawFader));
        add ("light", drawStrip (24, 24, 8, drawLight));
        add ("button",
             drawStrip (64, 24, 2,
                        [] (auto& g, auto area, int frame, int) { drawButton (g, area, "Push", false, frame == 1); }));
        add ("toggle2d", drawStrip (64, 24, 2,
                                    [] (auto& g, auto area, int frame, int)
                                    { drawButton (g, area, frame == 1 ? "On" : "Off", frame == 1, false); }));
        add ("toggle3d", drawStrip (64, 24, 4,
                                    [] (auto& g, auto area, int frame, int)
                                    { drawButton (g, area, frame >= 2 ? "On" : "Off", frame >= 2, frame % 2 == 1); }));
        add ("states2d", drawStrip (64, 24, 3,
                                    [] (auto& g, auto area, int frame, int)
                                    { drawButton (g, area, "State " + juce::String (frame), frame > 0, false); }));
        add ("states3d",
             drawStrip (64, 24, 8,
                        [] (auto& g, auto area, int frame, int)
                        { drawButton (g, area, "State " + juce::String (frame / 2), frame > 1, frame % 2 == 1); }));
        add ("rockerV", drawStrip (32, 56, 3,
                                   [] (auto& g, auto area, int frame, int) {
                                       drawRocker (g, area.removeFromTop (28), area, "+", "-", frame == 2, frame == 0);
                                   }));
        add ("rockerH", drawStrip (64, 28, 3,
                                   [] (auto& g, auto area, int frame, int) {
                                       drawRocker (g, area.removeFromLeft (32), area, "<", ">", frame == 0, frame == 2);
                                   }));
        add ("font", drawFont (9, 16, 13.0f, dark, accent));
        add ("caption", drawFont (7, 14, 11.0f, juce::Colours::transparentBlack, juce::Colours::white));
        add ("sign", drawCells ({ " ", "-" }));
        add ("digits", drawCells (withDigits ({})));
        add ("notes", drawCells ({ " ", "C", "D", "E", "F", "G", "A", "B", "-" }));
        add ("tones", drawCells ({ " ", " ", "#", "-" }));
        add ("octaves", drawCells ({ " ", "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "-" }));
        add ("first", drawCells ({ " ", "0", "A", "B", "C", "D", "E", "F", "G", "H", "I", "N" }));
        add ("second", drawCells (withDigits ({ "C", "D", "E", "F", "G", "A", "B", ":" })));
        add ("third", drawCells (withDigits ({ "#", "." })));
        add ("fourth", drawCells (withDigits ({})));
        add ("channels", drawStrip (40, 20, 17,
                                    [] (auto& g, auto area, int frame, int)
                                    { drawCell (g, area, frame == 0 ? juce::String ("--") : juce::String (frame)); }));
        add ("combo", drawStrip (48, 36, 4, drawStages));
        add ("mixer", drawStrip (80, 92, 1, drawMixer));
        add ("channel", drawStrip (16, 60, 49, drawFader));
        add ("level", drawStrip (16, 12, 11,
                                 [] (auto& g, auto area, int frame, int)
                                 { drawText (g, area, juce::String (frame), 11.0f, accent); }));
        add ("whiteKey",
             drawStrip (15, 60, 3, [] (auto& g, auto area, int frame, int) { drawKey (g, area, light, frame); }));
        add ("blackKey",
             drawStrip (9, 38, 3, [] (auto& g, auto area, int frame, int) { drawKey (g, area, dark, frame); }));
        return members;
    }

private:
    using Area = juce::Rectangle<int>;
    using Painter = std::function<void (juce::Graphics&, Area, int frame, int numFrames)>;

    static inline const juce::Colour dark { 0xff2a2f36 }, middle { 0xff4a5460 }, light { 0xffd8dde2 };
    static inline const juce::Colour accent { 0xffe0a030 };

    static void setFont (juce::Graphics& g, float height)
    {
        g.setFont (juce::Font (DefaultLookAndFeel::getEmbeddedTypeface()).withHeight (height));
    }

    static void drawText (juce::Graphics& g, Area area, const juce::String& text, float height, juce::Colour colour)
    {
        setFont (g, height);
        g.setColour (colour);
        g.drawText (text, area, juce::Justification::centred, false);
    }

    static juce::Image drawStrip (int width, int height, int numFrames, const Painter& painter)
    {
        juce::Image strip (juce::Image::ARGB, width, height * numFrames, true);
        juce::Graphics g (strip);

        for (int i = 0; i < numFrames; ++i)
        {
            const juce::Graphics::ScopedSaveState saved (g);
            g.reduceClipRegion (0, i * height, width, height);
            painter (g, { 0, i * height, width, height }, i, numFrames);
        }

        return strip;
    }

    static juce::Image drawBackground()
    {
        return drawStrip (96, 48, 1,
                          [] (auto& g, auto area, int, int)
                          {
                              g.setGradientFill (juce::ColourGradient::vertical (middle, 0.0f, dark, 48.0f));
                              g.fillRect (area);
                              g.setColour (accent);
                              g.drawRect (area, 2);
                          });
    }

    static void drawKnob (juce::Graphics& g, Area area, int frame, int numFrames)
    {
        const auto face = area.toFloat().reduced (4.0f);
        const auto angle =
            juce::jmap (static_cast<float> (frame), 0.0f, static_cast<float> (numFrames - 1), -2.4f, 2.4f);
        g.setColour (middle);
        g.fillEllipse (face);
        g.setColour (light);
        g.drawEllipse (face, 1.5f);
        g.setColour (accent);
        g.drawLine ({ face.getCentre(), face.getCentre().getPointOnCircumference (face.getWidth() / 2.0f, angle) },
                    3.0f);
        drawText (g, area.removeFromBottom (16), juce::String (frame), 9.0f, light);
    }

    static void drawSegments (juce::Graphics& g, Area area, int frame, int numFrames)
    {
        const auto isWide = area.getWidth() > area.getHeight();

        for (int i = 0; i < numFrames; ++i)
        {
            const auto segment = isWide ? area.removeFromLeft (24) : area.removeFromBottom (24);
            g.setColour (i == frame ? accent : dark);
            g.fillRect (segment.reduced (1));
            drawText (g, segment, juce::String (i + 1), 12.0f, i == frame ? dark : light);
        }
    }

    static void drawFader (juce::Graphics& g, Area area, int frame, int numFrames)
    {
        g.setColour (dark);
        g.fillRect (area.withSizeKeepingCentre (4, area.getHeight() - 8));

        const auto travel = area.getHeight() - 16;
        const auto y = area.getBottom() - 8 - travel * frame / (numFrames - 1);
        g.setColour (accent);
        g.fillRect (area.withTop (y - 6).withHeight (12).reduced (1, 0));
        g.setColour (dark);
        g.fillRect (area.withTop (y - 1).withHeight (2).reduced (3, 0));
    }

    static void drawLight (juce::Graphics& g, Area area, int frame, int numFrames)
    {
        const auto share = static_cast<float> (frame) / static_cast<float> (numFrames - 1);
        g.setColour (dark.interpolatedWith (accent, share));
        g.fillEllipse (area.toFloat().reduced (2.0f));
        drawText (g, area, juce::String (frame), 10.0f, light);
    }

    static void drawButton (juce::Graphics& g, Area area, const juce::String& text, bool isOn, bool isPressed)
    {
        const auto face = area.toFloat().reduced (1.0f);
        g.setColour ((isOn ? accent : middle).darker (isPressed ? 0.6f : 0.0f));
        g.fillRoundedRectangle (face, 4.0f);
        g.setColour (light);
        g.drawRoundedRectangle (face, 4.0f, 1.0f);
        drawText (g, area, text, 12.0f, isOn ? dark : light);
    }

    static void drawRocker (juce::Graphics& g, Area first, Area second, const juce::String& firstText,
                            const juce::String& secondText, bool firstDown, bool secondDown)
    {
        drawButton (g, first, firstText, false, firstDown);
        drawButton (g, second, secondText, false, secondDown);
    }

    /** As many pairs of dots as stages that work. */
    static void drawStages (juce::Graphics& g, Area area, int frame, int numFrames)
    {
        drawCell (g, area, {});
        area = area.reduced (4, 3).removeFromTop (18);

        for (int i = 0; i < 2 * numFrames; ++i)
        {
            const auto column = area.withX (area.getX() + i / 2 * 10).withWidth (10);
            const auto dot = (i % 2 == 0 ? column.withHeight (9) : column.withTrimmedTop (9)).toFloat().reduced (1.0f);
            g.setColour (i / 2 <= frame ? accent : middle);
            g.fillEllipse (dot.withSizeKeepingCentre (6.0f, 6.0f));
        }
    }

    static void drawMixer (juce::Graphics& g, Area area, int, int)
    {
        g.setColour (middle);
        g.fillRect (area);
        g.setColour (dark);
        g.drawRect (area, 1);

        // Marks at both sides of each channel.
        for (const auto x : { 11, 33, 43, 65 })
            for (int mark = 0; mark <= 4; ++mark)
                g.fillRect (area.getX() + x, area.getY() + 14 + mark * 11, 4, 1);
    }

    static void drawKey (juce::Graphics& g, Area area, juce::Colour colour, int frame)
    {
        const auto face = area.withTrimmedRight (1).withTrimmedTop (-4).toFloat();
        g.setColour (frame == 2 ? accent : frame == 1 ? colour.interpolatedWith (accent, 0.4f) : colour);
        g.fillRoundedRectangle (face, 2.0f);

        // The front edge, which a key that is down shows no more.
        if (frame < 2)
        {
            g.setColour (juce::Colours::black.withAlpha (0.25f));
            g.fillRoundedRectangle (face.withTop (face.getBottom() - 4.0f), 2.0f);
        }
    }

    static void drawCell (juce::Graphics& g, Area area, const juce::String& text)
    {
        g.setColour (dark);
        g.fillRect (area);
        g.setColour (middle);
        g.drawRect (area, 1);
        drawText (g, area, text, 13.0f, accent);
    }

    static juce::Image drawCells (const juce::StringArray& texts)
    {
        return drawStrip (16, 22, texts.size(),
                          [&] (auto& g, auto area, int frame, int) { drawCell (g, area, texts[frame]); });
    }

    static juce::StringArray withDigits (const juce::StringArray& more)
    {
        juce::StringArray texts { " ", "0", "1", "2", "3", "4", "5", "6", "7", "8", "9" };
        texts.addArray (more);
        return texts;
    }

    /** The characters from the blank to "~", and again in exchanged colours for the caret. */
    static juce::Image drawFont (int width, int height, float size, juce::Colour ground, juce::Colour ink)
    {
        constexpr int numGlyphs = '~' - ' ' + 1;
        return drawStrip (width, height, 2 * numGlyphs,
                          [=] (auto& g, auto area, int frame, int)
                          {
                              const auto atCaret = frame >= numGlyphs;
                              const auto character = static_cast<juce::juce_wchar> (' ' + frame % numGlyphs);
                              g.setColour (atCaret ? ink : ground);
                              g.fillRect (area);
                              drawText (g, area.expanded (width, 0), juce::String::charToString (character), size,
                                        atCaret ? ground : ink);
                          });
    }
};

} // namespace K7R::test
