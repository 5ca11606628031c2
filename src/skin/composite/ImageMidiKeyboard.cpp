// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/ImageMidiKeyboard.h"

#include <cmath>

#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

namespace
{

constexpr int anyChannel = 0xffff;
constexpr float leastKeyWidth = 8.0f, usualKeyWidth = 16.0f; // of white keys, in pixels
constexpr float smallestChange = 1.0e-3f;

// Narrow enough that the middle of every white key is free.
constexpr float blackKeyWidth = 0.6f;

// Of a key's strip; one with fewer has its last one for the rest.
constexpr int upFrame = 0, overFrame = 1, downFrame = 2;

} // namespace

ImageMidiKeyboard::ImageMidiKeyboard (const juce::String& controlName) :
    juce::MidiKeyboardComponent (noteState, juce::MidiKeyboardComponent::horizontalKeyboard)
{
    setName (controlName);
    setBlackNoteWidthProportion (blackKeyWidth);
    setOctaveForMiddleC (5); // as note displays name it
    setWantsKeyboardFocus (false);
    setMouseClickGrabsKeyboardFocus (false);
}

void ImageMidiKeyboard::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);

    const auto readNote = [&] (const char* attribute)
    { return juce::jlimit (0, numNotes - 1, element.getIntAttribute (attribute)); };

    if (element.hasAttribute ("firstKey") && element.hasAttribute ("lastKey"))
    {
        const auto first = readNote ("firstKey");
        setAvailableRange (first, juce::jmax (first, readNote ("lastKey")));
    }

    if (const auto* list = element.getChildByName ("Keys"))
        readKeys (*list, skin);

    applySize (*this, element.getChildByName ("size"));
    applyPosition (*this, element.getChildByName ("pos"));
    resized();
    colourChanged();
}

void ImageMidiKeyboard::readKeys (const juce::XmlElement& list, SkinFile& skin)
{
    const auto readOverlap = [] (const juce::XmlElement& key, const char* side)
    { return juce::jlimit (-maximumControlSize, maximumControlSize, key.getIntAttribute (side)); };

    auto note = getRangeStart();

    for (const auto* child : list.getChildWithTagNameIterator ("Key"))
    {
        if (note >= numNotes)
            return;

        auto& key = keys[static_cast<size_t> (note++)];
        key.left = readOverlap (*child, "left");
        key.right = readOverlap (*child, "right");

        if (const auto* gfx = child->getChildByName ("gfx"))
            key.strip = readStrip (*gfx, "resource", "framesNum", skin);

        // Keys may lie over each other.
        if (! skin.takeArea (*child, static_cast<juce::int64> (key.strip.getFrameWidth()) * key.strip.getFrameHeight()))
            key.strip = {};

        key.area.setSize (key.strip.getFrameWidth(), key.strip.getFrameHeight());

        if (const auto* size = child->getChildByName ("size"))
            key.area.setSize (readSize (*size).x, readSize (*size).y);

        if (const auto* pos = child->getChildByName ("pos"))
            key.area.setPosition (readPosition (*pos));

        hasImages = hasImages || key.strip.isValid();
    }
}

//==============================================================================
template <typename Callback>
void ImageMidiKeyboard::forEachKey (bool black, Callback&& callback) const
{
    for (int note = getRangeStart(); note <= getRangeEnd(); ++note)
        if (juce::MidiMessage::isMidiNoteBlack (note) == black)
            callback (note);
}

juce::Rectangle<int> ImageMidiKeyboard::getTarget (int note) const
{
    const auto& key = keys[static_cast<size_t> (note)];

    if (! key.strip.isValid())
        return getRectangleForKey (note).toNearestInt();

    auto area = key.area;
    area.setLeft (area.getX() - key.left);
    area.setRight (area.getRight() + key.right);
    return area;
}

int ImageMidiKeyboard::findKey (juce::Point<int> place) const
{
    int found = -1;

    for (const auto black : { true, false })
        forEachKey (black,
                    [&] (int note)
                    {
                        if (found < 0 && getTarget (note).contains (place))
                            found = note;
                    });

    return found;
}

juce::MouseEvent ImageMidiKeyboard::mapped (const juce::MouseEvent& e) const
{
    if (! hasImages)
        return e;

    const auto note = getLocalBounds().contains (e.getPosition()) ? findKey (e.getPosition()) : -1;

    if (note < 0)
        return e.withNewPosition (juce::Point<int> (-1, -1));

    // Only the height tells more than which key it is: how hard it's played.
    const auto target = getTarget (note).toFloat();
    const auto depth = (e.position.y - target.getY()) / target.getHeight();
    const auto place = getRectangleForKey (note);
    return e.withNewPosition (juce::Point<float> (place.getCentreX(), place.getY() + depth * place.getHeight()));
}

