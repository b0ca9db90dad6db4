// A bank file from anywhere, loaded over the whole row.
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
    const auto folder = FuzzHost::get().getScratch().getChildFile ("bank");
    plugin = &FuzzHost::keepUntilExit (FuzzHost::startDistinctPlugin (folder));
    plugin->getStateInformation (baseline);
    before = PluginSnapshot::of (*plugin);
    file = folder.getChildFile ("input.vtprsb");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    plugin->loadBankFile (file);
    const auto after = PluginSnapshot::of (*plugin);

    const auto xml = XmlText::parse (file);
    if (xml == nullptr)
    {
        FuzzHost::expect (after == before,
                          "a file that doesn't parse changed the plug-in: " + after.differenceFrom (before));
    }
    else if (!plugin->isBank (*xml))
    {
        // Any parsed file brings the selected preset back to the live values; another document changes
        // nothing else.
        auto expected = before;
        expected.live = after.live;
        FuzzHost::expect (after == expected,
                          "a document that is no bank changed the bank: " + after.differenceFrom (expected));
    }
    FuzzHost::expect (after.map == before.map, "a bank file changed the MIDI map");
    FuzzHost::expect (after.brokenRule().empty(), "after a bank file: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (*plugin), "after a bank file the output is not numbers");

    if (after != before)
        plugin->setStateInformation (baseline.getData(), (int) baseline.getSize());
    return 0;
}
