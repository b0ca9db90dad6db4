#pragma once

#include "FuzzHost.h"
#include "PluginSnapshot.h"

#include <memory>

/** The instance a target feeds all its inputs to: a distinct plug-in kept for the run, its saved state and
    its snapshot. Every input starts from that state. */
class FuzzBaseline
{
public:
    /** Starts the plug-in in a scratch folder of the given name. */
    explicit FuzzBaseline (const juce::String& folderName);

    Vantrice& plugin;
    const juce::File folder;
    const PluginSnapshot before;

    /** Brings the saved state back. */
    void restore();
    /** The same, when an input changed anything. */
    void restoreIfChanged (const PluginSnapshot& after);

private:
    juce::MemoryBlock state;
};
