#pragma once

#include <juce_core/juce_core.h>
#include <juce_graphics/juce_graphics.h>

/** Input as a user gives it, through xdotool on the screen the checks run on. */
class XdoTool
{
public:
    /** Runs xdotool with the arguments; its output, or an empty text if it failed. */
    static juce::String run (const juce::StringArray& args);

    /** Moves the pointer to a place on the screen and clicks the left button there. */
    static void clickAt (juce::Point<int> onScreen);
};