void ImageMidiKeyboard::showMouse (const juce::MouseEvent& e)
{
    const auto over = hasImages ? findKey (e.getPosition()) : -1;
    const auto mayHaveMoved = e.mods.isAnyMouseButtonDown() || std::exchange (shownOver, over) != over;

    if (hasImages && mayHaveMoved)
        repaint();
}

void ImageMidiKeyboard::mouseMove (const juce::MouseEvent& e)
{
    MidiKeyboardComponent::mouseMove (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::mouseDrag (const juce::MouseEvent& e)
{
    MidiKeyboardComponent::mouseDrag (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::mouseDown (const juce::MouseEvent& e)
{
    // Only a press gives it the focus: as a field that wants it, it would get it by presses on other controls.
    setWantsKeyboardFocus (true);

    if (isShowing())
        grabKeyboardFocus();

    MidiKeyboardComponent::mouseDown (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::mouseUp (const juce::MouseEvent& e)
{
    MidiKeyboardComponent::mouseUp (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::mouseEnter (const juce::MouseEvent& e)
{
    MidiKeyboardComponent::mouseEnter (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::mouseExit (const juce::MouseEvent& e)
{
    MidiKeyboardComponent::mouseExit (mapped (e));
    showMouse (e);
}

void ImageMidiKeyboard::focusLost (FocusChangeType cause)
{
    MidiKeyboardComponent::focusLost (cause);
    setWantsKeyboardFocus (false);
}

void ImageMidiKeyboard::endPendingGesture()
{
    GUIController::endPendingGesture();
    focusLost (focusChangedDirectly);
}

//==============================================================================
void ImageMidiKeyboard::timerCallback()
{
    MidiKeyboardComponent::timerCallback();

    // It repaints keys where its own layout has them.
    for (size_t i = 0; hasImages && i < keys.size(); ++i)
        if (const auto isDown = noteState.isNoteOnForChannels (anyChannel, static_cast<int> (i));
            std::exchange (shownDown[i], isDown) != isDown)
            repaint();
}

void ImageMidiKeyboard::colourChanged()
{
    MidiKeyboardComponent::colourChanged();

    // Between images the panel is seen.
    if (hasImages)
        setOpaque (false);
}

void ImageMidiKeyboard::resized()
{
    setScrollButtonsVisible (! hasImages);

    // All keys at once, if they are wide enough to be played.
    const auto numWide = (getTotalKeyboardWidth() - getKeyStartPosition (getRangeStart())) / getKeyWidth();

    if (getWidth() > 0 && numWide > 0.0f)
    {
        const auto fitting = static_cast<float> (getWidth()) / numWide;
        const auto wanted = fitting >= leastKeyWidth || hasImages ? fitting : usualKeyWidth;

        if (std::abs (wanted - getKeyWidth()) > smallestChange) // which ends up here again
            setKeyWidth (wanted);
    }

    MidiKeyboardComponent::resized();
}

bool ImageMidiKeyboard::drawImage (int note, juce::Graphics& g, bool isDown, bool isOver) const
{
    const auto& key = keys[static_cast<size_t> (note)];

    if (key.strip.isValid())
        key.strip.draw (g,
                        juce::jmin (isDown   ? downFrame
                                    : isOver ? overFrame
                                             : upFrame,
                                    key.strip.getNumFrames() - 1),
                        key.area.getPosition());

    return key.strip.isValid();
}

void ImageMidiKeyboard::drawWhiteNote (int note, juce::Graphics& g, juce::Rectangle<float> area, bool isDown,
                                       bool isOver, juce::Colour lineColour, juce::Colour textColour)
{
    if (drawImage (note, g, isDown, isOver))
        return;

    // The ground of JUCE's keys is that of the whole keyboard.
    if (hasImages)
    {
        g.setColour (findColour (whiteNoteColourId));
        g.fillRect (area);
    }

    MidiKeyboardComponent::drawWhiteNote (note, g, area, isDown, isOver, lineColour, textColour);
}

void ImageMidiKeyboard::drawBlackNote (int note, juce::Graphics& g, juce::Rectangle<float> area, bool isDown,
                                       bool isOver, juce::Colour fillColour)
{
    if (! drawImage (note, g, isDown, isOver))
        MidiKeyboardComponent::drawBlackNote (note, g, area, isDown, isOver, fillColour);
}

void ImageMidiKeyboard::paint (juce::Graphics& g)
{
    if (! hasImages)
        return MidiKeyboardComponent::paint (g);

    // All black keys lie over all white ones, wherever they are.
    juce::KeyboardComponentBase& keyboard = *this;
    forEachKey (false, [&] (int note) { keyboard.drawWhiteKey (note, g, getRectangleForKey (note)); });
    forEachKey (true, [&] (int note) { keyboard.drawBlackKey (note, g, getRectangleForKey (note)); });
}

} // namespace K7R
