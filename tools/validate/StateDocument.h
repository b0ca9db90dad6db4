#pragma once

#include <juce_core/juce_core.h>

/** Reading and editing the plug-in's state document ("PluginState"): the live parameters, the bank with
    its current preset, and the MIDI controller map. */
class StateDocument
{
public:
    /** The value "ParametersState" holds for a parameter; NaN if it holds none. */
    static float getParameter (const juce::XmlElement& state, const juce::String& name);
    static void setParameter (juce::XmlElement& state, const juce::String& name, float value);

    static int getCurrentPreset (const juce::XmlElement& state);
    static void setCurrentPreset (juce::XmlElement& state, int index);

    /** The bank element inside "PresetsState". */
    static juce::XmlElement* getBank (const juce::XmlElement& state);
    /** The preset element at a position of the bank, counting through its groups. */
    static juce::XmlElement* getPreset (const juce::XmlElement& state, int index);
    static juce::XmlElement* getGroup (const juce::XmlElement& state, int index);
    /** Sets a parameter's value stored in a preset slot of the bank. */
    static void setPresetParameter (juce::XmlElement& state, int presetIndex, const juce::String& name,
                                    float value);

    /** Replaces the map with one controller bound to one parameter. */
    static void setMap (juce::XmlElement& state, int controller, const juce::String& parameterName);
    /** The parameter a controller is bound to in the map; empty if none. */
    static juce::String getMappedParameter (const juce::XmlElement& state, int controller);
};
