#pragma once

#include "dsp/ParameterIndex.h"
#include "dsp/VantriceCore.h"
#include "frame/FerrowynOldCompatible.h"

/** The bit crusher as the host sees it: its identity, its parameters and their texts, and its core.
    It holds no signal processing of its own. */
class Vantrice final : public FerrowynOldCompatible
{
public:
    static constexpr int numParameters = ParameterIndex::count;

    Vantrice();
    ~Vantrice() override;

    juce::String getPluginName() const override;
    juce::String getPluginCode() const override;
    int getNumberOfParameters() const override;
    Core* createCore() override;
    BasePluginEditor* createEditorComponent() override;
    juce::String getParameterTextFor (int index) override;
    void parameterChanged (Parameter* parameter) override;
    bool readPreset (const juce::XmlElement& element, Preset& preset) override;
    using FerrowynOldCompatible::createPresetXml;
    std::unique_ptr<juce::XmlElement> createPresetXml (const Preset& preset) override;
    bool hasQualitySettings() const override;
    int getNumberOfClocks() const override;

    juce::String getParameterTextForValue (int hostIndex, float normalisedValue) override;
    float getParameterValueForText (int hostIndex, const juce::String& text) override;
    int getHostParameterNumSteps (int hostIndex) const override;

    juce::String getSoftwareName() const override;
    juce::String getSoftwareDescription() const override;
    juce::String getSoftwareVersion() const override;
    juce::String getSoftwareHomePage() const override;
    juce::String getSoftwareYear() const override;
    juce::String getSoftwareReleaseDate() const override;
    juce::String getSoftwareBuild() const override;
    juce::String getSoftwareFormat() const override;
    juce::String getSoftwareArchitecture() const override;

    VantriceCore* getVantriceCore() const noexcept { return static_cast<VantriceCore*> (core.get()); }

    /** What the texts are made of: the core's settings of the moment, or those a value would give. */
    struct TextState
    {
        double raw = 0.0;       // the parameter's own normalised value
        double rate = 0.0;      // hold rate of the channel, for 2 and 8
        bool antiAlias = false; // for 3
        double cutoff = 0.0;    // cutoff target of the channel, for 5 and 11
        bool coreLinked = false;
        double volumeTarget = 0.0;
        bool filterPre = false;
        bool linked = false; // from the parameter object of "Link Channels"
    };

    /** The state a normalised value gives a parameter's text, with the link as given. */
    static TextState textStateForValue (float normalisedValue, bool linked);

    /** The display text of a parameter in a given state. */
    static juce::String textFor (int index, const TextState& state);

    /** A decibel text: a sign for values above 0, one decimal, "dB". */
    static juce::String decibelText (double db);

    /** Value plus 0.5 truncated, minus 0.5 for a negative value. */
    static int roundedValue (double x) noexcept;

private:
    bool isLinkedByParameter() const;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Vantrice)
};
