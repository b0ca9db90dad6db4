#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"

#include <benchmark/benchmark.h>

namespace
{
/** Parses the embedded skin and decodes every picture it names, as an editor does when it opens. */
void loadSkin (benchmark::State& state)
{
    const bool doubled = state.range (0) == 2;
    double decodedBytes = 0.0;
    for (auto _ : state)
    {
        decodedBytes = 0.0;
        auto skin = juce::parseXML (loadResourceText ("skin.xml"));
        juce::StringArray keys ("Background.png");
        for (auto* control : skin->getChildIterator())
            if (auto* gfx = SkinXml::getChild (*control, "gfx"))
                keys.add (SkinXml::getAttribute (*gfx, "resource"));
        for (auto key : keys)
        {
            if (doubled)
                key = key.replace (".png", "@2x.png");
            juce::Image image;
            loadResourceImage (key, image);
            decodedBytes += (double) image.getWidth() * image.getHeight() * 3.0; // decoded as 8-bit RGB
            benchmark::DoNotOptimize (image);
        }
    }
    state.counters["decoded_MiB"] = decodedBytes / (1024.0 * 1024.0);
}
} // namespace

BENCHMARK (loadSkin)->Arg (1)->Arg (2)->Unit (benchmark::kMillisecond);
