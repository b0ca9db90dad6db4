#pragma once

#include "SkinImages.h"

#include <vector>

/** The dialogs' pictures, our own like the face: the 17 icon tiles in two sizes (up and down), the frames of
    the text buttons in two sizes, check boxes and radio buttons, the title bar's disc, the four shadow
    strips, and the browser's folder and note glyphs. They carry alpha where they lie over a window. */
class DialogImages final
{
public:
    /** Every picture at `scale` (1 or 2), keyed as the look and feel asks for them. */
    static std::vector<SkinImages::Picture> render (int scale);

    static constexpr int numIcons = 17;
    /** The icon tiles' sides: the normal set and the large one. */
    static constexpr int smallIcon = 27, largeIcon = 43;

    /** Draws icon `index`'s glyph into `area` (for the sheet and the tiles alike). */
    static void paintGlyph (juce::Graphics& g, int index, juce::Rectangle<float> area, juce::Colour ink);
};
