#pragma once

#include "ExpectedPlugin.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** The plug-in's 18 parameters among those a host lists, found by name as a user finds them, in the
    plug-in's own order. A format may list them in another order, or add parameters of its own. */
class HostParameters
{
public:
    explicit HostParameters (juce::AudioProcessor& processor);

    /** The host's parameter for a parameter of the plug-in; null if the host lists none of its name. */
    juce::AudioProcessorParameter* operator[] (int index) const { return found[(size_t) index]; }

    bool isComplete() const;
    juce::StringArray getMissing() const;
    /** Whether the host lists them in the plug-in's order, with or without its own among them. */
    bool isInPluginOrder() const;
    /** The plug-in's index of the host's parameter at a host index; -1 for none of the plug-in's. */
    int pluginIndexOf (int hostIndex) const;

private:
    std::array<juce::AudioProcessorParameter*, ExpectedPlugin::numParameters> found{};
};
