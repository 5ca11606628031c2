// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/BasePluginEditor.h"

#include <new>

#include "core/BasePlugin.h"
#include "core/FrameworkIds.h"
#include "skin/displays/GFXAnimation.h"

namespace K7R
{

namespace
{

constexpr int activityMs = 175;
constexpr int tooltipDelayMs = 850;
constexpr int valuePriority = 6, valueTimeoutMs = 3000;
constexpr int stays = 0;
constexpr int initialWidth = 800, initialHeight = 600;
constexpr float modalShare = 0.8f;

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
    windows (*this, owner)
{
    auto& look = sharedLook->look;
    setOpaque (true);
    addAndMakeVisible (statusBar);
    setLookAndFeel (&look);

    buildLabel.setText (makeBuildText(), juce::dontSendNotification);
    buildLabel.setJustificationType (juce::Justification::centredRight);
    buildLabel.setColour (juce::Label::textColourId, look.findColour (DefaultLookAndFeel::statusBarTextId));
    buildLabel.setColour (juce::Label::backgroundColourId, look.findColour (DefaultLookAndFeel::statusBarBackgroundId));
    buildLabel.addMouseListener (this, false);
    addChildComponent (buildLabel);
    buildLabel.setVisible (! plugin.isRelease());

    panelHeight = initialHeight;
    setSize (initialWidth, initialHeight + statusBar.getHeight());
}

BasePluginEditor::~BasePluginEditor()
{
    ticker->remove (*this);
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

    ticker->add (*this);
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
    tooltipWindow = std::make_unique<juce::TooltipWindow> (this, tooltipDelayMs);
    loadWantedSkin();
}

void BasePluginEditor::windowClosed()
{
    closeWindows();
    tooltipWindow.reset();

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

    // A path may be longer than the status bar.
    if (skinPanel == nullptr)
    {
        constexpr int margin = 60, numLines = 6;
        g.setColour (findColour (DefaultLookAndFeel::statusBarTextId));
        g.setFont (sharedLook->look.getStatusBarFont());
        g.drawFittedText (statusBar.getMessage(), getLocalBounds().withHeight (panelHeight).reduced (margin),
                          juce::Justification::centred, numLines, 1.0f);
    }
}

//==============================================================================
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
    midiLearnButton = nullptr;
    presetNameDisplay = nullptr;
}

void BasePluginEditor::skinLoaded()
{
    midiLearnButton = findControlOf<juce::Button> ("MidiLearnButton");
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

    int labelWidth = 0;

    // Not before there's a window: the first font of a process makes JUCE open all fonts of the machine.
    if (buildLabel.isVisible() && getParentComponent() != nullptr)
    {
        buildLabel.setFont (sharedLook->look.getStatusBarFont());
        labelWidth = buildLabel.getFont().getStringWidth (buildLabel.getText()) + labelMargin;
    }

    const auto height = getStatusBarHeight();

    statusBar.setVisible (isStatusBarVisible());
    statusBar.setBounds (0, panelHeight, getWidth() - labelWidth, statusBar.getHeight());
    buildLabel.setBounds (getWidth() - labelWidth, panelHeight, labelWidth, height);
}

void BasePluginEditor::parentHierarchyChanged()
{
    layOutStatusBar();
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
    browserReturnsAfterSave = false;

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
void BasePluginEditor::tick()
{
    timerTick (isShowing());
}

void BasePluginEditor::timerTick (bool isShown)
{
    if (midiActivityDisplay != nullptr && isShown && plugin.getMidiControlMap().takeActivity())
        midiActivityDisplay->flash (activityMs);

    if (midiLearnButton != nullptr)
        midiLearnButton->setToggleState (windows.isMidiLearning(), juce::dontSendNotification);
}

SkinControl* BasePluginEditor::findTarget (juce::Component* component) const
{
    if (skinPanel == nullptr || component == nullptr || ! skinPanel->isParentOf (component))
        return nullptr;

    // A part of a control stands for the control.
    for (; component != nullptr && component != skinPanel.get(); component = component->getParentComponent())
        if (auto* target = dynamic_cast<SkinControl*> (component))
            return target;

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
        auto* target = findTarget (e.originalComponent);
        auto* source = dynamic_cast<juce::Component*> (target); // a control of several parts gives the one hit

        if (auto* parameter = target != nullptr ? target->getParameterAt (e, &source) : nullptr)
            windows.showParameterInfo (*parameter, *source, false);
    }
}

Parameter* BasePluginEditor::findParameterAt (const juce::MouseEvent& e) const
{
    auto* target = findTarget (e.originalComponent);
    return target != nullptr ? target->getParameterAt (e, nullptr) : nullptr;
}

void BasePluginEditor::mouseDoubleClick (const juce::MouseEvent& e)
{
    if (e.mods.isLeftButtonDown())
        resetControl (e, false);
}

void BasePluginEditor::resetControl (const juce::MouseEvent& e, bool forced)
{
    auto* target = findTarget (e.originalComponent);

    if (target == nullptr || ! (forced || target->canResetParameterAt (e)))
        return;

    auto* parameter = target->getParameterAt (e, nullptr);

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

bool BasePluginEditor::keyPressed (const juce::KeyPress& key)
{
    // JUCE's buttons know Return alone.
    auto* const button = dynamic_cast<juce::Button*> (juce::Component::getCurrentlyFocusedComponent());

    if (key != juce::KeyPress::spaceKey || button == nullptr || ! button->isEnabled())
        return false;

    button->triggerClick();
    return true;
}

//==============================================================================
void BasePluginEditor::controllerValueChanged (GUIController& controller)
{
    if (auto* parameter = controller.getParameter())
        controllerParameterMoved (*parameter);
}

void BasePluginEditor::controllerParameterMoved (Parameter& parameter)
{
    if (! windows.isParameterInfoOpen())
        showParameterValue (parameter);
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

    controllerValueChanged (controller);
}

} // namespace K7R
