// A preset file from anywhere, loaded into a slot that is not the selected one.
#include "FuzzHost.h"
#include "PluginSnapshot.h"

namespace
{
Vantrice* plugin = nullptr;
juce::MemoryBlock baseline;
PluginSnapshot before;
juce::File file;
constexpr int targetSlot = 3; // the distinct plug-in has 2 selected
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    const auto folder = FuzzHost::get().getScratch().getChildFile ("preset");
    plugin = &FuzzHost::keepUntilExit (FuzzHost::startDistinctPlugin (folder));
    plugin->getStateInformation (baseline);
    before = PluginSnapshot::of (*plugin);
    file = folder.getChildFile ("input.vtprs");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    plugin->loadPresetFile (file, targetSlot);
    const auto after = PluginSnapshot::of (*plugin);

    // A file that doesn't parse, or holds no preset of this product, leaves everything as it was.
    const auto xml = XmlText::parse (file);
    if (xml == nullptr || !plugin->isPreset (*xml))
        FuzzHost::expect (after == before,
                          "a file that is no preset changed the plug-in: " + after.differenceFrom (before));

    // A preset lands in its slot only: the live values and the other slots stay.
    auto others = after;
    auto othersBefore = before;
    for (auto* s : { &others, &othersBefore })
    {
        s->slots.erase (s->slots.begin() + targetSlot);
        s->names.erase (s->names.begin() + targetSlot);
    }
    FuzzHost::expect (others == othersBefore,
                      "a preset file changed more than its slot: " + others.differenceFrom (othersBefore));
    FuzzHost::expect (after.brokenRule().empty(), "after a preset file: " + after.brokenRule());

    if (after != before)
        plugin->setStateInformation (baseline.getData(), (int) baseline.getSize());
    return 0;
}
