#include "skin/ModWheel.h"

ModWheel::ModWheel (const juce::String& name)
    : GFXKnob (name)
{
    setScrollWheelEnabled (false);
}

void ModWheel::stoppedDragging()
{
    GFXKnob::stoppedDragging();
    setValue (0.0, juce::sendNotificationSync);
}
