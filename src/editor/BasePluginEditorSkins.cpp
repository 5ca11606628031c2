// SPDX-License-Identifier: GPL-3.0-or-later

// What the editor keeps in settings and states, and how it finds, loads and switches skins.

#include <new>

#include "core/BasePlugin.h"
#include "editor/BasePluginEditor.h"

namespace K7R
{

namespace
{

constexpr int loadingStays = 0;

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

} // namespace

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
    {
        // A skin that is missing must not hide the present one, not even for a moment.
        if (skinPanel == nullptr || findSkins().contains (name, true))
            switchSkin (name);

        return;
    }

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

    statusBar.showMessage ("Loading skin...", 0, loadingStays);

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

} // namespace K7R
