// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/MixerController.h"

#include "skin/SkinElement.h"
#include "skin/SkinFile.h"

namespace quilvane
{

void MixerController::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    background = skin.getImage (element.getStringAttribute ("background"));

    if (background.getWidth() > maximumControlSize || background.getHeight() > maximumControlSize)
        background = {};

    if (background.isValid())
        setSize (background.getWidth(), background.getHeight());
    else if (const auto* size = element.getChildByName ("size"))
        setSize (readSize (*size).x, readSize (*size).y);

    if (const auto* pos = element.getChildByName ("pos"))
        setTopLeftPosition (readPosition (*pos));
}

void MixerController::paint (juce::Graphics& g)
{
    g.drawImageAt (background, 0, 0);
}

} // namespace quilvane
