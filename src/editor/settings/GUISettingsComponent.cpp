// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/GUISettingsComponent.h"

#include "skin/files/SkinFile.h"
#include "widgets/look/DefaultLookAndFeel.h"

namespace K7R
{

namespace
{

constexpr int pictureWidth = 160, pictureHeight = 100, nameHeight = 22, frame = 3;
constexpr int buttonWidth = pictureWidth + 2 * frame, buttonHeight = pictureHeight + nameHeight + 2 * frame;

} // namespace

/** A skin's picture with its name below. */
class GUISettingsComponent::SkinButton final : public juce::Button
{
public:
    SkinButton (const juce::String& skin, const juce::Image& thumbnail, const juce::Image& background) :
        juce::Button (skin),
        picture (thumbnail.isValid() ? thumbnail : background)
    {
        setTitle (skin);
        setSize (buttonWidth, buttonHeight);
    }

    void paintButton (juce::Graphics& g, bool isOver, bool) override
    {
        const auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel());

        if (look == nullptr)
            return;

        auto area = getLocalBounds();
        g.setColour (look->findColour (getToggleState() ? DefaultLookAndFeel::accentId
                                       : isOver         ? DefaultLookAndFeel::accentBrightId
                                                        : DefaultLookAndFeel::panelLineId));
        g.fillRect (area);
        area.reduce (frame, frame);

        const auto name = area.removeFromBottom (nameHeight);
        g.setColour (juce::Colour (0xff282828));
        g.fillRect (area);

        if (picture.isValid())
            g.drawImage (picture, area.toFloat(), juce::RectanglePlacement::centred);

        g.setColour (juce::Colours::white);
        g.setFont (look->getFont (DefaultLookAndFeel::textHeight));
        g.drawFittedText (getName(), name.reduced (frame, 0), juce::Justification::centred, 1);

        if (hasKeyboardFocus (false))
            look->drawFocusRing (g, getLocalBounds());
    }

private:
    const juce::Image picture;
};

//==============================================================================
GUISettingsComponent::GUISettingsComponent (BasePlugin& plugin, const juce::StringArray& skinNames,
                                            const juce::File& skinsFolder, int width, Listener& chosenBy) :
    listener (chosenBy)
{
    names.setItems (skinNames);
    names.setTitle ("Default skin");
    names.setSize (buttonWidth, rowHeight);
    names.addListener (this);
    list.add (names);

    const auto perLine = juce::jmax (1, (width - captionWidth + rowSpacing) / (buttonWidth + rowSpacing));

    for (const auto& name : skinNames)
    {
        SkinFile skin (plugin, SkinFile::Source::file, name, skinsFolder);
        const auto thumbnail = skin.getImage (SkinFile::thumbnailName);
        const auto background = thumbnail.isValid() ? juce::Image() : skin.getImage (SkinFile::backgroundName);

        auto* button = buttons.add (std::make_unique<SkinButton> (name, thumbnail, background));
        button->onClick = [this, name] { listener.skinChosen (name); };

        if ((buttons.size() - 1) % perLine == 0)
            list.add (*lines.add (std::make_unique<ComponentRow> (ComponentRow::Direction::horizontal,
                                                                  ComponentRow::Alignment::start, rowSpacing)));

        lines.getLast()->add (*button);
    }

    addSetting ("Skin size", list);
}

GUISettingsComponent::~GUISettingsComponent() = default;

void GUISettingsComponent::itemChosen (ComboBoxButton&)
{
    listener.skinChosen (names.getText());
}

void GUISettingsComponent::setCurrent (const juce::String& skin)
{
    names.setSelectedIndex (names.getItems().indexOf (skin, true));

    for (auto* button : buttons)
        button->setToggleState (button->getName().equalsIgnoreCase (skin), juce::dontSendNotification);
}

} // namespace K7R
