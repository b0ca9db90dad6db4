#pragma once

#include <juce_graphics/juce_graphics.h>

/** What an area of the X screen shows, read from the server as a user would see it. */
class ScreenGrab
{
public:
    /** The screen's pixels in `area` (screen coordinates); null if there is no screen. */
    static juce::Image capture (juce::Rectangle<int> area);
    /** The whole screen. */
    static juce::Image captureScreen();
};
