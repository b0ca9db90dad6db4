// A bank file from anywhere, loaded over the whole row.
#include "FuzzBaseline.h"

namespace
{
std::unique_ptr<FuzzBaseline> base;
juce::File file;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    base = std::make_unique<FuzzBaseline> ("bank");
    file = base->folder.getChildFile ("input.vtprsb");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    base->plugin.loadBankFile (file);
    const auto after = PluginSnapshot::of (base->plugin);

    const auto xml = XmlText::parse (file);
    if (xml == nullptr)
    {
        FuzzHost::expect (after == base->before, "a file that doesn't parse changed the plug-in: "
                                                     + after.differenceFrom (base->before));
    }
    else if (!base->plugin.isBank (*xml))
    {
        // Any parsed file brings the selected preset back to the live values; another document changes
        // nothing else.
        auto expected = base->before;
        expected.live = after.live;
        FuzzHost::expect (after == expected,
                          "a document that is no bank changed the bank: " + after.differenceFrom (expected));
    }
    FuzzHost::expect (after.map == base->before.map, "a bank file changed the MIDI map");
    FuzzHost::expect (after.brokenRule().empty(), "after a bank file: " + after.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (base->plugin), "after a bank file the output is not numbers");

    base->restoreIfChanged (after);
    return 0;
}
