#pragma once

#include "FormatUnderTest.h"

/** Every check of one format, in the order a host meets the plug-in: scan and identity, parameters,
    audio, MIDI, state, lifecycle and threads. */
class FormatChecks
{
public:
    FormatChecks (PluginLoader& loader, const juce::String& formatName, const juce::File& artefact,
                  const juce::File& scratchRoot, ValidationReport& report);

    /** The names of the groups of checks, in their order. */
    static const juce::StringArray& groupNames();
    /** Runs the named groups only; all of them when `groups` is empty. */
    void run (const juce::StringArray& groups = {});

private:
    FormatUnderTest format;
};
