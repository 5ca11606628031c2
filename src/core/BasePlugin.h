// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <functional>
#include <memory>

#include <juce_audio_processors/juce_audio_processors.h>

#include "content/Preset.h"
#include "content/PresetsContent.h"
#include "core/Directories.h"
#include "core/PresetSession.h"
#include "core/ProcessContext.h"
#include "core/SoftwareDesignation.h"
#include "dsp/SampleRateConstants.h"
#include "parameters/EventsMap.h"
#include "parameters/HostParameterMap.h"
#include "parameters/MidiControlMap.h"
#include "parameters/ParameterManager.h"

namespace K7R
{

class EnumParameter;
class PluginAudioProcessor;
class PluginEditor;

/** Bytes that are embedded in the plug-in's binary, for as long as it is loaded; null and 0 for none. */
struct EmbeddedFile
{
    const void* data = nullptr;
    size_t numBytes = 0;
};

/** The reusable core of every product: it owns the parameters, the host's and the controllers' view of
    them, the presets and their sources, the events, the folders and the settings, and forwards audio to the
    effect that derives from it.

    A product overrides the virtual operations; nothing here names one. It is built in stages by
    PluginAudioProcessor::setPlugin(), all on the thread on which the host creates the plug-in and
    before any audio: constructor, initialiseEnvironment(), createDspCore(), initialiseContent(), startUpdates().

    Owned by its PluginAudioProcessor. Nothing in the start-up fails but for an exception: what is
    missing leaves defaults in force.
*/
class BasePlugin : public SoftwareDesignation, public PresetHost, protected Parameter::Listener
{
public:
    /** Reads a text that is embedded in the plug-in's binary, by its bare file name; empty if there
        is none of that name. */
    using EmbeddedTextLoader = std::function<juce::String (const juce::String& name)>;

    BasePlugin (std::unique_ptr<ParameterManager>, EmbeddedTextLoader);
    ~BasePlugin() override;

    //==============================================================================
    // The stages of the start-up after the constructor.

    virtual void initialiseEnvironment();
    virtual void createDspCore() {}
    virtual void initialiseContent();

    /** The last stage: from here on, asynchronous listeners are served and the editor has its ticks. Other instances
        may let messages run while this one is built; nothing of it hears of anything before it's whole. */
    void startUpdates();

    /** The link back to the owner; set once, right after both are constructed. */
    void setProcessor (PluginAudioProcessor* owner) noexcept { processor = owner; }

    //==============================================================================
    // What the processor forwards from the host.

    void prepareToPlay (double sampleRate, int samplesPerBlock);
    void releaseResources();

    /** The audio callback, with denormal numbers flushed to zero until it returns. */
    void processAudio (juce::AudioBuffer<float>&, juce::MidiBuffer&, bool bypassed);

    virtual int getNumHostParameters() const { return numHostParameters; }
    juce::String getHostParameterName (int hostIndex) const;
    juce::String getHostParameterText (int hostIndex) const;

    /** Normalised; of an unmapped index the value that the host last set. */
    float getHostParameterValue (int hostIndex) const;
    float getHostParameterDefault (int hostIndex) const;
    bool isHostParameterMeta (int hostIndex) const;

    /** The host sets a parameter. Any thread; the change isn't sent back.
        @param value normalised; a mapped parameter clamps values beyond 0 to 1 and ignores NaN, an unmapped
        index keeps whatever it is given */
    void setHostParameterValue (int hostIndex, float value);

    /** Refreshes the latency that the processor reports to the host. */
    void refreshLatency();

    /** What the host keeps of this instance in its project: the processing qualities, the preset's
        parameters and its name, and the MIDI map, as XML in the binary form of juce::AudioProcessor. */
    void saveStateChunk (juce::MemoryBlock&) const;

    /** Restores what saveStateChunk() wrote. What is missing there keeps its value, but for
        parameters of the preset, which take their defaults; damaged or foreign data changes nothing. */
    void loadStateChunk (const void* data, int size);

    virtual bool isBusesLayoutSupported (const juce::AudioProcessor::BusesLayout&) const { return true; }
    virtual bool producesMidi() const { return false; }
    virtual int getLatencySamples() const { return 0; }

    //==============================================================================
    // The host parameter map: which parameter stands at which index of the host. Message thread.

    /** Maps a parameter to an index, from where it stood before; does nothing for one that isn't
        automatable but to clear its old index. Null clears the index. */
    void setHostParameter (int hostIndex, Parameter*, bool notify);
    void clearHostParameter (int hostIndex);

