#pragma once

#include <juce_graphics/juce_graphics.h>

/** The display's bitmap font, our own: the 96 characters from 32 to 127 drawn on a grid of 5 by 9 dots in
    cells of 7 by 9 pixels, light on dark, followed by the same cells reversed for the caret. */
class PixelFont final
{
public:
    /** Whether the dot at (column, row) of a character's glyph is set; columns 0 to 4, rows 0 to 8 (rows
        7 and 8 hold the descenders). */
    static bool isSet (int character, int column, int row);

    /** The font strip at a whole-number scale: each dot becomes a square of `scale` pixels. */
    static juce::Image renderStrip (int scale);
};
