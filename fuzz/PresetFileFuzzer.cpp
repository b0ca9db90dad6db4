// A preset file from anywhere, loaded into a slot that is not the selected one.
#include "FuzzBaseline.h"

namespace
{
std::unique_ptr<FuzzBaseline> base;
juce::File file;
constexpr int targetSlot = 3; // the distinct plug-in has 2 selected
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("preset");
    file = base->folder.getChildFile ("input.vtprs");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    base->plugin.loadPresetFile (file, targetSlot);
    const auto after = PluginSnapshot::of (base->plugin);

    // A file that doesn't parse, or holds no preset of this product, leaves everything as it was.
    const auto xml = XmlText::parse (file);
    if (xml == nullptr || !base->plugin.isPreset (*xml))
        FuzzHost::expect (after == base->before, "a file that is no preset changed the plug-in: "
                                                     + after.differenceFrom (base->before));

    // A preset lands in its slot only: the live values and the other slots stay.
    const auto others = after.withoutSlot (targetSlot);
    const auto othersBefore = base->before.withoutSlot (targetSlot);
    FuzzHost::expect (others == othersBefore,
                      "a preset file changed more than its slot: " + others.differenceFrom (othersBefore));
    FuzzHost::expect (after.brokenRule().empty(), "after a preset file: " + after.brokenRule());

    base->restoreIfChanged (after);
    return 0;
}
