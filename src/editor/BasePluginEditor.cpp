// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/BasePluginEditor.h"

#include <new>

#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "skin/GFXAnimation.h"

namespace quilvane
{

namespace
{

constexpr int tickMs = 25;
constexpr int activityMs = 175;
constexpr int tooltipDelayMs = 850;
constexpr int valuePriority = 6, valueTimeoutMs = 3000;
constexpr int stays = 0;
constexpr int initialWidth = 800, initialHeight = 600;
constexpr float modalShare = 0.8f, browserShare = 0.9f;
constexpr int messagePriority = 6, messageTimeoutMs = 6000;

constexpr const char* settingsTag = "Editor";
constexpr const char* warningAttribute = "presetChangeWarning";
constexpr const char* skinTag = "Skin";
constexpr const char* nameAttribute = "name";

juce::String skinOf (const juce::XmlElement& parent)
{
    const auto* xml = parent.getChildByName (settingsTag);
    const auto* skin = xml != nullptr ? xml->getChildByName (skinTag) : nullptr;
    return skin != nullptr ? skin->getStringAttribute (nameAttribute) : juce::String();
}

juce::Component* findByName (juce::Component& parent, const juce::String& name)
{
    for (auto* child : parent.getChildren())
        if (child->getName() == name)
            return child;

    for (auto* child : parent.getChildren())
        if (auto* found = findByName (*child, name))
            return found;

    return nullptr;
}

} // namespace

BasePluginEditor::BasePluginEditor (BasePlugin& owner, bool loadsSkinFiles) :
    plugin (owner),
    usesSkinFiles (loadsSkinFiles),
    statusBar (owner, *this),
    tooltipWindow (this, tooltipDelayMs),
    windows (*this, owner)
{
    auto& look = sharedLook->look;
    setOpaque (true);
    addAndMakeVisible (statusBar);
    setLookAndFeel (&look);

    buildLabel.setText (makeBuildText(), juce::dontSendNotification);
    buildLabel.setJustificationType (juce::Justification::centredRight);
    buildLabel.setFont (look.getStatusBarFont());
    buildLabel.setColour (juce::Label::textColourId, look.findColour (DefaultLookAndFeel::statusBarTextId));
    buildLabel.setColour (juce::Label::backgroundColourId, look.findColour (DefaultLookAndFeel::statusBarBackgroundId));
    buildLabel.addMouseListener (this, false);
    addChildComponent (buildLabel);
    buildLabel.setVisible (! plugin.getReleaseChannel().equalsIgnoreCase ("master"));

    panelHeight = initialHeight;
    setSize (initialWidth, initialHeight + statusBar.getHeight());
}

BasePluginEditor::~BasePluginEditor()
{
    stopTimer();
    cancelPendingUpdate();
    plugin.getParameters().removeFromAll (this);
    closeWindows();
    buildLabel.removeMouseListener (this);

    if (skinPanel != nullptr)
        skinPanel->endPendingGesture();

    skinPanel.reset();
    setLookAndFeel (nullptr);
}

void BasePluginEditor::start()
{
    layOutStatusBar();

    if (! usesSkinFiles)
        loadSkin ({});
    else
    {
        // A name that was kept stands if there is such a skin.
        const auto skins = findSkins();

        if (! skins.contains (getSkinName(), true))
            setWantedSkin (skins[0]);

        if (skins.isEmpty())
            statusBar.showMessage ("Plugin skins not found in directory: '" + getSkinsFolder().getFullPathName()
                                       + "'. Please reinstall to repair.",
                                   0, stays);
    }

    startTimer (tickMs);
}

juce::String BasePluginEditor::makeBuildText() const
{
    return juce::StringArray { plugin.getDisplayVersion(), plugin.getReleaseDate(), plugin.getArchitecture(),
                               plugin.getRevision() }
        .joinIntoString (" | ");
}

//==============================================================================
void BasePluginEditor::windowOpened()
{
    openedOnce = true;
    statusBar.createButtons();
    loadWantedSkin();
}

void BasePluginEditor::windowClosed()
{
    closeWindows();

    // The release of a button that is held now won't be seen.
    if (skinPanel != nullptr)
        skinPanel->endPendingGesture();
}

void BasePluginEditor::visibilityChanged()
{
    timerTick (isShowing());
}

void BasePluginEditor::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (0xff282828));
}

