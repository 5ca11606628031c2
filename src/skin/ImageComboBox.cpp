// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/ImageComboBox.h"

#include "core/BasePlugin.h"
#include "skin/SkinElement.h"
#include "skin/SkinFile.h"

namespace quilvane
{

void ImageComboBox::readFromXml (const juce::XmlElement& element, SkinFile& skin)
{
    if (const auto* pos = element.getChildByName ("pos"))
        setTopLeftPosition (readPosition (*pos));

    if (const auto* size = element.getChildByName ("size"))
        setSize (readSize (*size).x, readSize (*size).y);

    if (const auto* gfx = element.getChildByName ("gfx"))
        strip = FilmStrip (skin.getImage (gfx->getStringAttribute ("resource")), gfx->getIntAttribute ("framesNum", 1));

    if (strip.isValid())
        setSize (strip.getFrameWidth(), strip.getFrameHeight());

    if (const auto* param = element.getChildByName ("param"))
        addParameter (skin.getPlugin().getParameters().getParameterByName (param->getStringAttribute ("name")));
}

void ImageComboBox::updateFromParameter (Parameter& parameter)
{
    currentIndex = parameter.getInt();
    repaint();
}

void ImageComboBox::paint (juce::Graphics& g)
{
    strip.draw (g, strip.isValid() ? currentIndex : -1);
}

} // namespace quilvane
