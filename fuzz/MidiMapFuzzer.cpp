// A MIDI map file from anywhere, loaded into a running instance.
#include "FuzzHost.h"
#include "PluginSnapshot.h"

namespace
{
Vantrice* plugin = nullptr;
juce::MemoryBlock baseline;
PluginSnapshot before;
juce::File file;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    const auto folder = FuzzHost::get().getScratch().getChildFile ("map");
    plugin = &FuzzHost::keepUntilExit (FuzzHost::startDistinctPlugin (folder));
    plugin->getStateInformation (baseline);
    before = PluginSnapshot::of (*plugin);
    file = folder.getChildFile ("input.xml");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    auto& control = plugin->getMidiControl();
    control.loadFile (file);
    const auto after = PluginSnapshot::of (*plugin);

    if (XmlText::parse (file) == nullptr)
        FuzzHost::expect (after == before,
                          "a map that doesn't parse changed the plug-in: " + after.differenceFrom (before));

    // A map moves nothing but the map, and binds only automatable parameters.
    auto expected = before;
    expected.map = after.map;
    FuzzHost::expect (after == expected,
                      "a map file changed more than the map: " + after.differenceFrom (expected));
    FuzzHost::expect (after.brokenRule().empty(), "after a map file: " + after.brokenRule());
    for (int controller = 0; controller < MidiControl::numControllers; ++controller)
        if (auto* parameter = control.getAssignedParameter (controller))
            FuzzHost::expect (parameter->isAutomatable(), "a map bound a parameter that isn't automatable");
    FuzzHost::expect (!control.isLearnActive(), "a map file left learn on");

    if (after != before)
        plugin->setStateInformation (baseline.getData(), (int) baseline.getSize());
    return 0;
}
