// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/EditorWindows.h"

#include "core/BasePlugin.h"
#include "editor/BasePluginEditor.h"
#include "editor/MidiLearnLayer.h"
#include "editor/settings/MapSettingsComponent.h"
#include "editor/settings/PresetSettingsComponent.h"
#include "editor/settings/QualitySettingsComponent.h"

namespace K7R
{

namespace
{

constexpr float optionsShare = 0.8f; // of the panel's height
constexpr int leastOptions = 360;    // of a panel that has as much
constexpr int margin = 16;           // above and below a window, together
constexpr int learnPriority = 6, stays = 0;
constexpr int fileMessagePriority = 6, fileMessageMs = 6000;

} // namespace

EditorWindows::EditorWindows (BasePluginEditor& owner, BasePlugin& shown) : editor (owner), plugin (shown) {}

EditorWindows::~EditorWindows() = default;

//==============================================================================
void EditorWindows::createOptions()
{
    options = std::make_unique<OptionsWindow>();
    panelLoaded();

    const auto [realTime, offline] = plugin.getDefaultQualityParameters();

    if (realTime != nullptr && offline != nullptr)
        options->addSection ("PROCESSING QUALITY", std::make_unique<QualitySettingsComponent> (*realTime, *offline));

    auto presets = std::make_unique<PresetSettingsComponent> ([this] (bool warns) { presetChangeWarning = warns; });
    presetSettings = presets.get();
    presetSettings->setWarning (presetChangeWarning);
    options->addSection ("PRESETS", std::move (presets));
    options->addSection ("MIDI", std::make_unique<MidiSettingsComponent> (plugin));
    options->addSection ("HOST PARAMETERS",
                         std::make_unique<HostMapSettingsComponent> (
                             plugin, [this] (const juce::String& text)
                             { editor.getStatusBar().showMessage (text, fileMessagePriority, fileMessageMs); }));

    if (const auto skins = editor.findSkins(); skins.size() > 1)
    {
        auto gui = std::make_unique<GUISettingsComponent> (
            plugin, skins, editor.getSkinsFolder(), options->getContentWidth(), self<GUISettingsComponent::Listener>());
        guiSettings = gui.get();
        options->addSection ("USER INTERFACE", std::move (gui));
    }
}

void EditorWindows::showOptions()
{
    if (options == nullptr)
        createOptions();

    showCurrentSkin();
    editor.addChildComponent (*options);
    options->open();
    editor.getStatusBar().repaint();
}

void EditorWindows::panelLoaded()
{
    if (options != nullptr && editor.getSkinPanel() != nullptr)
    {
        const auto height = editor.getPanelHeight();
        const auto share = static_cast<int> (optionsShare * static_cast<float> (height));
        options->setSize (OptionsWindow::width, juce::jmin (height - margin, juce::jmax (leastOptions, share)));
    }
}

void EditorWindows::showCurrentSkin()
{
    if (guiSettings != nullptr)
        guiSettings->setCurrent (editor.getSkinName());
}

void EditorWindows::skinChosen (const juce::String& name)
{
    editor.switchSkin (name);
    showCurrentSkin();
}

void EditorWindows::setPresetChangeWarning (bool warns)
{
    presetChangeWarning = warns;

    if (presetSettings != nullptr)
        presetSettings->setWarning (warns);
}

//==============================================================================
void EditorWindows::showAbout()
{
    const auto logo = plugin.getEmbeddedFile ("PluginLogo.svg");
    about = std::make_unique<AboutWindow> (
        plugin, juce::String::fromUTF8 (static_cast<const char*> (logo.data), static_cast<int> (logo.numBytes)),
        self<AboutWindow::Listener>());
    about->fitInto (editor.getWidth() - margin, editor.getPanelHeight() - margin);
    editor.addChildComponent (*about);
    about->open();
}

void EditorWindows::aboutWindowClosed (AboutWindow&)
{
    about.reset();
}

//==============================================================================
void EditorWindows::showParameterInfo (Parameter& parameter, juce::Component& source, bool learning)
{
    if (parameterInfo != nullptr && &parameterInfo->getParameter() == &parameter)
        return;

    // Closes the one before.
    if (parameterInfo != nullptr)
        editor.hideFloatingComponent (*parameterInfo, nullptr);

    parameterInfo = std::make_unique<ParameterInfo> (parameter, plugin.getMidiControlMap(),
                                                     plugin.getParameters().getDefault (parameter.getId()),
                                                     self<ParameterInfo::Listener>());
    isConfirmed = false;

    // From the middle of the control to where there is room.
    const auto& size = parameterInfo->getLocalBounds();
    auto corner = editor.getLocalPoint (&source, source.getLocalBounds().getCentre());

    if (corner.x + size.getWidth() > editor.getWidth())
        corner.x -= size.getWidth();

    if (corner.y + size.getHeight() > editor.getPanelHeight())
        corner.y -= size.getHeight();

    editor.showFloatingComponent (*parameterInfo, corner, nullptr, this);

    if (learning)
        parameterInfo->startLearning();
}

void EditorWindows::parameterInfoClosed (ParameterInfo& info, bool confirmed)
{
    isConfirmed = confirmed;
    editor.hideFloatingComponent (info, nullptr);
}

void EditorWindows::parameterInfoReset (ParameterInfo& info)
{
    plugin.resetParameter (info.getParameter());
}

void EditorWindows::floatingComponentHidden (juce::Component&, const juce::MouseEvent*)
{
    if (const auto closed = std::move (parameterInfo); closed != nullptr && ! isConfirmed)
        closed->revert();
}

bool EditorWindows::keepsFloatingComponent (juce::Component&, const juce::MouseEvent& e)
{
    // The click asks for what is open.
    return e.mods.isRightButtonDown() && parameterInfo != nullptr
           && editor.findParameterAt (e) == &parameterInfo->getParameter();
}

//==============================================================================
void EditorWindows::toggleMidiLearn()
{
    auto* panel = editor.getSkinPanel();

    if (learnLayer != nullptr || panel == nullptr)
        return endMidiLearn();

    learnLayer = std::make_unique<MidiLearnLayer> (*panel, plugin.getMidiControlMap(),
                                                   [this] (juce::Component* control, Parameter* parameter)
                                                   {
                                                       endMidiLearn();

                                                       if (control != nullptr)
                                                           showParameterInfo (*parameter, *control, true);
                                                   });
    editor.addAndMakeVisible (*learnLayer);
    editor.getStatusBar().showMessage ("MIDI learn: click the control to be moved", learnPriority, stays);

    if (learnLayer->isShowing())
        learnLayer->grabKeyboardFocus();
}

bool EditorWindows::isMidiLearning() const
{
    return learnLayer != nullptr || plugin.getMidiControlMap().getLearnParameter() != nullptr;
}

void EditorWindows::endMidiLearn()
{
    if (const auto ended = std::move (learnLayer); ended != nullptr)
        editor.getStatusBar().clearMessage();
}

//==============================================================================
void EditorWindows::showPresetChangedAlert (std::function<void (int, bool)> onAnswer)
{
    onPresetChangedAnswer = std::move (onAnswer);
    presetChangedAlert = std::make_unique<PresetChangedAlert> (&self<AlertWindow::Caller>());
    presetChangedAlert->show (editor);
}

void EditorWindows::alertClosed (AlertWindow*, int result)
{
    const auto answered = std::move (presetChangedAlert);

    if (const auto toCall = std::exchange (onPresetChangedAnswer, nullptr))
        toCall (result, answered != nullptr && answered->isUnwanted());
}

void EditorWindows::closeAll()
{
    endMidiLearn();
    ModalComponent::dismissAll (editor);
}

} // namespace K7R
