#pragma once

#include <juce_graphics/juce_graphics.h>

/** Compares a picture with its golden copy under tests/data/golden, pixel for pixel. With the
    environment variable VANTRICE_UPDATE_GOLDEN=1 the picture becomes the golden copy instead. A picture
    that differs is left beside the build as <name>.actual.png for a look. */
class GoldenImage final
{
public:
    /** An empty text if the picture matches (or was written), else what differs. */
    static juce::String check (const juce::Image& image, const juce::String& name);

    /** Where a golden picture lies. */
    static juce::File fileFor (const juce::String& name);

    /** Why two pictures differ: size, or the count and first place of differing pixels; empty if equal. */
    static juce::String compare (const juce::Image& expected, const juce::Image& actual);
};
