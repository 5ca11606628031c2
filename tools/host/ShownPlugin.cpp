// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShownPlugin.h"

#include "Failure.h"
#include "MessageLoop.h"
#include "PluginFolders.h"
#include "core/PluginAudioProcessor.h"
#include "editor/BasePluginEditor.h"
#include "product/Quilvane.h"

namespace K7R::host
{

namespace
{

constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;
constexpr float noiseLevel = 0.35f;
constexpr int settlingMs = 120; // for the editor's timer and the delayed updates of parameters

/** The product, which believes to lie in a folder of our choice. */
class Portable final : public quilvane::Quilvane
{
public:
    explicit Portable (const juce::File& folderToUse) : folder (folderToUse) {}

    juce::String getReleaseChannel() const override { return "portable"; }
    juce::String getPluginFile() const override { return folder.getChildFile ("plugin").getFullPathName(); }

private:
    const juce::File folder;
};

} // namespace

ShownPlugin::ShownPlugin (const juce::File& dataFolder, const juce::String& skinName) :
    wantedSkin (skinName),
    processor (std::make_unique<PluginAudioProcessor>())
{
    const auto& home = folder.getFile();
    const auto folderOf = [&] (const char* suffix)
    { return home.getChildFile (PluginFolders::product + juce::String (suffix)); };

    if (folderOf ("_user").createDirectory().failed() || ! dataFolder.createSymbolicLink (folderOf ("_data"), true))
        throw Failure ("cannot make the folder " + home.getFullPathName());

    processor->setPlugin (std::make_unique<Portable> (home));
    const auto skins = getEditor().findSkins();

    if (skins.isEmpty() || (skinName.isNotEmpty() && ! skins.contains (skinName)))
        throw Failure ("there is no skin" + (skinName.isEmpty() ? juce::String() : " \"" + skinName + "\"") + " in "
                       + dataFolder.getChildFile ("Skins").getFullPathName());

    if (skinName.isNotEmpty())
        getEditor().switchSkin (skinName);

    processor->prepareToPlay (sampleRate, blockSize);
}

ShownPlugin::~ShownPlugin()
{
    close();
    processor.reset();

    // The link, not what it leads to.
    folder.getFile().getChildFile (PluginFolders::product + juce::String ("_data")).deleteFile();
    folder.getFile().deleteRecursively (false);
}

void ShownPlugin::open()
{
    close();
    window.reset (processor->createEditor());

    if (getEditor().getSkinPanel() == nullptr || (wantedSkin.isNotEmpty() && getEditor().getSkinName() != wantedSkin))
        throw Failure ("the skin \"" + wantedSkin + "\" can't be loaded");
}

void ShownPlugin::close()
{
    window.reset();
}

BasePlugin& ShownPlugin::getPlugin()
{
    return processor->getPlugin();
}

BasePluginEditor& ShownPlugin::getEditor()
{
    return dynamic_cast<BasePluginEditor&> (*getPlugin().getEditor());
}

void ShownPlugin::play (double seconds, const std::function<void()>& then)
{
    runBesideMessageLoop (
        [&]
        {
            juce::Random random (1);
            juce::AudioBuffer<float> buffer (2, blockSize);
            juce::MidiBuffer midi;

            for (auto left = static_cast<int> (seconds * sampleRate); left > 0; left -= blockSize)
            {
                for (int channel = 0; channel < 2; ++channel)
                    for (int i = 0; i < blockSize; ++i)
                        buffer.setSample (channel, i, noiseLevel * (2.0f * random.nextFloat() - 1.0f));

                processor->processBlock (buffer, midi);
            }

            juce::Thread::sleep (settlingMs);

            if (then != nullptr)
            {
                runOnMessageThread (then);
                juce::Thread::sleep (settlingMs);
            }
        });
}

juce::Image ShownPlugin::takePicture()
{
    return window->createComponentSnapshot (window->getLocalBounds(), true, 1.0f);
}

} // namespace K7R::host
