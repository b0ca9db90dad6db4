// A host's program chunk, which carries one preset, restored into a running instance.
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
        FuzzHost::startDistinctPlugin (FuzzHost::get().getScratch().getChildFile ("program")));
    plugin->getStateInformation (baseline);
    before = PluginSnapshot::of (*plugin);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    plugin->setCurrentProgramStateInformation (data, (int) size);
    auto after = PluginSnapshot::of (*plugin);

    // Data that isn't XML changes nothing; a document that isn't a preset of this product leaves the
    // slot alone.
    const auto xml = XmlText::fromBinary (data, (int) size);
    if (xml == nullptr)
        FuzzHost::expect (after == before, "an unreadable program chunk changed the plug-in: "
                                               + after.differenceFrom (before));
    else if (!plugin->isPreset (*xml))
        FuzzHost::expect (after.slots == before.slots && after.names == before.names,
                          "a document that is no preset changed the bank");

    // Only the selected slot may change.
    auto others = after;
    auto othersBefore = before;
    others.slots.erase (others.slots.begin() + before.current);
    othersBefore.slots.erase (othersBefore.slots.begin() + before.current);
    others.names.erase (others.names.begin() + before.current);
    othersBefore.names.erase (othersBefore.names.begin() + before.current);
    FuzzHost::expect (others.slots == othersBefore.slots && others.names == othersBefore.names
                          && after.groups == before.groups && after.map == before.map
                          && after.current == before.current,
                      "a program chunk changed more than the selected preset");

    FuzzHost::expect (after.brokenRule().empty(), "after a program chunk: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (*plugin), "after a program chunk the output is not numbers");

    if (after != before)
        plugin->setStateInformation (baseline.getData(), (int) baseline.getSize());
    return 0;
}