//==============================================================================
std::unique_ptr<juce::XmlElement> BasePluginEditor::saveSettings() const
{
    auto xml = usesSkinFiles ? saveState() : std::make_unique<juce::XmlElement> (settingsTag);
    xml->setAttribute (warningAttribute, windows.warnsOfPresetChange() ? 1 : 0);
    return xml;
}

void BasePluginEditor::loadSettings (const juce::XmlElement& parent)
{
    if (const auto* xml = parent.getChildByName (settingsTag))
        windows.setPresetChangeWarning (xml->getBoolAttribute (warningAttribute, true));

    loadState (parent);
}

std::unique_ptr<juce::XmlElement> BasePluginEditor::saveState() const
{
    if (! usesSkinFiles)
        return nullptr;

    auto xml = std::make_unique<juce::XmlElement> (settingsTag);
    xml->createNewChildElement (skinTag)->setAttribute (nameAttribute, getSkinName());
    return xml;
}

void BasePluginEditor::loadState (const juce::XmlElement& parent)
{
    const auto name = skinOf (parent);

    if (name.isEmpty() || ! usesSkinFiles)
        return;

    if (juce::MessageManager::existsAndIsCurrentThread())
        return switchSkin (name);

    setWantedSkin (name);
    triggerAsyncUpdate();
}

//==============================================================================
juce::File BasePluginEditor::getSkinsFolder() const
{
    return plugin.getDirectories().get (Directories::appData).getChildFile (SkinFile::skinsFolder);
}

juce::StringArray BasePluginEditor::findSkins() const
{
    juce::StringArray names;

    for (const auto& file : getSkinsFolder().findChildFiles (juce::File::findFiles, false, SkinFile::filePattern))
        names.add (file.getFileNameWithoutExtension());

    names.sortNatural();
    return names;
}

juce::String BasePluginEditor::getSkinName() const
{
    const juce::ScopedLock scope (skinNameLock);
    return wantedSkin;
}

void BasePluginEditor::setWantedSkin (const juce::String& name)
{
    const juce::ScopedLock scope (skinNameLock);
    wantedSkin = name;
}

void BasePluginEditor::switchSkin (const juce::String& name)
{
    if (name.equalsIgnoreCase (getSkinName()))
        return;

    setWantedSkin (name);

    if (! openedOnce)
        return;

    closeWindows();

    if (skinPanel != nullptr)
        skinPanel->setVisible (false);

    statusBar.showMessage ("Loading skin...", 0, stays);

    // The message is seen before the work begins.
    if (auto* peer = getPeer())
        peer->performAnyPendingRepaintsNow();

    triggerAsyncUpdate();
}

void BasePluginEditor::handleAsyncUpdate()
{
    if (openedOnce)
        loadWantedSkin();
}

void BasePluginEditor::loadWantedSkin()
{
    const auto wanted = getSkinName();

    if (skinPanel == nullptr || wanted != loadedSkin)
    {
        const auto skins = findSkins();
        const auto index = skins.indexOf (wanted, true);
        auto isLoaded = loadSkin (index >= 0 ? skins[index] : wanted);

        // With no panel to go back to, any skin is better than none.
        if (! isLoaded && skinPanel == nullptr)
            for (const auto& name : skins)
                if (isLoaded = name != wanted && loadSkin (name); isLoaded)
                    break;

        // Another thread may want another one by now.
        const juce::ScopedLock scope (skinNameLock);

        if (wantedSkin == wanted)
            wantedSkin = loadedSkin;
    }

    if (skinPanel == nullptr)
        return;

    skinPanel->setVisible (true);
    statusBar.clearMessage();
}