    /** The host index of a parameter; HostParameterMap::unmapped for none. Any thread. */
    int getHostIndex (const Parameter& parameter) const noexcept { return hostMap.indexOf (parameter); }

    /** Replaces the map by that of a document ("HostParametersMap"); one for another product is
        ignored.
        @returns whether it did */
    bool loadHostMapXml (const juce::XmlElement&);

    /** The same from a file; one that can't be read changes nothing. */
    bool loadHostMap (const juce::File&);

    /** Goes back to the map of an instance without a map file: the product's embedded one if it has one, or the
        parameters of a preset in their order. */
    void resetHostMap();

    std::unique_ptr<juce::XmlElement> createHostMapXml() const;

    /** Tells the user interface of changes of the map. */
    juce::ChangeBroadcaster& getHostMapBroadcaster() noexcept { return hostMapBroadcaster; }

    //==============================================================================
    // Presets and settings. Message thread.

    /** See PresetSession::load(); synced oscillators start again. Any thread. */
    void loadPreset (const Preset&) override;
    void fillPreset (Preset& preset) const override { presetSession.fill (preset); }
    const ParameterManager& getPresetParameters() const override { return *parameters; }

    /** Brings back all that was before other presets were listened to; nothing where none was loaded. */
    void restorePresets (const PresetSession::Snapshot&);
    PresetSession::Snapshot takePresetSnapshot() const { return presetSession.takeSnapshot(); }

    const Preset& getDefaultPreset() const noexcept { return presetSession.getDefault(); }
    Preset getCurrentPreset() const { return presetSession.getCurrent(); }
    bool isPresetChanged() const noexcept { return presetSession.hasChanged(); }

    /** Whether a preset is being applied at this moment. Any thread. */
    bool isLoadingPreset() const noexcept { return presetSession.isLoading(); }
    void resetPresetBaseline() { presetSession.resetBaseline(); }

    /** The presets of the shipped package; null if there is none. */
    PresetsContent* getFactoryPresets() const noexcept { return factoryPresets.get(); }

    /** The user's own presets; null in a product without presets. */
    PresetsContent* getUserPresets() const noexcept { return userPresets.get(); }

    /** Writes the settings that all instances share, over those of the instance that closed before. A file that can't
        be read stays as it is while nothing was set, and is kept beside the new one otherwise. */
    void saveSettings() const;

    juce::File getSettingsFile() const;

    /** A map that new instances begin with, where it is used. */
    struct DefaultMap
    {
        juce::File file; // juce::File() for none
        bool isUsed = false;
    };

    // The map of MIDI controllers and that of host parameters. They're kept with the settings; the maps of this
    // instance stay as they are.
    DefaultMap getDefaultMidiMap() const { return midiMapSetting.get(); }
    DefaultMap getDefaultHostMap() const { return hostMapSetting.get(); }
    void setDefaultMidiMap (const DefaultMap& map) { midiMapSetting.set (map); }
    void setDefaultHostMap (const DefaultMap& map) { hostMapSetting.set (map); }

    // The extensions of the files of these maps, with the point.
    juce::String getMidiMapExtension() const { return "." + getShortName().toLowerCase() + "ccmap"; }
    juce::String getHostMapExtension() const { return "." + getShortName().toLowerCase() + "hpmap"; }

    // The qualities of this instance and of new ones; null in a product without.
    struct QualityParameters
    {
        EnumParameter* realTime;
        EnumParameter* offline;
    };

    QualityParameters getQualityParameters() const;
    QualityParameters getDefaultQualityParameters() const;

    //==============================================================================
    // The user interface. Message thread.

    /** Null in a product without one, and before the start-up is through. */
    PluginEditor* getEditor() const noexcept { return editor.get(); }

    /** As the first step of the end, while the parameters still stand. */
    void deleteEditor();

    /** A file that is embedded in the binary, by its bare name. */
    virtual EmbeddedFile getEmbeddedFile (const juce::String& /*name*/) const { return {}; }

    /** A control fired an event that the editor doesn't handle itself. */
    virtual void actionHook (int /*eventId*/) {}

    /** Sets a parameter to its default, as loading the preset that gave it would, in a gesture of its own; does nothing
        with a text. */
    void resetParameter (Parameter&);

    //==============================================================================
    MidiControlMap& getMidiControlMap() noexcept { return midiControlMap; }
    Directories& getDirectories() noexcept { return directories; }
    ParameterManager& getParameters() noexcept { return *parameters; }
    const ParameterManager& getParameters() const noexcept { return *parameters; }
    EventsMap& getEvents() noexcept { return events; }
    const SampleRateConstants& getRateConstants() const noexcept { return rateConstants; }

