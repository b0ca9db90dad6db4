#pragma once

#include "skin/GFXKnob.h"

/** A knob from -1 to 1 that springs back to its middle when the mouse lets go. The mouse wheel is off:
    JUCE ends every wheel step as a drag, which would spring the control back after each notch, and a
    control that always returns has no place for a wheel to leave it. */
class PitchBender : public GFXKnob
{
public:
    explicit PitchBender (const juce::String& name = {});
    void stoppedDragging() override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PitchBender)
};
