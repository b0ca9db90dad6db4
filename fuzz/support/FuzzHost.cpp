#include "FuzzHost.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

FuzzHost& FuzzHost::get()
{
    static FuzzHost host;
    return host;
}

FuzzHost::FuzzHost()
    : juce (std::make_unique<juce::ScopedJuceInitialiser_GUI>())
    , scratchFolder ("vantrice-fuzz")
    , scratch (scratchFolder.getFolder())
{
    // Neither the user's settings nor their files may take part, nor be touched.
    const auto home = scratch.getChildFile ("home");
    home.createDirectory();
    setenv ("HOME", home.getFullPathName().toRawUTF8(), 1);
    setenv ("XDG_CONFIG_HOME", home.getChildFile (".config").getFullPathName().toRawUTF8(), 1);
}

FuzzHost::~FuzzHost() = default;

namespace
{
std::vector<Vantrice*> keptPlugins;

void destroyNewestKeptPlugin()
{
    delete keptPlugins.back();
    keptPlugins.pop_back();
}
} // namespace

Vantrice& FuzzHost::keepUntilExit (std::unique_ptr<Vantrice> plugin)
{
    keptPlugins.push_back (plugin.release());
    // Exit handlers and static destructors run in the reverse order of their making: this one runs
    // before anything the plug-in's start made is destroyed.
    std::atexit (destroyNewestKeptPlugin);
    return *keptPlugins.back();
}

std::unique_ptr<Vantrice> FuzzHost::startPlugin (const juce::File& folder)
{
    folder.createDirectory();
    auto plugin = std::make_unique<Vantrice>();
    plugin->start (folder.getChildFile ("Vantrice.so"));
    plugin->setRateAndBufferSizeDetails (44100.0, 256);
    plugin->prepareToPlay (44100.0, 256);
    return plugin;
}

std::unique_ptr<Vantrice> FuzzHost::startDistinctPlugin (const juce::File& folder)
{
    auto plugin = startPlugin (folder);
    auto& manager = plugin->getParameterManager();
    plugin->selectPreset (2);
    plugin->setPresetName (5, "Renamed Five");
    plugin->setGroupName (1, "Renamed Group");
    for (int i = 0; i < Vantrice::numParameters; ++i)
        manager.setNormalizedValue (i, 0.03f + 0.05f * (float) i);
    plugin->getMidiControl().assign (7, manager.getParameter (15), false);
    plugin->getMidiControl().assign (21, manager.getParameter (3), false);
    return plugin;
}

bool FuzzHost::playsNumbers (Vantrice& plugin)
{
    constexpr int blockSize = 256;
    constexpr int blocks = 4; // past the latency and into the smoothing
    juce::AudioBuffer<float> buffer (2, blockSize);
    juce::MidiBuffer midi;
    for (int b = 0; b < blocks; ++b)
    {
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < blockSize; ++i)
                buffer.setSample (c, i, 0.8f * std::sin (0.07f * (float) (b * blockSize + i)));
        plugin.processBlock (buffer, midi);
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < blockSize; ++i)
                if (!std::isfinite (buffer.getSample (c, i)))
                    return false;
    }
    return true;
}

void FuzzHost::fail (const std::string& what)
{
    std::fprintf (stderr, "vantrice fuzz: broken promise: %s\n", what.c_str());
    std::fflush (stderr);
    std::abort();
}
