#pragma once

#include "FormatUnderTest.h"
#include "HostParameters.h"

/** The 18 parameters as a host sees them: names, defaults, display texts, steps, text entry, and that
    the host's own automation is not sent back to it while the plug-in's own changes are. */
class ParameterChecks
{
public:
    explicit ParameterChecks (FormatUnderTest& format);
    /** Whether the host sees all 18 parameters, which the other checks need. */
    bool run();

private:
    void checkDefaultsAndStart (juce::AudioPluginInstance& instance, const HostParameters& parameters);
    void checkTexts (juce::AudioPluginInstance& instance, const HostParameters& parameters);
    void checkSteps (juce::AudioPluginInstance& instance, const HostParameters& parameters);
    void checkTextEntry (juce::AudioPluginInstance& instance, const HostParameters& parameters);
    void checkAutomationEcho();

    /** The text the host shows for a parameter at a value, asked as the format lets a host ask. */
    juce::String textAt (juce::AudioProcessorParameter& parameter, float value);
    /** The value a typed text gives, as the format lets a host ask; NaN where it can't. */
    float valueForText (juce::AudioPluginInstance& instance, juce::AudioProcessorParameter& parameter,
                        const juce::String& text);

    bool isInterface24() const { return format.getFormatName() == "VST"; }
    bool isLv2() const { return format.getFormatName() == "LV2"; }
    bool isVst3() const { return format.getFormatName() == "VST3"; }

    FormatUnderTest& format;
    ValidationReport& report;
};