std::unique_ptr<GFXPanel> BasePluginEditor::readPanel (const juce::String& name) const
{
    try
    {
        SkinFile skin (plugin, usesSkinFiles ? SkinFile::Source::file : SkinFile::Source::builtIn, name,
                       getSkinsFolder());
        auto panel = skin.loadEditorPanel();

        // A window of no size is of no use.
        return panel != nullptr && ! panel->getBounds().isEmpty() ? std::move (panel) : nullptr;
    }
    catch (const std::bad_alloc&)
    {
        return nullptr; // hosts expect no exceptions
    }
}

bool BasePluginEditor::loadSkin (const juce::String& name)
{
    auto panel = readPanel (name);

    if (panel == nullptr)
        return false;

    loadedSkin = name;
    showPanel (std::move (panel));
    return true;
}

void BasePluginEditor::showPanel (std::unique_ptr<GFXPanel> panel)
{
    closeWindows();

    if (skinPanel != nullptr)
        skinPanel->endPendingGesture();

    skinUnloading();
    skinPanel = std::move (panel);
    addAndMakeVisible (*skinPanel);
    skinPanel->setTopLeftPosition (0, 0);
    skinPanel->addListener (this);
    skinPanel->addMouseListener (this, true);

    setPanelSize (skinPanel->getWidth(), skinPanel->getHeight());
    windows.panelLoaded();
    skinLoaded();
}

void BasePluginEditor::skinUnloading()
{
    midiActivityDisplay = nullptr;
    presetNameDisplay = nullptr;
}

void BasePluginEditor::skinLoaded()
{
    midiActivityDisplay = findControlOf<GFXAnimation> ("MIDIActivity");
    presetNameDisplay = findControl ("PresetNameDisplay");

    if (contentBrowser != nullptr)
        contentBrowser->setBounds (getBrowserBounds());
}

//==============================================================================
int BasePluginEditor::getStatusBarHeight() const
{
    return isStatusBarVisible() ? statusBar.getHeight() : 0;
}

void BasePluginEditor::setPanelSize (int width, int height)
{
    panelHeight = height;
    setSize (width, height + getStatusBarHeight());
    layOutStatusBar();
}

void BasePluginEditor::layOutStatusBar()
{
    constexpr int labelMargin = 12; // the label's own border on both sides

    const auto labelWidth =
        buildLabel.isVisible() ? buildLabel.getFont().getStringWidth (buildLabel.getText()) + labelMargin : 0;
    const auto height = getStatusBarHeight();

    statusBar.setVisible (isStatusBarVisible());
    statusBar.setBounds (0, panelHeight, getWidth() - labelWidth, statusBar.getHeight());
    buildLabel.setBounds (getWidth() - labelWidth, panelHeight, labelWidth, height);
}

juce::Component* BasePluginEditor::findControl (const juce::String& name)
{
    return findByName (*this, name);
}

juce::Point<int> BasePluginEditor::getModalBounds() const
{
    const auto share = [] (int length) { return static_cast<int> (modalShare * static_cast<float> (length)); };
    return { share (getWidth()), share (getHeight() - getStatusBarHeight()) };
}

juce::Rectangle<int> BasePluginEditor::getModalArea() const
{
    const auto size = getModalBounds();
    return juce::Rectangle<int> (getWidth(), panelHeight).withSizeKeepingCentre (size.x, size.y);
}

void BasePluginEditor::closeWindows()
{
    if (auto* shown = floatingLayer.getShown())
        floatingLayer.hide (*shown, nullptr);

    windows.closeAll();
}

void BasePluginEditor::showFloatingComponent (juce::Component& component, juce::Point<int> position,
                                              juce::Component* relativeTo, FloatingComponentOwner::Callback* callback)
{
    floatingLayer.show (component, position, relativeTo, callback);
}

void BasePluginEditor::hideFloatingComponent (juce::Component& component, const juce::MouseEvent* event)
{
    floatingLayer.hide (component, event);
}

//==============================================================================
void BasePluginEditor::timerCallback()
{
    timerTick (isShowing());
}

void BasePluginEditor::timerTick (bool isShown)
{
    if (midiActivityDisplay != nullptr && isShown && plugin.getMidiControlMap().takeActivity())
        midiActivityDisplay->flash (activityMs);
}

