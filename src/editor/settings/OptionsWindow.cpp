// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/settings/OptionsWindow.h"

#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int headingHeight = 26, contentMargin = 14, sectionSpacing = 6;

} // namespace

class OptionsWindow::LookAndFeel final : public DefaultLookAndFeel
{
public:
    void drawHeading (juce::Graphics& g, const juce::Button& heading, bool isOver) const
    {
        auto area = heading.getLocalBounds();
        g.setColour (findColour (panelLineId).brighter (isOver ? 0.1f : 0.0f));
        g.fillRect (area);

        if (heading.hasKeyboardFocus (false))
            drawFocusRing (g, area);

        const auto& arrow = heading.getToggleState() ? *unfolded : *folded;
        arrow.drawWithin (g, area.removeFromLeft (headingHeight).reduced (6).toFloat(),
                          juce::RectanglePlacement::centred, 1.0f);

        g.setColour (findColour (windowTitleTextId));
        g.setFont (getFont (textHeight - 1.0f).withExtraKerningFactor (0.06f));
        g.drawText (heading.getName(), area, juce::Justification::centredLeft);
    }

private:
    const std::unique_ptr<juce::Drawable> folded = Icons::create (Icons::Name::arrowRight);
    const std::unique_ptr<juce::Drawable> unfolded = Icons::create (Icons::Name::arrowDown);
};

/** Folds the section that it heads. */
class OptionsWindow::Heading final : public juce::Button
{
public:
    explicit Heading (const juce::String& section) : juce::Button (section)
    {
        setTitle (section);
        setClickingTogglesState (true);
        setToggleState (true, juce::dontSendNotification);
    }

    void paintButton (juce::Graphics& g, bool isOver, bool) override
    {
        if (const auto* own = dynamic_cast<LookAndFeel*> (&getLookAndFeel()))
            own->drawHeading (g, *this, isOver);
    }
};

/** A section: the heading, and while it isn't folded the content. */
class OptionsWindow::Panel final : public juce::Component
{
public:
    Panel (const juce::String& text, std::unique_ptr<juce::Component> component) :
        heading (text),
        content (std::move (component))
    {
        addAndMakeVisible (heading);
        addAndMakeVisible (*content);
        heading.onClick = [this]
        {
            content->setVisible (heading.getToggleState());
            updateHeight();
        };
        updateHeight();
    }

    void updateHeight()
    {
        const auto room = content->isVisible() ? content->getHeight() + 2 * contentMargin : 0;
        setSize (getWidth(), headingHeight + room);
    }

    void resized() override
    {
        heading.setBounds (getLocalBounds().removeFromTop (headingHeight));
        content->setTopLeftPosition (contentMargin, headingHeight + contentMargin);
    }

    void childBoundsChanged (juce::Component* child) override
    {
        if (child == content.get())
            updateHeight();
    }

private:
    Heading heading;
    const std::unique_ptr<juce::Component> content;
};

/** The sections, one below the other. */
class OptionsWindow::PanelContainer final : public juce::Component
{
public:
    void add (std::unique_ptr<Panel> panel)
    {
        addAndMakeVisible (panels.add (std::move (panel)));
        layOut();
    }

    void resized() override { layOut(); }
    void childBoundsChanged (juce::Component*) override { layOut(); }

private:
    void layOut()
    {
        int y = 0;

        for (auto* panel : panels)
        {
            panel->setBounds (0, y, getWidth(), panel->getHeight());
            y += panel->getHeight() + sectionSpacing;
        }

        setSize (getWidth(), y);
    }

    juce::OwnedArray<Panel> panels;
};

//==============================================================================
OptionsWindow::OptionsWindow() :
    WindowComponent ("Default Settings"),
    look (std::make_unique<LookAndFeel>()),
    container (std::make_unique<PanelContainer>())
{
    setLookAndFeel (look.get());
    viewport.setViewedComponent (container.get(), false);
    viewport.setScrollBarsShown (true, false);
    viewport.setWantsKeyboardFocus (false);
    addAndMakeVisible (viewport);
    setSize (width, height);
}

OptionsWindow::~OptionsWindow()
{
    setLookAndFeel (nullptr);
}

int OptionsWindow::getContentWidth() const
{
    return viewport.getWidth() - viewport.getScrollBarThickness() - 2 * contentMargin;
}

void OptionsWindow::addSection (const juce::String& heading, std::unique_ptr<juce::Component> content)
{
    container->add (std::make_unique<Panel> (heading, std::move (content)));
}

void OptionsWindow::resized()
{
    WindowComponent::resized();
    viewport.setBounds (getContentArea());
    container->setSize (viewport.getWidth() - viewport.getScrollBarThickness(), container->getHeight());
}

} // namespace K7R
