#pragma once

#include <juce_graphics/juce_graphics.h>

/** Every font of the plug-in comes from the DejaVu Sans files embedded in it, regular and bold, so that
    text looks and measures alike on every machine whatever fonts it has installed. */
class EmbeddedFonts final
{
public:
    static juce::Typeface::Ptr getRegular();
    static juce::Typeface::Ptr getBold();

    /** A font of the given height, regular or bold. */
    static juce::Font make (float height, bool bold = false);
};
