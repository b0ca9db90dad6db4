#pragma once

#include "skin/GFXKnob.h"

/** A knob that springs back to the bottom of its range when the mouse lets go. The mouse wheel is off,
    as on the pitch bender: JUCE ends every wheel step as a drag, which would spring it back each notch. */
class ModWheel : public GFXKnob
{
public:
    explicit ModWheel (const juce::String& name = {});
    void stoppedDragging() override;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ModWheel)
};
