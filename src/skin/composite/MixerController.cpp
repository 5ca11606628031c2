// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/composite/MixerController.h"

#include <cmath>

#include "skin/Fallbacks.h"
#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr float wheelStep = 0.15f; // of the range, as sliders take it

/** One of two numbers that a comma separates; 0 if it's missing. */
int readGap (const juce::StringArray& numbers, int index)
{
    return juce::jlimit (-maximumControlSize, maximumControlSize, numbers[index].getIntValue());
}

} // namespace

//==============================================================================
MixerController::Animation::Animation()
{
    setInterceptsMouseClicks (false, false);
}

void MixerController::Animation::setStrip (const FilmStrip& newStrip)
{
    strip = newStrip;

    if (strip.isValid())
        setSize (strip.getFrameWidth(), strip.getFrameHeight());

    setValue (value);
    repaint();
}

void MixerController::Animation::setValue (float newValue)
{
    if (! (newValue >= 0.0f && newValue <= 1.0f))
        return;

    const auto frame = FilmStrip::frameFor (newValue, strip.getNumFrames());

    if (std::exchange (currentFrame, frame) != frame || ! strip.isValid())
        repaint();

    value = newValue;
}

void MixerController::Animation::paint (juce::Graphics& g)
{
    if (strip.isValid())
        return strip.draw (g, currentFrame);

    // A frame, filled up to the value.
    auto inside = getLocalBounds().reduced (1);
    g.setColour (juce::Colours::white);
    g.fillRect (getLocalBounds());
    g.setColour (findColour (DefaultLookAndFeel::accentId));
    g.fillRect (inside.removeFromBottom (juce::roundToInt (value * static_cast<float> (inside.getHeight()))));
    Fallbacks::drawFrame (g, getLocalBounds());
}

//==============================================================================
MixerController::MasterSlider::MasterSlider (MixerController& owner) : GFXSwitch ({}), mixer (owner)
{
    setSliderStyle (juce::Slider::LinearVertical);
    setScrollWheelEnabled (false); // the wheel is for the channel under it
    setAccessible (false);
}

Parameter* MixerController::MasterSlider::getParameterAt (const juce::MouseEvent& e, juce::Component** component)
{
    return mixer.getParameterAt (e, component);
}

bool MixerController::MasterSlider::canResetParameterAt (const juce::MouseEvent& e)
{
    return mixer.canResetParameterAt (e);
}

//==============================================================================
MixerController::MixerController (const juce::String& controlName) : SkinParameterController (controlName)
{
    addAndMakeVisible (masterSlider);
    masterSlider.addMouseListener (this, false);
}

void MixerController::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    backgroundImage = readStrip (element, "background", 1, skin).getImage();

    if (backgroundImage.isValid())
        setSize (backgroundImage.getWidth(), backgroundImage.getHeight());

    setReadOnly (readBool (element, "readOnly", false));

    applyPosition (*this, findExactChild (element, "pos"));
    applySize (*this, findExactChild (element, "size"));

    if (const auto* gfx = findExactChild (element, "gfx"))
    {
        for (const auto* child : gfx->getChildIterator())
        {
            const auto& kind = child->getStringAttribute ("strip");

            if (child->getTagName() == "image" && (kind == "slider" || kind == "display"))
                setStrip (kind == "slider" ? StripKind::slider : StripKind::display,
                          readStrip (*child, "name", "frames", skin));
        }

        const auto gaps = juce::StringArray::fromTokens (gfx->getStringAttribute ("gaps"), ",", {});
        gapX = readGap (gaps, 0);
        gapY = readGap (gaps, 1);
    }

    if (const auto* list = findExactChild (element, "parameters"))
        for (const auto* child : list->getChildIterator())
            if (child->getTagName() == "param" && skin.takeControl (*child))
                readParameter (*child, skin);

    layOut();
}

void MixerController::setReadOnly (bool shouldBe)
{
    readOnly = shouldBe;
    setInterceptsMouseClicks (! readOnly, ! readOnly);
    masterSlider.setVisible (! readOnly);
}

//==============================================================================
void MixerController::setStrip (StripKind kind, const FilmStrip& strip)
{
    (kind == StripKind::slider ? sliderStrip : displayStrip) = strip;

    for (auto* animation : kind == StripKind::slider ? sliderFrames : displayFrames)
        animation->setStrip (strip);

    layOut();
}

void MixerController::parameterAdded (Parameter& parameter, size_t)
{
    for (auto* frames : { &sliderFrames, &displayFrames })
    {
        auto* animation = frames->add (std::make_unique<Animation>());
        animation->setStrip (frames == &sliderFrames ? sliderStrip : displayStrip);
        animation->setTitle (parameter.getName());
        addAndMakeVisible (animation);
    }

    masterSlider.toFront (false);
    layOut();
}

juce::Point<int> MixerController::getSliderSize() const
{
    if (sliderStrip.isValid())
        return { sliderStrip.getFrameWidth(), sliderStrip.getFrameHeight() };

    // The room there is.
    const auto numChannels = juce::jmax (1, sliderFrames.size());
    const auto displayRoom = displayStrip.isValid() ? gapY + displayStrip.getFrameHeight() : 0;
    return { juce::jmax (1, (getWidth() - (numChannels + 1) * gapX) / numChannels),
             juce::jmax (1, getHeight() - gapY - displayRoom) };
}

