// A settings file half-written by a crash, or edited by hand, read by a new instance as it starts.
#include "FuzzHost.h"
#include "PluginSnapshot.h"

namespace
{
juce::File folder;
PluginSnapshot fresh;
} // namespace

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    folder = FuzzHost::get().getScratch().getChildFile ("settings");
    folder.createDirectory();
    folder.getChildFile ("Vantrice.ini").deleteFile();
    auto plugin = FuzzHost::startPlugin (folder);
    fresh = PluginSnapshot::of (*plugin);
    plugin.reset();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    const auto settings = folder.getChildFile ("Vantrice.ini");
    settings.replaceWithData (data, size);
    const bool parses = XmlText::parse (settings) != nullptr;

    auto plugin = FuzzHost::startPlugin (folder);
    const auto started = PluginSnapshot::of (*plugin);

    // A file that doesn't parse counts as absent.
    if (!parses)
        FuzzHost::expect (started == fresh, "a settings file that doesn't parse changed the start: "
                                                + started.differenceFrom (fresh));
    FuzzHost::expect (started.brokenRule().empty(),
                      "after starting with the settings: " + started.brokenRule());
    FuzzHost::expect (FuzzHost::playsNumbers (*plugin),
                      "after starting with the settings the output is not numbers");

    // The instance writes its settings as it goes; whatever it read, the next one reads them back.
    plugin.reset();
    FuzzHost::expect (XmlText::parse (settings) != nullptr, "the settings written back don't parse");
    return 0;
}
