// A host's program chunk, which carries one preset, restored into a running instance.
#include "FuzzBaseline.h"

namespace
{
std::unique_ptr<FuzzBaseline> base;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("program");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    base->plugin.setCurrentProgramStateInformation (data, (int) size);
    auto after = PluginSnapshot::of (base->plugin);

    // Data that isn't XML changes nothing; a document that isn't a preset of this product leaves the
    // slot alone.
    const auto xml = XmlText::fromBinary (data, (int) size);
    if (xml == nullptr)
        FuzzHost::expect (after == base->before, "an unreadable program chunk changed the plug-in: "
                                                     + after.differenceFrom (base->before));
    else if (!base->plugin.isPreset (*xml))
        FuzzHost::expect (after.slots == base->before.slots && after.names == base->before.names,
                          "a document that is no preset changed the bank");

    // Only the selected slot may change.
    const auto others = after.withoutSlot (base->before.current);
    const auto othersBefore = base->before.withoutSlot (base->before.current);
    FuzzHost::expect (others.slots == othersBefore.slots && others.names == othersBefore.names
                          && after.groups == base->before.groups && after.map == base->before.map
                          && after.current == base->before.current,
                      "a program chunk changed more than the selected preset");

    FuzzHost::expect (after.brokenRule().empty(), "after a program chunk: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (base->plugin),
                      "after a program chunk the output is not numbers");

    base->restoreIfChanged (after);
    return 0;
}
