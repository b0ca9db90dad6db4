#pragma once

#include "dsp/Vantrice.h"

#include <juce_core/juce_core.h>

#include <memory>

/** A started plug-in whose settings file lives in a folder of its own, removed at the end. */
struct PluginHarness
{
    PluginHarness()
        : folder (juce::File::createTempFile ("vantrice-test"))
    {
        folder.createDirectory();
        plugin = std::make_unique<Vantrice>();
        plugin->start (folder.getChildFile ("Vantrice.so"));
    }

    ~PluginHarness()
    {
        plugin.reset();
        folder.deleteRecursively();
    }

    Vantrice& operator*() const { return *plugin; }
    Vantrice* operator->() const { return plugin.get(); }

    juce::File folder;
    std::unique_ptr<Vantrice> plugin;
};
