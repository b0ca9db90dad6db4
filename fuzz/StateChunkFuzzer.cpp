// A host chunk from any project, old or broken, restored into a running instance.
#include "FuzzHost.h"
#include "PluginSnapshot.h"

namespace
{
Vantrice* plugin = nullptr;
juce::MemoryBlock baseline;
PluginSnapshot before;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    plugin = &FuzzHost::keepUntilExit (
        FuzzHost::startDistinctPlugin (FuzzHost::get().getScratch().getChildFile ("state")));
    plugin->getStateInformation (baseline);
    before = PluginSnapshot::of (*plugin);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    plugin->setStateInformation (data, (int) size);
    const auto after = PluginSnapshot::of (*plugin);

    // A chunk that isn't this product's state, or isn't XML at all, is dropped without a trace.
    const auto xml = XmlText::fromBinary (data, (int) size);
    if (xml == nullptr || !plugin->isStateXml (*xml))
        FuzzHost::expect (after == before,
                          "a refused chunk changed the plug-in: " + after.differenceFrom (before));

    FuzzHost::expect (after.brokenRule().empty(), "after a chunk: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (*plugin), "after a chunk the output is not numbers");

    if (after != before)
    {
        plugin->setStateInformation (baseline.getData(), (int) baseline.getSize());
        FuzzHost::expect (PluginSnapshot::of (*plugin) == before, "the saved state did not come back");
    }
    return 0;
}
