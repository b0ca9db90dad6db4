#pragma once

#include "FaceLayout.h"

#include <juce_graphics/juce_graphics.h>

/** Draws the face. Everything is drawn in the face's own coordinates at 1x; a caller that wants another
    scale transforms the context, so the 2x pictures are drawn, not enlarged. What never moves (the panel,
    its labels and scales, the empty places of the controls) is the static face; each control's moving
    part is drawn over it for one frame, always inside the control's bounds less their outer pixel. */
class FacePainter final
{
public:
    static void paintStatic (juce::Graphics& g);
    static void paintControl (juce::Graphics& g, const FaceLayout::Control& control, int frame);

    /** The face with every control at the frame `frameOf` gives it: the background and each frame as the
        editor would put them together. */
    static void paintFace (juce::Graphics& g, const std::function<int (const FaceLayout::Control&)>& frameOf);
};
