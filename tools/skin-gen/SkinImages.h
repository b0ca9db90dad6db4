#pragma once

#include "FaceLayout.h"

#include <juce_graphics/juce_graphics.h>

#include <vector>

/** The skin's pictures, drawn from the layout: the background (the static face), one strip per control,
    each frame the face as it stands with the control in that frame, cropped to the control, and the
    bitmap font. At scale 2 every picture is exactly twice the size, drawn at that size. */
class SkinImages final
{
public:
    struct Picture
    {
        juce::String key;
        juce::Image image;
    };

    /** Every picture at `scale` (1 or 2, the only sizes the editor draws), in the layout's order after the
        background and the font. */
    static std::vector<Picture> render (int scale);

    static juce::Image renderBackground (int scale);
    /** A control's strip: its frames one above the other, each cropped from the face. */
    static juce::Image renderStrip (const FaceLayout::Control& control, const juce::Image& background,
                                    int scale);

    /** The key a picture has at a scale: "Knob.png" at 1x, "Knob@2x.png" at 2x. */
    static juce::String keyAtScale (const juce::String& key, int scale);
};
