// A MIDI map file from anywhere, loaded into a running instance.
#include "FuzzBaseline.h"

namespace
{
std::unique_ptr<FuzzBaseline> base;
juce::File file;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("map");
    file = base->folder.getChildFile ("input.xml");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    auto& control = base->plugin.getMidiControl();
    control.loadFile (file);
    const auto after = PluginSnapshot::of (base->plugin);

    if (XmlText::parse (file) == nullptr)
        FuzzHost::expect (after == base->before, "a map that doesn't parse changed the plug-in: "
                                                     + after.differenceFrom (base->before));

    // A map moves nothing but the map, and binds only automatable parameters.
    auto expected = base->before;
    expected.map = after.map;
    FuzzHost::expect (after == expected,
                      "a map file changed more than the map: " + after.differenceFrom (expected));
    FuzzHost::expect (after.brokenRule().empty(), "after a map file: " + after.brokenRule());
    for (int controller = 0; controller < MidiControl::numControllers; ++controller)
        if (auto* parameter = control.getAssignedParameter (controller))
            FuzzHost::expect (parameter->isAutomatable(), "a map bound a parameter that isn't automatable");
    FuzzHost::expect (!control.isLearnActive(), "a map file left learn on");

    base->restoreIfChanged (after);
    return 0;
}
