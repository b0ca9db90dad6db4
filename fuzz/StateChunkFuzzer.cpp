// A host chunk from any project, old or broken, restored into a running instance.
#include "FuzzBaseline.h"

namespace
{
std::unique_ptr<FuzzBaseline> base;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("state");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    base->plugin.setStateInformation (data, (int) size);
    const auto after = PluginSnapshot::of (base->plugin);

    // A chunk that isn't this product's state, or isn't XML at all, is dropped without a trace.
    const auto xml = XmlText::fromBinary (data, (int) size);
    if (xml == nullptr || !base->plugin.isStateXml (*xml))
        FuzzHost::expect (after == base->before,
                          "a refused chunk changed the plug-in: " + after.differenceFrom (base->before));

    FuzzHost::expect (after.brokenRule().empty(), "after a chunk: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (base->plugin), "after a chunk the output is not numbers");

    if (after != base->before)
    {
        base->restore();
        FuzzHost::expect (PluginSnapshot::of (base->plugin) == base->before,
                          "the saved state did not come back");
    }
    return 0;
}
