#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

/** JUCE's hosting classes with the three formats a host on this system loads: the 2.4-interface library
    ("VST"), VST3 and LV2. Plug-ins are found and made from their paths as a host's scanner finds them. */
class PluginLoader
{
public:
    PluginLoader();

    juce::AudioPluginFormat* findFormat (const juce::String& formatName) const;

    /** Scans one built file or bundle and gives the description of the one plug-in in it. */
    bool describe (const juce::String& formatName, const juce::File& artefact,
                   juce::PluginDescription& result, juce::String& error);

    /** A new instance, made as a host makes one, at a rate and largest block size. */
    std::unique_ptr<juce::AudioPluginInstance> create (const juce::PluginDescription& description,
                                                       double sampleRate, int blockSize, juce::String& error);

private:
    /** The subject of "a lv2:Plugin" in a bundle's manifest: the plug-in's URI, as the bundle declares it. */
    static juce::String readLv2PluginUri (const juce::File& bundle);

    juce::AudioPluginFormatManager manager;

    JUCE_DECLARE_NON_COPYABLE (PluginLoader)
};
