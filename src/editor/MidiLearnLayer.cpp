// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/MidiLearnLayer.h"

#include "parameters/MidiControlMap.h"
#include "skin/GFXPanel.h"
#include "skin/displays/GFXDisplay.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr juce::uint32 shade = 0x60000000;
constexpr float corner = 4.0f;
constexpr int tagHeight = 15, tagMargin = 4;
constexpr float tagFontHeight = 11.5f;

} // namespace

MidiLearnLayer::MidiLearnLayer (GFXPanel& panel, const MidiControlMap& controlMap,
                                std::function<void (juce::Component*, Parameter*)> toCall) :
    map (controlMap),
    onChoice (std::move (toCall))
{
    setTitle ("MIDI learn");
    setBounds (panel.getBounds());
    setWantsKeyboardFocus (true);
    collect (panel, panel);
}

void MidiLearnLayer::collect (juce::Component& parent, const juce::Component& root)
{
    for (auto* child : parent.getChildren())
    {
        if (! child->isVisible())
            continue;

        auto* target = dynamic_cast<SkinControl*> (child);
        bool accepts = false, acceptsChildren = false;
        child->getInterceptsMouseClicks (accepts, acceptsChildren);

        // What only shows a value, beside what moves it, isn't chosen.
        if (target != nullptr && accepts && dynamic_cast<GFXDisplay*> (child) == nullptr)
            for (const auto& [part, parameter] : target->getParts())
                if (parameter->isAutomatable())
                    targets.push_back ({ part, parameter, root.getLocalArea (part, part->getLocalBounds()) });

        collect (*child, root);
    }
}

int MidiLearnLayer::findTarget (juce::Point<int> place) const
{
    for (size_t i = targets.size(); i-- > 0;)
        if (targets[i].area.contains (place))
            return static_cast<int> (i);

    return -1;
}

void MidiLearnLayer::setHovered (int index)
{
    if (std::exchange (hovered, index) != index)
        repaint();
}

void MidiLearnLayer::mouseMove (const juce::MouseEvent& e)
{
    setHovered (findTarget (e.getPosition()));
}

void MidiLearnLayer::mouseDown (const juce::MouseEvent& e)
{
    pressed = findTarget (e.getPosition());
    setHovered (pressed);
}

void MidiLearnLayer::mouseUp (const juce::MouseEvent& e)
{
    // With the release, because nobody else would be told of it once this is gone.
    if (findTarget (e.getPosition()) == pressed)
        choose (pressed);
}

bool MidiLearnLayer::keyPressed (const juce::KeyPress& key)
{
    const auto last = static_cast<int> (targets.size()) - 1;

    if (key == juce::KeyPress::escapeKey)
        choose (-1);
    else if (key == juce::KeyPress::returnKey && hovered >= 0)
        choose (hovered);
    else if (key == juce::KeyPress::rightKey || key == juce::KeyPress::downKey)
        setHovered (juce::jmin (hovered + 1, last));
    else if (key == juce::KeyPress::leftKey || key == juce::KeyPress::upKey)
        setHovered (juce::jmax (hovered - 1, juce::jmin (0, last)));
    else
        return false;

    return true;
}

void MidiLearnLayer::choose (int index)
{
    const auto target = index < 0 ? Target() : targets[static_cast<size_t> (index)];
    const auto toCall = onChoice; // who is called may delete this
    toCall (target.control, target.parameter);
}

void MidiLearnLayer::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (shade));

    const auto colour = findColour (DefaultLookAndFeel::accentId);
    g.setFont (tagFontHeight);

    for (size_t i = 0; i < targets.size(); ++i)
    {
        const auto area = targets[i].area.toFloat().reduced (0.5f);
        const auto isHovered = static_cast<int> (i) == hovered;

        g.setColour (colour.withAlpha (isHovered ? 0.35f : 0.12f));
        g.fillRoundedRectangle (area, corner);
        g.setColour (colour.withAlpha (isHovered ? 1.0f : 0.7f));
        g.drawRoundedRectangle (area, corner, 1.0f);

        if (const auto controller = map.getController (*targets[i].parameter);
            controller != MidiControlMap::noController)
        {
            const auto text = "CC " + juce::String (controller);
            const auto width = g.getCurrentFont().getStringWidth (text) + 2 * tagMargin;
            const auto tag = targets[i].area.withSizeKeepingCentre (width, tagHeight);
            g.setColour (colour);
            g.fillRoundedRectangle (tag.toFloat(), corner * 0.5f);
            g.setColour (juce::Colours::white);
            g.drawText (text, tag, juce::Justification::centred);
        }
    }
}

} // namespace K7R
