#include "skin/PitchBender.h"

PitchBender::PitchBender (const juce::String& name)
    : GFXKnob (name)
{
    setRange (-1.0, 1.0, 0.0);
    setValue (0.0, juce::dontSendNotification);
    setScrollWheelEnabled (false);
}

void PitchBender::stoppedDragging()
{
    GFXKnob::stoppedDragging();
    setValue (0.0, juce::sendNotificationSync);
}