    /** Whether the host has prepared the plug-in and not released it since. Any thread. */
    bool isActive() const noexcept { return active; }

    juce::String getProductName() const override { return "BasePlugin"; }
    juce::String getPluginFile() const override { return pluginFile; }

    /** Two letters or so, in the extensions of the product's files. */
    virtual juce::String getShortName() const { return "XX"; }

    /** How many parameters from the start of the table belong to a preset. */
    virtual int getNumPresetParameters() const { return 0; }
    virtual bool hasPresets() const = 0;

    /** The preset that a new instance starts on, if the factory has it. */
    virtual juce::String getDefaultPresetName() const { return {}; }

    /** The categories of tags, separated by ";". */
    virtual juce::String getCategories() const { return {}; }

    /** With its point. */
    virtual juce::String getPresetExtension() const { return {}; }

    /** Of archives that users exchange, with its point. */
    virtual juce::String getPackageExtension() const { return "." + getShortName().toLowerCase() + "zip"; }

protected:
    virtual bool usesHostParameterMap() const { return false; }
    virtual bool usesDebugParameters() const { return false; }

    /** A product returns its own editor; null for none. */
    virtual std::unique_ptr<PluginEditor> createEditor();

    /** Takes the host's rate into the rate constants; false if it is none or the present one. */
    virtual bool updateSampleRate (double sampleRate) { return rateConstants.update (sampleRate); }

    /** Before audio, after the quality has been chosen.
        @param rateChanged true the first time and whenever the rate is a new one */
    virtual void prepare (bool rateChanged, bool blockSizeChanged);
    virtual void release() {}
    virtual void process (ProcessContext&) {}

    /** A controller message of the host, between the samples before and after it; audio thread. */
    virtual void handleController (const juce::MidiMessage& message) { midiControlMap.handleController (message); }

    /** A preset or a state has been applied to the parameters; message or host thread. */
    virtual void presetApplied() {}

    // Parameter::Listener, on the thread of the change.
    void parameterChanged (Parameter&) override;
    void parameterGestureBegan (Parameter&) override;
    void parameterGestureEnded (Parameter&) override;

private:
    void addQualityParameters();
    void addFixedEvents();
    void addDebugParametersAndEvents();
    void applyQualityForMode();
    bool isValidStateXml (const juce::XmlElement&) const;
    std::unique_ptr<juce::XmlElement> createState() const;
    void restoreState (const juce::XmlElement&);
    void restoreQualities (const juce::XmlElement* preset);
    void loadSettings();
    std::unique_ptr<juce::XmlElement> readSettings() const;
    std::unique_ptr<juce::XmlElement> createSettings() const;
    bool hasUnreadableSettings() const;
    void startEditor();
    void loadContent();
    void assignHostParameters();
    bool loadEmbeddedHostMap();
    void tellOfHostMap();
    Parameter* getMappedParameter (int hostIndex) const noexcept;

    const EmbeddedTextLoader loadEmbeddedText;
    std::unique_ptr<ParameterManager> parameters;
    Directories directories;

    HostParameterMap hostMap;
    juce::ChangeBroadcaster hostMapBroadcaster;
    std::atomic<int> numHostParameters { 128 };
    EventsMap events;
    MidiControlMap midiControlMap;

    /** A DefaultMap as the settings file has it, which is written back even if there is no such file now. */
    struct MapSetting
    {
        DefaultMap get() const { return { Directories::fileFromSetting (file), isUsed }; }
        void set (const DefaultMap& map) { *this = { map.file.getFullPathName(), map.isUsed }; }

        void read (const juce::XmlElement& settings, const char* tag);
        void write (juce::XmlElement& settings, const char* tag) const;

        juce::String file;
        bool isUsed = false;
    };

    MapSetting midiMapSetting, hostMapSetting;
    juce::String settingsInPlaceOfFile; // what stood at the start, if the file couldn't be read

    // All null in a product without "Processing Quality".
    Parameter* qualityParameter = nullptr;
    Parameter* realTimeQuality = nullptr;
    Parameter* offlineQuality = nullptr;

    PresetSession presetSession;
    std::unique_ptr<PresetsContent> userPresets;
    std::unique_ptr<PresetsContent> factoryPresets;

    std::atomic<bool> offline { false };
    std::atomic<bool> active { false };
    SampleRateConstants rateConstants;
    int blockSize = 0;
    bool prepared = false;
    juce::String pluginFile;
    PluginAudioProcessor* processor = nullptr;
    ProcessContext callback;
    std::unique_ptr<PluginEditor> editor;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePlugin)
};

} // namespace K7R
