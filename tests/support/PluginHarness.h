#pragma once

#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"

#include <memory>
#include <vector>

/** A started plug-in whose settings file lives in a folder of its own, removed at the end, or in the
    folder given, where instances of one test hand their settings on. */
struct PluginHarness
{
    explicit PluginHarness (const juce::File& settingsFolder = {})
        : scratch ("vantrice-test")
        , folder (settingsFolder != juce::File() ? settingsFolder : scratch.getFolder())
    {
        plugin = std::make_unique<Vantrice>();
        plugin->start (folder.getChildFile ("Vantrice.so"));
    }

    // The plug-in writes its settings as it goes, so it goes before its folder.
    ~PluginHarness() { plugin.reset(); }

    /** Prepared as a host prepares it, at 44.1 kHz unless told otherwise. */
    PluginHarness& prepared (double rate = 44100.0, int blockSize = 256)
    {
        plugin->setRateAndBufferSizeDetails (rate, blockSize);
        plugin->prepareToPlay (rate, blockSize);
        return *this;
    }

    Vantrice& operator*() const { return *plugin; }
    Vantrice* operator->() const { return plugin.get(); }

    ScratchFolder scratch;
    const juce::File folder;
    std::unique_ptr<Vantrice> plugin;
};

/** The live values of the host's parameters. */
inline std::vector<float> liveValues (BasePluginOldStyle& plugin)
{
    std::vector<float> values;
    for (int i = 0; i < ParameterIndex::count; ++i)
        values.push_back (plugin.getParameterManager().getNormalizedValue (i));
    return values;
}

/** The values a slot of the bank holds. */
inline std::vector<float> slotValues (BasePluginOldStyle& plugin, int index)
{
    std::vector<float> values;
    for (int i = 0; i < ParameterIndex::count; ++i)
        values.push_back (plugin.getPreset (index)->getValue (i));
    return values;
}
