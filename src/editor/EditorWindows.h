// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>

#include "editor/AboutWindow.h"
#include "editor/ParameterInfo.h"
#include "editor/PresetChangedAlert.h"
#include "editor/settings/GUISettingsComponent.h"
#include "editor/settings/OptionsWindow.h"
#include "widgets/windows/FloatingComponentOwner.h"

namespace K7R
{

class BasePlugin;
class BasePluginEditor;
class MidiLearnLayer;
class PresetSettingsComponent;

/** The windows of one editor besides the browser: options, about, a parameter's information with MIDI learn, and the
    warning of changes. Each is made when it's first asked for. Message thread. */
class EditorWindows final : private GUISettingsComponent::Listener,
                            private ParameterInfo::Listener,
                            private AboutWindow::Listener,
                            private FloatingComponentOwner::Callback,
                            private AlertWindow::Caller
{
public:
    EditorWindows (BasePluginEditor&, BasePlugin&);
    ~EditorWindows() override;

    void showOptions();
    void showAbout();

    /** Opens at the middle of a control; does nothing if it's open for this parameter already.
        @param learning begins to learn a controller at once */
    void showParameterInfo (Parameter&, juce::Component& source, bool learning);
    bool isParameterInfoOpen() const noexcept { return parameterInfo != nullptr; }

    /** Lets the user choose the control to learn for, or ends that. */
    void toggleMidiLearn();

    /** Whether that goes on, or a controller is waited for. */
    bool isMidiLearning() const;

    /** Asks what becomes of the changes to the parameters.
        @param onAnswer told a code of AlertWindow, and whether the user doesn't want to be asked again */
    void showPresetChangedAlert (std::function<void (int answer, bool isUnwanted)> onAnswer);

    /** Whether stepping to another preset warns of changes. */
    bool warnsOfPresetChange() const noexcept { return presetChangeWarning; }
    void setPresetChangeWarning (bool);

    /** Leaves everything that is open, as its user would without an answer. */
    void closeAll();

    /** A new panel is shown. */
    void panelLoaded();

private:
    /** For what is built elsewhere: the bases are nobody else's business. */
    template <typename Base>
    Base& self()
    {
        return *this;
    }

    void createOptions();
    void endMidiLearn();
    void showCurrentSkin();

    void skinChosen (const juce::String&) override;
    void parameterInfoClosed (ParameterInfo&, bool confirmed) override;
    void parameterInfoReset (ParameterInfo&) override;
    void aboutWindowClosed (AboutWindow&) override;
    void floatingComponentHidden (juce::Component&, const juce::MouseEvent*) override;
    bool keepsFloatingComponent (juce::Component&, const juce::MouseEvent&) override;
    void alertClosed (AlertWindow*, int result) override;

    BasePluginEditor& editor;
    BasePlugin& plugin;
    bool presetChangeWarning = true;

    std::unique_ptr<OptionsWindow> options;
    PresetSettingsComponent* presetSettings = nullptr; // in the options
    GUISettingsComponent* guiSettings = nullptr;       // in the options
    std::unique_ptr<AboutWindow> about;
    std::unique_ptr<ParameterInfo> parameterInfo;
    bool isConfirmed = false;
    std::unique_ptr<MidiLearnLayer> learnLayer;
    std::unique_ptr<PresetChangedAlert> presetChangedAlert;
    std::function<void (int, bool)> onPresetChangedAnswer;
};

} // namespace K7R
