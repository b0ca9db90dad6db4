#pragma once

#include "frame/Clock.h"
#include "frame/FerrowynEffectCore.h"
#include "frame/MidiEventQueue.h"
#include "presets/BasePluginOldStyle.h"

/** The layer every effect of the family stands on: it makes the DSP core and hands it parameters and
    rates, cuts each host block into runs at the samples where something must happen exactly (MIDI events
    and clock edges), and carries the family's optional quality setting. */
class FerrowynEffect : public BasePluginOldStyle
{
public:
    using Core = FerrowynEffectCore;

    /** The quality levels of effects that have them, by name. */
    static constexpr int numQualityLevels = 4;
    static const char* const qualityNames[numQualityLevels];

    explicit FerrowynEffect (int numParameters);
    ~FerrowynEffect() override;

    virtual std::unique_ptr<juce::XmlElement> createUniqueDataXml();
    virtual void readUniqueData (const juce::XmlElement& element);
    virtual Core* createCore() = 0;
    virtual int getNumberOfClocks() const;
    virtual bool hasQualitySettings() const;
    virtual bool qualityNeedsRestart() const;

    void initialise() override;
    void parameterChanged (Parameter* parameter) override;

    std::unique_ptr<juce::XmlElement> createStateXml() override;
    void readState (const juce::XmlElement& element) override;
    void readUserSettings (const juce::XmlElement& element) override;
    std::unique_ptr<juce::XmlElement> createUserSettingsXml() override;

    void prepareToPlay (double sampleRate, int maximumExpectedSamplesPerBlock) override;
    void releaseResources() override;
    void setStateInformation (const void* data, int sizeInBytes) override;
    void processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midiMessages) override;
    using juce::AudioProcessor::processBlock;

    Core* getCore() const noexcept { return core.get(); }
    bool isPrepared() const noexcept { return preparedFlag.load() != 0; }
    juce::CriticalSection& getFamilyLock() noexcept { return familyLock; }
    int getNumClocks() const noexcept { return clocks.size(); }
    Clock* getClock (int index) const noexcept { return clocks[index]; }
    int getDefaultQuality() const noexcept { return defaultQuality; }
    void setDefaultQuality (int level) noexcept
    {
        defaultQuality = juce::jlimit (0, numQualityLevels - 1, level);
    }

    /** The level a "Quality" parameter value stands for. */
    static int qualityLevelOf (float value) noexcept;

protected:
    /** Runs the samples gathered since the last run through the core, under the family's and the
        core's locks. */
    void runPendingSamples();
    void handleMidiEvent (const juce::MidiMessage& message);
    void feedClocks();

    std::unique_ptr<Core> core;
    juce::CriticalSection familyLock;
    std::atomic<int> preparedFlag{ 0 };
    bool playedSincePrepare = false; // under familyLock
    double preparedRate = 0.0;
    bool startValuesAnnounced = false;
    juce::OwnedArray<Clock> clocks;
    bool stereoRun = false;
    float* leftRun = nullptr;
    float* rightRun = nullptr;
    int pendingSamples = 0;
    MidiEventQueue midiQueue;
    int defaultQuality = 0;
    Parameter* qualityParameter = nullptr;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FerrowynEffect)
};
