// SPDX-License-Identifier: GPL-3.0-or-later

// The walk through presets, and the browser.

#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "editor/BasePluginEditor.h"

namespace K7R
{

namespace
{

constexpr float browserShare = 0.9f;
constexpr int messagePriority = 6, messageTimeoutMs = 6000;

} // namespace

bool BasePluginEditor::presetEvent (int eventId)
{
    switch (eventId)
    {
        case eventIds::selectNextPreset:
        case eventIds::selectPreviousPreset: selectAdjacentPreset (eventId); return true;
        case eventIds::browsePresets: browsePresets(); return true;
        case eventIds::savePreset: savePreset(); return true;
        case eventIds::toggleMidiLearn: windows.toggleMidiLearn(); return true;

        case eventIds::restoreDefaultPreset:
            plugin.loadPreset (plugin.getDefaultPreset());

            if (contentBrowser != nullptr)
                contentBrowser->clearSelection();

            return true;

        case eventIds::restoreCurrentPreset: plugin.loadPreset (plugin.getCurrentPreset()); return true;
        default: return false;
    }
}

void BasePluginEditor::selectAdjacentPreset (int eventId)
{
    if (! plugin.isPresetChanged() || ! windows.warnsOfPresetChange())
    {
        if (auto* browser = getBrowser())
            browser->selectAdjacent (eventId == eventIds::selectNextPreset ? 1 : -1);

        return;
    }

    windows.showPresetChangedAlert (
        [this, eventId] (int answer, bool isUnwanted)
        {
            if (answer == AlertWindow::yes)
                return savePreset();

            if (answer != AlertWindow::no)
                return;

            windows.setPresetChangeWarning (! isUnwanted);
            plugin.resetPresetBaseline();
            selectAdjacentPreset (eventId);
        });
}

//==============================================================================
ContentBrowser* BasePluginEditor::getBrowser()
{
    if (contentBrowser == nullptr && plugin.hasPresets() && plugin.getUserPresets() != nullptr)
    {
        contentBrowser = std::make_unique<ContentBrowser> (plugin, "Presets", plugin.getPackageExtension(),
                                                           static_cast<ContentBrowser::Listener&> (*this));
        contentBrowser->addSource (plugin.getFactoryPresets());
        contentBrowser->addSource (plugin.getUserPresets());
        contentBrowser->setCurrentSource (plugin.getUserPresets());
        contentBrowser->setBounds (getBrowserBounds());
    }

    return contentBrowser.get();
}

juce::Rectangle<int> BasePluginEditor::getBrowserBounds() const
{
    const auto share = [] (int length) { return static_cast<int> (browserShare * static_cast<float> (length)); };
    return juce::Rectangle<int> (getWidth(), panelHeight)
        .withSizeKeepingCentre (share (getWidth()), share (panelHeight));
}

void BasePluginEditor::browsePresets()
{
    auto* browser = getBrowser();

    if (browser == nullptr)
        return;

    if (browser->isShown() && browser->getMode() == ContentBrowser::Mode::browse)
        browser->close (true);
    else
        browser->openBrowse (*this);
}

void BasePluginEditor::savePreset()
{
    auto* browser = getBrowser();

    if (browser == nullptr || browser->getMode() == ContentBrowser::Mode::saveAs)
        return;

    browserReturnsAfterSave = browser->isShown();
    browser->openSaveAs (*this);
}

void BasePluginEditor::browserOpened (ContentBrowser&)
{
    beforeBrowsing = plugin.takePresetSnapshot();
}

void BasePluginEditor::browserClosed (ContentBrowser&, ContentBrowser::Mode previousMode, bool confirmed)
{
    if (previousMode == ContentBrowser::Mode::browse)
    {
        if (! confirmed)
            plugin.restorePresets (beforeBrowsing);
    }
    else if (std::exchange (browserReturnsAfterSave, false))
        browsePresets();
}

void BasePluginEditor::browserMessage (const juce::String& text)
{
    statusBar.showMessage (text, messagePriority, messageTimeoutMs);
}

} // namespace K7R
