#pragma once

#include <juce_graphics/juce_graphics.h>

/** The plain drawings controls fall back on when their strip is missing, shared where two classes draw
    the same. */
class ControlLook final
{
public:
    /** A 16 by 16 box in the centre of `bounds`, light grey (darker while pressed) with a black outline,
        holding a black dot that grows with `index` out of `count` (2 to 12 pixels across). */
    static void drawDotBox (juce::Graphics& g, juce::Rectangle<int> bounds, int index, int count,
                            bool pressed);
};
