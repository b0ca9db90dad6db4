#pragma once

#include <juce_graphics/juce_graphics.h>

/** The skin's pictures come in two sizes: the one the skin names, and for dense screens one of exactly
    twice the size under the same name with "@2x" before the type ("Knob.png", "Knob@2x.png"). */
class SkinPictures final
{
public:
    /** Whether a context draws on a screen dense enough for the double pictures: 1.5 pixels per point or
        more. */
    static bool wantsDouble (juce::Graphics& g);

    /** The double of the picture `key`, if the skin has one of exactly twice the size of `single`; null
        otherwise. */
    static juce::Image loadDouble (const juce::String& key, const juce::Image& single);

    /** "Knob.png" becomes "Knob@2x.png". */
    static juce::String doubleKey (const juce::String& key);
};