void MixerController::layOut()
{
    const auto size = getSliderSize();

    for (int i = 0; i < sliderFrames.size(); ++i)
    {
        const juce::Rectangle<int> slider (gapX + i * (size.x + gapX), gapY, size.x, size.y);
        sliderFrames[i]->setBounds (slider);

        auto* display = displayFrames[i];
        display->setVisible (displayStrip.isValid());
        display->setTopLeftPosition (slider.getCentreX() - display->getWidth() / 2, slider.getBottom() + gapY);
    }

    const auto corner = sliderFrames.isEmpty() ? juce::Point<int> (gapX, gapY) : sliderFrames[0]->getPosition();
    masterSlider.setBounds (corner.x, corner.y, getWidth(), sliderStrip.isValid() ? size.y : getHeight());
}

void MixerController::updateFromParameter (Parameter& parameter)
{
    for (int i = 0; i < sliderFrames.size(); ++i)
        if (getParameter (static_cast<size_t> (i)) == &parameter)
            for (auto* animation : { sliderFrames[i], displayFrames[i] })
                animation->setValue (parameter.getNormalised());
}

//==============================================================================
int MixerController::findChannel (juce::Point<int> place) const
{
    // With gaps below 0, the last one lies on top.
    for (int i = sliderFrames.size(); --i >= 0;)
        if (sliderFrames[i]->getBounds().contains (place)
            || (displayFrames[i]->isVisible() && displayFrames[i]->getBounds().contains (place)))
            return i;

    return -1;
}

Parameter* MixerController::getParameterAt (const juce::MouseEvent& e, juce::Component** component)
{
    const auto channel = findChannel (e.getEventRelativeTo (this).getPosition());

    if (channel < 0)
        return nullptr;

    if (component != nullptr)
        *component = sliderFrames[channel];

    return getParameter (static_cast<size_t> (channel));
}

std::vector<SkinControl::Part> MixerController::getParts()
{
    std::vector<Part> parts;
    parts.reserve (getNumParameters());

    for (int i = 0; i < sliderFrames.size(); ++i)
        parts.push_back ({ sliderFrames[i], getParameter (static_cast<size_t> (i)) });

    return parts;
}

void MixerController::moveChannel (int channel, float normalised)
{
    auto& parameter = *getParameter (static_cast<size_t> (channel));
    parameter.setNormalised (juce::jlimit (0.0f, 1.0f, normalised), true);
    notifyMoved (parameter);
}

//==============================================================================
void MixerController::mouseDown (const juce::MouseEvent& e)
{
    if (isDragging() || readOnly || ! isEnabled() || belongsToEditor (e.mods) || ! e.mods.isLeftButtonDown())
        return;

    const auto place = e.getEventRelativeTo (this).getPosition();
    const auto channel = findChannel (place);

    if (channel < 0 || ! sliderFrames[channel]->getBounds().contains (place))
        return;

    startOfDrag = place.y;
    pointer = e.source.getIndex();

    if (e.mods.isCtrlDown())
    {
        valuesAtStart.reserve (getNumParameters());

        for (size_t i = 0; i < getNumParameters(); ++i)
        {
            valuesAtStart.push_back (getParameter (i)->getNormalised());
            openGesture (*getParameter (i));
        }
    }
    else
    {
        draggedChannel = channel;
        openGesture (*getParameter (static_cast<size_t> (channel)));
        mouseDrag (e);
    }
}

void MixerController::mouseDrag (const juce::MouseEvent& e)
{
    if (e.source.getIndex() != pointer || belongsToEditor (e.mods))
        return;

    const auto y = e.getEventRelativeTo (this).getPosition().y;

    if (draggedChannel >= 0)
    {
        const auto slider = sliderFrames[draggedChannel]->getBounds();
        moveChannel (draggedChannel,
                     static_cast<float> (slider.getBottom() - y) / static_cast<float> (slider.getHeight()));
    }

    const auto distance = static_cast<float> (startOfDrag - y) / static_cast<float> (getSliderSize().y);

    for (size_t i = 0; i < valuesAtStart.size(); ++i)
        moveChannel (static_cast<int> (i), valuesAtStart[i] + distance);
}

void MixerController::mouseUp (const juce::MouseEvent& e)
{
    if (e.source.getIndex() == pointer)
        endPendingGesture();
}

void MixerController::endPendingGesture()
{
    closeGestures();
    draggedChannel = -1;
    valuesAtStart.clear();
}

void MixerController::turnWheel (int channel, float distance, bool isSmooth)
{
    auto& parameter = *getParameter (static_cast<size_t> (channel));
    const auto before = parameter.getNormalised();
    wheelRest = std::exchange (wheelChannel, channel) == channel ? wheelRest + distance : distance;
    moveChannel (channel, before + wheelRest);

    // A parameter of steps moves by one with each notch, and when small turns have come to one.
    if (parameter.getNormalised() != before)
        wheelRest = 0.0f;
    else if (! isSmooth && distance != 0.0f)
        moveToNeighbour (parameter, distance > 0.0f ? 1 : -1);
}

void MixerController::moveToNeighbour (Parameter& parameter, int direction)
{
    wheelRest = 0.0f;
    parameter.setInt (parameter.getInt() + direction, true);
    notifyMoved (parameter);
}

void MixerController::mouseWheelMove (const juce::MouseEvent& e, const juce::MouseWheelDetails& wheel)
{
    // The master slider passes its own on, and tells of them as well.
    if (e.eventComponent != this || readOnly || ! isEnabled())
        return;

    const auto channel = findChannel (e.getPosition());
    const auto amount = std::abs (wheel.deltaX) > std::abs (wheel.deltaY) ? -wheel.deltaX : wheel.deltaY;

    if (channel < 0 || isDragging())
        return;

    auto& parameter = *getParameter (static_cast<size_t> (channel));
    openGesture (parameter);
    turnWheel (channel, wheelStep * (wheel.isReversed ? -amount : amount), wheel.isSmooth);
    closeGestures();
}

void MixerController::paint (juce::Graphics& g)
{
    g.drawImageAt (backgroundImage, 0, 0);
}

} // namespace K7R