GUIController* BasePluginEditor::findController (juce::Component* component) const
{
    if (skinPanel == nullptr || component == nullptr || ! skinPanel->isParentOf (component))
        return nullptr;

    // A part of a control stands for the control.
    for (; component != nullptr && component != skinPanel.get(); component = component->getParentComponent())
        if (auto* controller = dynamic_cast<GUIController*> (component))
            return controller;

    return nullptr;
}

void BasePluginEditor::mouseDown (const juce::MouseEvent& e)
{
    if (e.eventComponent == &buildLabel)
    {
        buildLabel.setVisible (false);
        layOutStatusBar();
    }
    else if (e.originalComponent == presetNameDisplay && presetNameDisplay != nullptr && plugin.hasPresets())
        browsePresets();
    else if (e.mods.isLeftButtonDown() && e.mods.isShiftDown())
        resetControl (e, true);
    else if (e.mods.isRightButtonDown())
    {
        auto* const control = findControlUnder (e.originalComponent);

        if (auto* parameter = findParameterAt (e); parameter != nullptr)
            windows.showParameterInfo (*parameter, *control, false);
    }
}

juce::Component* BasePluginEditor::findControlUnder (juce::Component* component) const
{
    return dynamic_cast<juce::Component*> (findController (component));
}

Parameter* BasePluginEditor::findParameterAt (const juce::MouseEvent& e) const
{
    auto* controller = findController (e.originalComponent);
    return controller != nullptr ? controller->getParameterAt (e, nullptr) : nullptr;
}

void BasePluginEditor::mouseDoubleClick (const juce::MouseEvent& e)
{
    if (e.mods.isLeftButtonDown())
        resetControl (e, false);
}

void BasePluginEditor::resetControl (const juce::MouseEvent& e, bool forced)
{
    auto* controller = findController (e.originalComponent);

    if (controller == nullptr || ! (forced || controller->canResetParameter()))
        return;

    auto* parameter = controller->getParameterAt (e, nullptr);

    if (parameter == nullptr)
        return;

    plugin.resetParameter (*parameter);
    parameterActionHook (parameter->getId());

    if (! windows.isParameterInfoOpen())
        showParameterValue (*parameter);
}

void BasePluginEditor::showParameterValue (const Parameter& parameter)
{
    const auto text = parameter.getDisplayText();

    if (parameter.getName().isNotEmpty())
        statusBar.showMessage (parameter.getName() + ": " + text, valuePriority, valueTimeoutMs);
    else
        statusBar.showMessage (text, 0, valueTimeoutMs);
}

//==============================================================================
void BasePluginEditor::controllerValueChanged (GUIController& controller)
{
    if (auto* parameter = controller.getParameter(); parameter != nullptr && ! windows.isParameterInfoOpen())
        showParameterValue (*parameter);
}

void BasePluginEditor::controllerEvent (GUIController& controller, int eventId)
{
    if (eventId == eventIds::options)
        return windows.showOptions();

    if (eventId == eventIds::about)
        return windows.showAbout();

    if (plugin.hasPresets() && presetEvent (eventId))
        return;

    plugin.actionHook (eventId);

    if (auto* parameter = controller.getParameter(); parameter != nullptr && ! windows.isParameterInfoOpen())
        showParameterValue (*parameter);
}

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
            if (contentBrowser != nullptr)
                contentBrowser->clearSelection();

            plugin.loadPreset (plugin.getDefaultPreset());
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
            if (answer == K7R::AlertWindow::yes)
                return savePreset();

            if (answer != K7R::AlertWindow::no)
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
    plugin.fillPreset (undoPreset);
}

void BasePluginEditor::browserClosed (ContentBrowser&, ContentBrowser::Mode previousMode, bool confirmed)
{
    if (previousMode == ContentBrowser::Mode::browse)
    {
        if (! confirmed)
            plugin.loadPreset (undoPreset);
    }
    else if (std::exchange (browserReturnsAfterSave, false))
        browsePresets();
}

void BasePluginEditor::browserMessage (const juce::String& text)
{
    statusBar.showMessage (text, messagePriority, messageTimeoutMs);
}

} // namespace quilvane
