// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

#include "browser/ContentBrowser.h"
#include "core/PluginEditor.h"
#include "core/PresetSession.h"
#include "editor/EditorWindows.h"
#include "editor/StatusBar.h"
#include "skin/GFXPanel.h"
#include "skin/files/SkinFile.h"
#include "support/Ticker.h"
#include "widgets/look/DefaultLookAndFeel.h"
#include "widgets/windows/FloatingLayer.h"

namespace K7R
{

class BasePlugin;
class GFXAnimation;

/** The top of every product's user interface: it holds the skin's panel and the status bar, loads and switches the
    skin, and turns what controls report into operations of the plug-in.

    It lives as long as the plug-in. The skin is read when the host first opens a window; the ticks come all the
    time. Controls that it looks for by name may be missing from a skin: each use of one is guarded.
*/
class BasePluginEditor : public PluginEditor,
                         public FloatingComponentOwner,
                         public ModalComponent::Desktop,
                         private StatusBar::Owner,
                         private ContentBrowser::Listener,
                         protected GUIController::Listener,
                         protected Parameter::Listener,
                         private juce::AsyncUpdater,
                         private Ticker::Listener
{
public:
    /** @param usesSkinFiles whether skins lie in the product's folder; else the embedded one is loaded at once */
    BasePluginEditor (BasePlugin&, bool usesSkinFiles);
    ~BasePluginEditor() override;

    //==============================================================================
    void start() override;
    void windowOpened() override;
    void windowClosed() override;
    std::unique_ptr<juce::XmlElement> saveSettings() const override;
    void loadSettings (const juce::XmlElement& parent) override;
    std::unique_ptr<juce::XmlElement> saveState() const override;
    void loadState (const juce::XmlElement& parent) override;

    //==============================================================================
    /** The names of the skins that are installed, sorted; the first one is what a new user sees. */
    juce::StringArray findSkins() const;

    /** Takes another skin: soon, or when a window first opens. One that can't be loaded leaves the present one. */
    void switchSkin (const juce::String& name) override;

    /** The skin that is shown, or will be. */
    juce::String getSkinName() const override;

    /** Those that are sizes of one skin; else all that are installed. */
    juce::StringArray getSkinSizes() const override { return findSkins(); }

    juce::File getSkinsFolder() const;

    GFXPanel* getSkinPanel() const noexcept { return skinPanel.get(); }
    StatusBar& getStatusBar() noexcept { return statusBar; }
    EditorWindows& getWindows() noexcept { return windows; }

    /** Made when it's first asked for, by the user or by a step through its list; null in a product without
        presets. */
    ContentBrowser* getBrowser();

    /** As the control does that fires an event of FrameworkIds.h which is about presets.
        @returns whether it is one */
    bool presetEvent (int eventId);

    /** Without the status bar, in pixels. */
    int getPanelHeight() const noexcept { return panelHeight; }

    /** The first component of this name; those of one level come before those within them. Null for none. */
    juce::Component* findControl (const juce::String& name);

    /** The parameter of the control that an event is over, null for none. */
    Parameter* findParameterAt (const juce::MouseEvent&) const;

    /** Shows a parameter's name and value in the status bar for three seconds. */
    void showParameterValue (const Parameter&);

    void showFloatingComponent (juce::Component&, juce::Point<int> position, juce::Component* relativeTo,
                                FloatingComponentOwner::Callback*) override;
    void hideFloatingComponent (juce::Component&, const juce::MouseEvent*) override;

    /** How large a window inside the editor may be. */
    virtual juce::Point<int> getModalBounds() const;

    /** That size, in the middle of the panel. */
    juce::Rectangle<int> getModalArea() const override;

    void mouseDown (const juce::MouseEvent&) override;
    void mouseDoubleClick (const juce::MouseEvent&) override;
    bool keyPressed (const juce::KeyPress&) override;
    void visibilityChanged() override;
    void paint (juce::Graphics&) override;

protected:
    /** The panel is about to go, and with it every control that was found in it. The host may run messages between
        this and skinLoaded(), because its window changes its size. */
    virtual void skinUnloading();

    /** A new panel is shown, and its controls can be found. */
    virtual void skinLoaded();

    /** Every 25 ms.
        @param isShown whether somebody can see the editor */
    virtual void timerTick (bool isShown);

    virtual bool isStatusBarVisible() const { return true; }

    /** Where the browser lies in the editor. */
    virtual juce::Rectangle<int> getBrowserBounds() const;

    /** The user has reset a parameter. */
    virtual void parameterActionHook (int /*parameterId*/) {}

    // GUIController::Listener and Parameter::Listener.
    void controllerValueChanged (GUIController&) override;
    void controllerEvent (GUIController&, int eventId) override;
    void controllerParameterMoved (Parameter&) override;
    void parameterChanged (Parameter&) override {}

    /** A control of the panel by its name and class, null if there is none. */
    template <typename Control>
    Control* findControlOf (const juce::String& name)
    {
        return dynamic_cast<Control*> (findControl (name));
    }

    int getStatusBarHeight() const;

private:
    std::unique_ptr<GFXPanel> readPanel (const juce::String& name) const;
    bool loadSkin (const juce::String& name);
    void loadWantedSkin();
    void showPanel (std::unique_ptr<GFXPanel>);
    void setPanelSize (int width, int height);
    void layOutStatusBar();
    void parentHierarchyChanged() override;
    juce::String makeBuildText() const;
    void resetControl (const juce::MouseEvent&, bool forced);
    void closeWindows();
    void browsePresets();
    void savePreset();
    SkinControl* findTarget (juce::Component*) const;
    void setWantedSkin (const juce::String&);
    void selectAdjacentPreset (int eventId);
    void browserOpened (ContentBrowser&) override;
    void browserClosed (ContentBrowser&, ContentBrowser::Mode previousMode, bool confirmed) override;
    void browserMessage (const juce::String&) override;

    void handleAsyncUpdate() override;
    void tick() override;

    BasePlugin& plugin;
    const bool usesSkinFiles;

    /** All editors share one look, which is JUCE's default while there are editors: fonts ask no other. */
    struct SharedLook
    {
        SharedLook() { juce::LookAndFeel::setDefaultLookAndFeel (&look); }
        ~SharedLook() { juce::LookAndFeel::setDefaultLookAndFeel (nullptr); }

        DefaultLookAndFeel look;
    };

    juce::SharedResourcePointer<Ticker> ticker;
    juce::SharedResourcePointer<SharedLook> sharedLook;
    StatusBar statusBar;
    std::unique_ptr<juce::TooltipWindow> tooltipWindow; // while a window is open; it watches the mouse
    juce::Label buildLabel;

    // The wanted skin is read and set by threads that save and restore states.
    juce::CriticalSection skinNameLock;
    juce::String wantedSkin;
    juce::String loadedSkin;
    bool openedOnce = false;

    int panelHeight = 0;
    std::unique_ptr<GFXPanel> skinPanel;
    GFXAnimation* midiActivityDisplay = nullptr;
    juce::Component* presetNameDisplay = nullptr;
    juce::Button* midiLearnButton = nullptr;

    FloatingLayer floatingLayer { *this };
    EditorWindows windows;

    std::unique_ptr<ContentBrowser> contentBrowser;
    PresetSession::Snapshot beforeBrowsing;
    bool browserReturnsAfterSave = false; // it was open when "Save Preset" came
};

} // namespace K7R
