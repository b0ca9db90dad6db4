#pragma once

#include "frame/FerrowynEffect.h"

/** Reads what earlier versions of the family wrote: tags with the plug-in's name in front, states
    without live parameters, and the shorter file extensions. It always writes the present form. */
class FerrowynOldCompatible : public FerrowynEffect
{
public:
    explicit FerrowynOldCompatible (int numParameters);

    bool isStateXml (const juce::XmlElement& element) const override;
    bool isPreset (const juce::XmlElement& element) const override;
    bool isGroup (const juce::XmlElement& element) const override;
    bool isBank (const juce::XmlElement& element) const override;
    void readState (const juce::XmlElement& element) override;

    int getNumOlderPresetExtensions() const override;
    juce::String getOlderPresetExtension (int index) const override;
    int getNumOlderBankExtensions() const override;
    juce::String getOlderBankExtension (int index) const override;
    int getNumOlderMapExtensions() const override;
    juce::String getOlderMapExtension (int index) const override;

private:
    juce::String oldTag (const char* presentTag) const { return getName() + presentTag; }
    juce::String olderExtension (const char* suffix) const
    {
        return "." + getPluginCode().toLowerCase() + suffix;
    }
};
