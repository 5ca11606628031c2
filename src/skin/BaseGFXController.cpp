// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/BaseGFXController.h"

#include "skin/SkinElement.h"
#include "skin/files/SkinFile.h"

namespace K7R
{

void BaseGFXController::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    GUIController::readFromXml (element, skin);
    framesNum = 1;

    if (const auto* gfx = element.getChildByName ("gfx"))
    {
        framesNum = juce::jmax (1, gfx->getIntAttribute ("framesNum", 1));

        setStrip (readStrip (*gfx, "resource", "framesNum", skin));
    }

    readGeometry (element);
}

void BaseGFXController::readGeometry (const juce::XmlElement& element)
{
    if (const auto* size = element.getChildByName ("size"); size != nullptr && ! strip.isValid())
    {
        const auto wanted = readSize (*size);

        if (wanted != juce::Point<int> (frameWidth, frameHeight))
        {
            frameWidth = wanted.x;
            frameHeight = wanted.y;
            sizeChanged();
        }
    }

    if (const auto* pos = element.getChildByName ("pos"))
    {
        const auto wanted = readPosition (*pos);

        if (wanted != juce::Point<int> (left, top))
        {
            left = wanted.x;
            top = wanted.y;
            positionChanged();
        }
    }
}

void BaseGFXController::setStrip (const FilmStrip& newStrip)
{
    strip = newStrip;

    if (! strip.isValid())
        return;

    framesNum = strip.getNumFrames();

    if (strip.getFrameWidth() != frameWidth || strip.getFrameHeight() != frameHeight)
    {
        frameWidth = strip.getFrameWidth();
        frameHeight = strip.getFrameHeight();
        sizeChanged();
    }
}

void BaseGFXController::place (juce::Component& component) const
{
    component.setBounds (getPlace());
    component.repaint();
}

} // namespace K7R
