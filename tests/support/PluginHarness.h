#pragma once

#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"

#include <memory>

/** A started plug-in whose settings file lives in a folder of its own, removed at the end. */
struct PluginHarness
{
    PluginHarness()
        : scratch ("vantrice-test")
        , folder (scratch.getFolder())
    {
        plugin = std::make_unique<Vantrice>();
        plugin->start (folder.getChildFile ("Vantrice.so"));
    }

    // The plug-in writes its settings as it goes, so it goes before its folder.
    ~PluginHarness() { plugin.reset(); }

    Vantrice& operator*() const { return *plugin; }
    Vantrice* operator->() const { return plugin.get(); }

    ScratchFolder scratch;
    const juce::File folder;
    std::unique_ptr<Vantrice> plugin;
};
