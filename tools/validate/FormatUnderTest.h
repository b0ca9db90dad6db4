#pragma once

#include "PluginLoader.h"
#include "ScratchInstall.h"
#include "ValidationReport.h"

/** One format of the plug-in as a host has it: its installed copy, its description from the scan, fresh
    instances, and its state as the host saves it, with the plug-in's own chunk inside. */
class FormatUnderTest
{
public:
    FormatUnderTest (PluginLoader& loader, const juce::String& formatName, const juce::File& artefact,
                     const juce::File& scratchRoot, ValidationReport& report);

    /** Installs and scans it, reporting how that went. Nothing else works unless this succeeded. */
    bool load();

    /** What the messages call a format: JUCE's "VST" is the 2.4-interface library. */
    static juce::String labelOf (const juce::String& formatName);
    /** The name JUCE's hosting classes give a format, from the name on the command line. */
    static juce::String formatNameOf (const juce::String& argument);

    const juce::String& getFormatName() const noexcept { return formatName; }
    juce::String getLabel() const { return labelOf (formatName); }
    const juce::PluginDescription& getDescription() const noexcept { return description; }
    ValidationReport& getReport() noexcept { return report; }
    const juce::File& getScratchRoot() const noexcept { return scratchRoot; }
    ScratchInstall* getInstall() const noexcept { return install.get(); }

    /** A new instance, not yet prepared, as a host has it while it restores a project; null, with a
        failed check, if the format won't make one. */
    std::unique_ptr<juce::AudioPluginInstance> create (double sampleRate, int maxBlockSize);
    /** A new instance, prepared for the rate and the largest block as a host prepares it before playing. */
    std::unique_ptr<juce::AudioPluginInstance> createPrepared (double sampleRate, int maxBlockSize);
    std::unique_ptr<juce::AudioPluginInstance> createUnprepared (double sampleRate, int maxBlockSize,
                                                                 juce::String& error);
    static void prepare (juce::AudioPluginInstance& instance, double sampleRate, int maxBlockSize);
    /** Plays a block of silence and lets the message thread run, after which the formats that deliver
        parameters, values or latency with the audio or to their controller have done so. */
    static void playSilence (juce::AudioPluginInstance& instance, int blockSize);

    /** The plug-in's chunk inside the state the host saves for the instance. */
    juce::MemoryBlock getChunk (juce::AudioPluginInstance& instance) const;
    /** Hands the chunk to the instance inside a state of the host's own form; false if it can't be made. */
    bool setChunk (juce::AudioPluginInstance& instance, const juce::MemoryBlock& chunk) const;

    /** The chunk's document: the plug-in's whole state. */
    std::unique_ptr<juce::XmlElement> getStateXml (juce::AudioPluginInstance& instance) const;
    bool setStateXml (juce::AudioPluginInstance& instance, const juce::XmlElement& state) const;

private:
    PluginLoader& loader;
    const juce::String formatName;
    const juce::File artefact, scratchRoot;
    ValidationReport& report;
    std::unique_ptr<ScratchInstall> install;
    juce::PluginDescription description;

    JUCE_DECLARE_NON_COPYABLE (FormatUnderTest)
};
