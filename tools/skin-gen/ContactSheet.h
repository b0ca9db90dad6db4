#pragma once

#include <juce_graphics/juce_graphics.h>

/** One picture to look at the whole artwork by: every strip's frames side by side with their numbers,
    then the face with every control at its parameter's default and at its maximum. */
class ContactSheet final
{
public:
    static juce::Image render (int scale);
};
