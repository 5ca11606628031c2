// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/AboutWindow.h"

#include "core/SoftwareDesignation.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/look/Icons.h"

namespace K7R
{

namespace
{

constexpr int contentWidth = 420, contentHeight = 384;
constexpr int wideContentWidth = 640, columnGap = 12;
constexpr int bannerHeight = 76, logoHeight = 36, descriptionHeight = 100, spacing = 10;
constexpr int buttonWidth = 84, buttonHeight = 22, creditsMargin = 8;
constexpr juce::uint32 bannerColour = 0xff282828;
constexpr const char* typeface = "Tahoma";

} // namespace

/** Name, description, version and build. */
class AboutWindow::PluginDescComponent final : public juce::Component
{
public:
    explicit PluginDescComponent (const SoftwareDesignation& product) :
        name (product.getProductName(), juce::URL (product.getWebPage())),
        summary (product.getDescription()),
        version ("Version " + product.getVersion() + " (" + product.getArchitecture() + ")"),
        build ("Build info:  " + product.getReleaseDate() + ", revision " + product.getRevision())
    {
        name.setFont ({ typeface, nameHeight, juce::Font::bold }, false, juce::Justification::centred);
        name.setColour (juce::HyperlinkButton::textColourId, juce::Colour (0xffb84a00));
        name.setTitle (product.getProductName() + ", web page");
        addAndMakeVisible (name);
        setDescription (summary + ". " + version + ". " + build);
    }

    void resized() override
    {
        name.setBounds (getLocalBounds().removeFromTop (nameRow));
        name.changeWidthToFitText();
        name.setTopLeftPosition ((getWidth() - name.getWidth()) / 2, 0);
    }

    void paint (juce::Graphics& g) override
    {
        auto area = getLocalBounds().withTrimmedTop (nameRow);
        g.setColour (juce::Colour (0xff282828));
        g.setFont ({ typeface, summaryHeight, juce::Font::italic });
        g.drawText (summary, area.removeFromTop (summaryRow), juce::Justification::centred);

        g.setColour (juce::Colour (0xff5d5d5d));
        g.setFont ({ typeface, detailHeight, juce::Font::plain });
        g.drawText (version, area.removeFromTop (detailRow), juce::Justification::centred);
        g.drawText (build, area.removeFromTop (detailRow), juce::Justification::centred);
    }

private:
    static constexpr float nameHeight = 18.0f, summaryHeight = 14.0f, detailHeight = 12.0f;
    static constexpr int nameRow = 26, summaryRow = 24, detailRow = 18;

    juce::HyperlinkButton name;
    const juce::String summary, version, build;
};

//==============================================================================
AboutWindow::AboutWindow (const SoftwareDesignation& product, const juce::String& logoSvg, Listener& toTell) :
    WindowComponent ("About " + product.getProductName()),
    listener (toTell),
    logo (Icons::fromSvg (logoSvg)),
    description (std::make_unique<PluginDescComponent> (product)),
    credits (product.getCredits())
{
    if (logo != nullptr)
    {
        logo->setInterceptsMouseClicks (false, false);
        addAndMakeVisible (*logo);
    }

    addAndMakeVisible (*description);
    viewport.setViewedComponent (&credits, false);
    viewport.setScrollBarsShown (true, false);
    viewport.setTitle ("Credits");
    addAndMakeVisible (viewport);
    closeTextButton.addListener (this);
    addAndMakeVisible (closeTextButton);
    setContentSize (contentWidth, contentHeight);
}

AboutWindow::~AboutWindow()
{
    closeTextButton.removeListener (this);
}

void AboutWindow::resized()
{
    WindowComponent::resized();

    auto area = getContentArea();
    auto row = area.removeFromBottom (buttonHeight);
    closeTextButton.setBounds (row.removeFromRight (buttonWidth));
    area.removeFromBottom (spacing);

    // The credits beside the rest.
    auto creditsArea = juce::Rectangle<int>();

    if (area.getWidth() > contentWidth)
    {
        creditsArea = area.removeFromRight ((area.getWidth() - columnGap) / 2);
        area.removeFromRight (columnGap);
    }

    banner = area.removeFromTop (bannerHeight);

    if (logo != nullptr)
        logo->setTransformToFit (banner.withSizeKeepingCentre (banner.getWidth(), logoHeight).toFloat(),
                                 juce::RectanglePlacement::centred);

    area.removeFromTop (spacing);

    if (description != nullptr)
        description->setBounds (area.removeFromTop (descriptionHeight));

    viewport.setBounds ((creditsArea.isEmpty() ? area : creditsArea).reduced (creditsMargin));
    credits.setWidth (viewport.getWidth() - viewport.getScrollBarThickness() - creditsMargin);
}

void AboutWindow::fitInto (int maximumWidth, int maximumHeight)
{
    setContentSize (contentWidth, contentHeight);

    if (getHeight() > maximumHeight && maximumWidth >= wideContentWidth)
        setContentSize (wideContentWidth, contentHeight);

    setSize (juce::jmin (getWidth(), maximumWidth), juce::jmin (getHeight(), maximumHeight));
}

void AboutWindow::paint (juce::Graphics& g)
{
    WindowComponent::paint (g);
    g.setColour (juce::Colour (bannerColour));
    g.fillRect (banner);
    g.setColour (juce::Colour (0xfff0f0f0));
    g.fillRect (viewport.getBounds().expanded (creditsMargin));
    g.setColour (findColour (juce::TextEditor::outlineColourId));
    g.drawRect (viewport.getBounds().expanded (creditsMargin));
}

void AboutWindow::dismiss()
{
    hideModal();
    listener.aboutWindowClosed (*this);
}

void AboutWindow::buttonClicked (juce::Button*)
{
    dismiss();
}

} // namespace K7R
