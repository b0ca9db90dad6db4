#pragma once

#include <juce_graphics/juce_graphics.h>

/** Pictures compared as a user would see them: opaque colours, pixel for pixel. */
class ImageComparison
{
public:
    /** Why `actual` differs from `expected`: its size, or how many pixels differ and the first; empty when
        they are the same. */
    static juce::String describeDifference (const juce::Image& expected, const juce::Image& actual);

    /** The top left corner at which `needle` stands exactly inside `haystack`, or (-1, -1). */
    static juce::Point<int> find (const juce::Image& haystack, const juce::Image& needle);

    /** The picture of a golden file under the project's golden folder; null if there is none. */
    static juce::Image loadGolden (const juce::String& name);
};
