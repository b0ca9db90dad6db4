#pragma once

#include "common/MessageThreadHold.h"
#include "frame/EventsMap.h"
#include "frame/HostParameter.h"
#include "frame/PresetCollection.h"
#include "frame/SoftwareDesignation.h"
#include "midi/MidiControl.h"
#include "parameters/Parameter.h"
#include "parameters/ParameterManager.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>

/** The family's base processor: owns the parameters, the MIDI control map and the event table, answers
    the host's parameter and state questions, and defines the operations through which the layers above
    fill in what is particular to them. Audio never passes through it: prepare, release and process
    belong to the family layer. */
class BasePluginEditor;

class BasePlugin : public juce::AudioProcessor,
                   public juce::AsyncUpdater,
                   public Parameter::Listener,
                   public SoftwareDesignation,
                   public PresetCollection::Listener
{
public:
    /** The frame's own default count, and the size of its table of plain host values. */
    static constexpr int maxHostParameters = 128;

    /** Hears, on the message thread, that a state was restored or saved. */
    class StateListener
    {
    public:
        virtual ~StateListener() = default;
        virtual void stateLoaded (BasePlugin*) {}
        virtual void stateSaved (BasePlugin*) {}
    };

    /** Builds the tables; `numHostParameters` host parameter objects are made for the host. No virtual
        operation of the layers above is called here: `start` does that. */
    explicit BasePlugin (int numHostParameters);
    ~BasePlugin() override;

    /** The second start stage, run by the entry once the leaf is fully built: find the plug-in's file
        and folder (or take the ones given), `initialise`, then bring every value to its listeners. */
    void start (const juce::File& pluginFileToUse = {});

    // The layers' operations.
    virtual void initialise();
    /** Makes the editor; here a plain one. */
    virtual BasePluginEditor* createEditorComponent();
    virtual juce::String getPluginName() const;
    virtual juce::String getPluginCode() const;
    virtual bool isStateXml (const juce::XmlElement& element) const;
    virtual void readState (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createStateXml();
    virtual void readProgramState (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createProgramStateXml();
    virtual bool isUserSettingsXml (const juce::XmlElement& element) const;
    virtual void readUserSettings (const juce::XmlElement& element);
    virtual std::unique_ptr<juce::XmlElement> createUserSettingsXml();
    virtual int getNumberOfParameters() const;
    virtual juce::String getParameterTextFor (int id);
    virtual bool isDebugMode() const;
    virtual void handleEvent (int id);
    virtual PresetCollection* getPresetCollection() const;

    /** What a normalised value means on its own, for hosts that ask before they set. */
    virtual juce::String getParameterTextForValue (int hostIndex, float normalisedValue);
    /** The inverse of the text: a normalised value from text in the parameter's own units. */
    virtual float getParameterValueForText (int hostIndex, const juce::String& text);
    /** Steps of a stepped host parameter, or 0 for a continuous one. */
    virtual int getHostParameterNumSteps (int hostIndex) const;

    // The host's view of the parameters, index by index.
    juce::String getHostParameterName (int hostIndex) const;
    float getHostParameter (int hostIndex) const;
    juce::String getHostParameterText (int hostIndex);
    void setHostParameter (int hostIndex, float value);
    bool isHostParameterAutomatable (int hostIndex) const;
    Parameter* getParameterForHostIndex (int hostIndex) const;
    int getHostIndexOf (const Parameter* parameter) const;
    HostParameter* getHostParameterObject (int hostIndex) const;

    void loadUserSettings();
    void saveUserSettings();
    /** Beside the plug-in's binary where its folder can be written, else in the user's configuration
        folder ($XDG_CONFIG_HOME or ~/.config, then "Vantrice"); one place for reading and writing. */
    juce::File getUserSettingsFile() const;

    void addStateListener (StateListener* listener);
    void removeStateListener (StateListener* listener);

    ParameterManager& getParameterManager() noexcept { return parameters; }
    MidiControl& getMidiControl() noexcept { return *midiControl; }
    EventsMap& getEvents() noexcept { return events; }
    const juce::String& getPluginFile() const noexcept { return pluginFile; }
    /** The one editor, once a host has asked for it; null before. */
    BasePluginEditor* getEditorComponent() const noexcept { return editor.get(); }
    const juce::String& getPluginFolder() const noexcept { return pluginFolder; }

    // Parameter::Listener: the end of the chain of the layers' reactions.
    void parameterChanged (Parameter* parameter) override;
    void parameterGestureBegan (Parameter* parameter) override;
    void parameterGestureEnded (Parameter* parameter) override;

    // juce::AsyncUpdater
    void handleAsyncUpdate() override;

    // juce::AudioProcessor
    const juce::String getName() const override;
    bool acceptsMidi() const override;
    bool producesMidi() const override;
    bool isMidiEffect() const override;
    double getTailLengthSeconds() const override;
    void reset() override;
    bool hasEditor() const override;
    juce::AudioProcessorEditor* createEditor() override;
    bool isBusesLayoutSupported (const BusesLayout& layouts) const override;
    int getNumPrograms() override;
    int getCurrentProgram() override;
    void setCurrentProgram (int index) override;
    const juce::String getProgramName (int index) override;
    void changeProgramName (int index, const juce::String& newName) override;
    void getStateInformation (juce::MemoryBlock& destData) override;
    void setStateInformation (const void* data, int sizeInBytes) override;
    void getCurrentProgramStateInformation (juce::MemoryBlock& destData) override;
    void setCurrentProgramStateInformation (const void* data, int sizeInBytes) override;

    // SoftwareDesignation: the frame's neutral answers; the leaf gives its own.
    juce::String getSoftwareName() const override { return getPluginName(); }
    juce::String getSoftwareDescription() const override { return {}; }
    juce::String getSoftwareVersion() const override { return {}; }
    juce::String getSoftwareHomePage() const override { return {}; }
    juce::String getSoftwareYear() const override { return {}; }
    juce::String getSoftwarePath() const override { return pluginFile; }
    juce::String getSoftwareReleaseDate() const override { return {}; }
    juce::String getSoftwareReserved() const override { return {}; }
    juce::String getSoftwareBuild() const override { return {}; }
    juce::String getSoftwareFormat() const override { return {}; }
    juce::String getSoftwareArchitecture() const override { return {}; }
    juce::String getSoftwareReservedNumber() const override { return "0"; }

protected:
    /** Binds host index i to the parameter with id i for every index below the count. */
    void bindHostParameters();
    /** Stops the editor's tick: the layers call it before anything the tick reads goes away. */
    void stopEditorTick();
    /** The most derived layer calls this first in its destructor: the message thread, where it is
        another, stays between two messages until the whole plug-in is gone. */
    void holdMessagesUntilDestroyed();

    // Declared first, so released last of all this layer's members.
    std::unique_ptr<MessageThreadHold> destructionHold;
    juce::String pluginFile, pluginFolder;
    ParameterManager parameters;
    std::unique_ptr<MidiControl> midiControl;
    EventsMap events;
    PresetCollection* presetCollection = nullptr; // never made in this product

private:
    int hostCount() const;
    /** The first open makes the editor: the skin, the generic face if there is no skin, the look, the
        tick, and every value on its way to the controls through the deferred lists. */
    void makeEditor();

    juce::Array<Parameter*> hostParameters;
    juce::CriticalSection hostParametersLock;
    juce::HashMap<int, int> hostIndexOf;
    juce::CriticalSection hostIndexLock;
    juce::Array<HostParameter*> hostParameterObjects; // owned by the AudioProcessor
    std::array<std::atomic<float>, maxHostParameters> plainValues{};
    std::array<std::atomic<int>, maxHostParameters> hostWriteGuard{};
    std::atomic<int> stateLoadedFlag{ 0 }, stateSavedFlag{ 0 };
    juce::Array<StateListener*> stateListeners;
    std::unique_ptr<BasePluginEditor> editor;

public:
    /** Taken and cleared by the editor's tick; nothing in this effect raises it. */
    std::atomic<int> midiActivity{ 0 };

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePlugin)
};
