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

    /** Makes the embedded regular face the default sans-serif face of JUCE's default look and feel, which
        decides for every font asked for by name, JUCE's own widgets' included. Each plug-in library has
        its own copy of JUCE, so this reaches no other plug-in. */
    static void becomeDefault();
};
